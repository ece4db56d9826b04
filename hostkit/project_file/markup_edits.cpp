#include "hostkit/project_file/markup_edits.h"

#include <algorithm>

#include "automation/bstr.h"
#include "automation/error.h"
#include "text/utf8.h"

namespace hostkit::project_file {
namespace {

// The file's bytes or, where it is in UTF-16, its pairs of bytes. In every encoding that is read,
// markup has the codes of ASCII, so that one search suits them all.
using Units = std::u16string;
using UnitsView = std::u16string_view;

constexpr UnitsView blanks = u" \t\r\n";

Units units_of(const std::string& bytes, Encoding encoding) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const bool is_big = encoding == Encoding::utf16_big;
    const bool is_wide = is_big || encoding == Encoding::utf16_little;
    Units units;
    units.reserve(bytes.size());
    for (std::size_t i = 0; i + is_wide < bytes.size(); i += 1 + is_wide)
        units += static_cast<char16_t>(!is_wide ? byte(i)
                                       : is_big ? byte(i) << 8 | byte(i + 1)
                                                : byte(i + 1) << 8 | byte(i));
    return units;
}

std::string bytes_of(const Units& units, Encoding encoding) {
    std::string bytes;
    bytes.reserve(units.size());
    for (const char16_t unit : units) {
        const auto low = static_cast<char>(unit & 0xFF);
        const auto high = static_cast<char>(unit >> 8);
        if (encoding == Encoding::utf16_big) bytes += high;
        bytes += low;
        if (encoding == Encoding::utf16_little) bytes += high;
    }
    return bytes;
}

// ---- What texts become in the file -----------------------------------------------------------

Units reference(char32_t character) {
    const std::string number = std::to_string(static_cast<std::uint32_t>(character));
    return u"&#" + Units(number.begin(), number.end()) + u";";
}

bool is_markup_or_break(char32_t character) noexcept {
    return character == U'&' || character == U'<' || character == U'>' || character == U'"' ||
           character == U'\'' || character == U'\t' || character == U'\n' || character == U'\r';
}

bool is_allowed(const tessera::CodePoint& point) noexcept {
    return (point.value >= 0x20 || is_markup_or_break(point.value)) && point.value != 0xFFFE &&
           point.value != 0xFFFF && !point.is_lone_surrogate();
}

Units single_byte(char32_t character, UINT code_page) {
    std::u16string text;
    tessera::append(text, character);
    char bytes[4]{};
    BOOL is_missing = FALSE;
    const int count =
        WideCharToMultiByte(code_page, WC_NO_BEST_FIT_CHARS, automation::as_wide(text).data(),
                            static_cast<int>(text.size()), bytes, 4, nullptr, &is_missing);
    if (count != 1 || is_missing) return reference(character);
    return Units(1, static_cast<unsigned char>(bytes[0]));
}

Units encoded(char32_t character, Encoding encoding) {
    constexpr UINT windows_1252 = 1252;
    Units text;
    tessera::append(text, character);
    switch (encoding) {
        case Encoding::utf8: {
            const std::string bytes = tessera::to_utf8(text);
            Units units;
            for (const char byte : bytes)
                units += static_cast<unsigned char>(byte);
            return units;
        }
        case Encoding::utf16_little:
        case Encoding::utf16_big:
            return text;
        case Encoding::windows_1252:
            return single_byte(character, windows_1252);
        case Encoding::latin_1:
            return character <= 0xFF ? text : reference(character);
    }
    return text;
}

Units escaped(std::wstring_view value, Encoding encoding) {
    Units result;
    for (std::u16string_view text = automation::as_u16(value); !text.empty();) {
        const tessera::CodePoint point = tessera::first_code_point(text);
        if (!is_allowed(point))
            automation::fail(E_INVALIDARG, L"The text \"" + std::wstring(value) +
                                               L"\" has a character that no project file can hold");
        result += is_markup_or_break(point.value) ? reference(point.value)
                                                  : encoded(point.value, encoding);
        text.remove_prefix(point.units);
    }
    return result;
}

Units attributes_text(const AttributeTexts& attributes, Encoding encoding) {
    Units text;
    for (const auto& [name, value] : attributes)
        text += u" " + escaped(name, encoding) + u"=\"" + escaped(value, encoding) + u"\"";
    return text;
}

// ---- Where the elements stand ----------------------------------------------------------------

struct AttributePlace {
    UnitsView name;
    std::size_t value = 0;  // where it begins, behind the quotation mark
    std::size_t length = 0;
};

struct ElementPlace {
    std::size_t start = 0;  // of "<"
    UnitsView name;
    std::vector<AttributePlace> attributes;
    std::size_t tag_end = 0;  // of ">" or "/>"
    bool is_empty = false;
    std::size_t end_tag = 0;  // of "</", where it is not empty
};

// Finds the tags of a text that is known to be well-formed.
class TagFinder {
  public:
    explicit TagFinder(UnitsView text) : text_(text) {}

    std::vector<ElementPlace> find() {
        while ((at_ = text_.find(u'<', at_)) != text_.npos) {
            if (text_.substr(at_).starts_with(u"<!--"))
                pass(u"-->");
            else if (text_.substr(at_).starts_with(u"<![CDATA["))
                pass(u"]]>");
            else if (text_.substr(at_).starts_with(u"<?"))
                pass(u"?>");
            else if (text_.substr(at_).starts_with(u"</"))
                end_element();
            else
                start_element();
        }
        return std::move(places_);
    }

  private:
    void pass(UnitsView end) { at_ = std::min(text_.find(end, at_), text_.size()); }

    void end_element() {
        places_[open_.back()].end_tag = at_;
        open_.pop_back();
        ++at_;
    }

    void start_element() {
        ElementPlace place;
        place.start = at_++;
        place.name = take_name();
        for (skip_blanks(); text_[at_] != u'>' && text_[at_] != u'/'; skip_blanks())
            place.attributes.push_back(take_attribute());
        place.tag_end = at_;
        place.is_empty = text_[at_] == u'/';
        if (!place.is_empty) open_.push_back(places_.size());
        places_.push_back(std::move(place));
    }

    AttributePlace take_attribute() {
        AttributePlace place{take_name()};
        at_ = text_.find_first_of(u"\"'", at_);
        place.value = at_ + 1;
        at_ = text_.find(text_[at_], place.value);
        place.length = at_++ - place.value;
        return place;
    }

    UnitsView take_name() {
        const std::size_t start = at_;
        at_ = text_.find_first_of(u" \t\r\n=/>", at_);
        return text_.substr(start, at_ - start);
    }

    void skip_blanks() { at_ = text_.find_first_not_of(blanks, at_); }

    UnitsView text_;
    std::size_t at_ = 0;
    std::vector<ElementPlace> places_;
    std::vector<std::size_t> open_;
};

// ---- The edits -------------------------------------------------------------------------------

class Editor {
  public:
    Editor(const std::string& bytes)
        : encoding_(encoding_of(bytes).value_or(Encoding::utf8)),
          text_(units_of(bytes, encoding_)) {}

    std::string edit(const MarkupEdits& edits) {
        const std::vector<ElementPlace> places = TagFinder(text_).find();
        for (const auto& [number, of_element] : edits) {
            const ElementPlace& place = places.at(number);
            for (const auto& [name, value] : of_element.attributes)
                set_attribute(place, name, value);
            if (!of_element.children.empty()) add_children(place, of_element.children);
        }
        return bytes_of(patched(), encoding_);
    }

  private:
    struct Patch {
        std::size_t length = 0;  // of what it replaces
        Units text;
    };

    void set_attribute(const ElementPlace& place, const std::wstring& name,
                       const std::wstring& value) {
        const Units wanted = escaped(name, encoding_);
        const auto there = std::ranges::find(place.attributes, wanted, &AttributePlace::name);
        if (there != place.attributes.end()) {
            patches_[there->value] = {there->length, escaped(value, encoding_)};
            return;
        }
        // Behind the last one; blanks before the end of the tag stay there.
        const std::size_t behind =
            place.attributes.empty()
                ? place.start + 1 + place.name.size()
                : place.attributes.back().value + place.attributes.back().length + 1;
        patches_[behind].text += attributes_text({{name, value}}, encoding_);
    }

    // Each on a line of its own, further in than its parent, where the parent begins a line.
    void add_children(const ElementPlace& place, const std::vector<NewElement>& children) {
        const Units indent = line_begin_before(place.start);
        Units text;
        for (const NewElement& child : children)
            text += (indent.empty() ? Units() : indent + u"  ") + u"<" +
                    escaped(child.name, encoding_) + attributes_text(child.attributes, encoding_) +
                    u"/>";
        if (place.is_empty) {
            // Attributes that were added may stand right before.
            Patch& patch = patches_[place.tag_end];
            patch.length = 2;
            patch.text += u">" + text + indent + u"</" + Units(place.name) + u">";
            return;
        }
        const UnitsView inside(text_.data(), place.end_tag);
        const std::size_t behind = inside.find_last_not_of(blanks) + 1;
        patches_[behind].text += text;
    }

    // The line break before a tag and the blanks between them; empty when something else is.
    Units line_begin_before(std::size_t position) const {
        const UnitsView before(text_.data(), position);
        const std::size_t behind = before.find_last_not_of(u" \t") + 1;
        if (behind == 0 || before[behind - 1] != u'\n') return {};
        const bool has_return = behind > 1 && before[behind - 2] == u'\r';
        return Units(before.substr(behind - 1 - has_return));
    }

    Units patched() const {
        Units result;
        std::size_t at = 0;
        for (const auto& [position, patch] : patches_) {
            result.append(text_, at, position - at).append(patch.text);
            at = position + patch.length;
        }
        return result.append(text_, at);
    }

    const Encoding encoding_;
    const Units text_;
    std::map<std::size_t, Patch> patches_;
};

}  // namespace

std::string edited(const std::string& bytes, const MarkupEdits& edits) {
    return Editor(bytes).edit(edits);
}

}  // namespace hostkit::project_file
