#include "cli/xml_writer.h"

#include <algorithm>

#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::size_t buffer_limit = 32768;
constexpr std::u16string_view line_end = u"\r\n";

constexpr bool is_allowed(char32_t value) noexcept {
    return value >= 0x20 ? value != 0xFFFE && value != 0xFFFF
                         : value == 0x9 || value == 0xA || value == 0xD;
}

// The text that stands for the character in its place; empty for the character itself.
constexpr std::u16string_view reference_for(char32_t value, bool in_attribute) noexcept {
    switch (value) {
        case u'&':
            return u"&amp;";
        case u'<':
            return u"&lt;";
        case u'>':
            return u"&gt;";
        case u'"':
            return in_attribute ? u"&quot;" : u"";
        case u'\r':
            return u"&#13;";
        case u'\n':
            return in_attribute ? u"&#10;" : u"";
        case u'\t':
            return in_attribute ? u"&#9;" : u"";
        default:
            return {};
    }
}

// Whether the character is written as it stands, wherever it is. An object, since an algorithm
// would call a function through a pointer.
constexpr auto is_plain = [](char16_t unit) {
    return unit >= 0x20 && unit < 0xD800 && unit != u'&' && unit != u'<' && unit != u'>' &&
           unit != u'"';
};

}  // namespace

void XmlWriter::declaration(std::u16string_view encoding) {
    buffer_.append(u"<?xml version=\"1.0\" encoding=\"").append(encoding).append(u"\"?>");
}

void XmlWriter::start(std::u16string_view name, bool holds_text) {
    begin_content();
    const bool inside_text = !open_.empty() && open_.back().holds_text;
    if (!inside_text) break_line(open_.size());
    buffer_.append(u"<").append(name);
    open_.push_back({name.size(), holds_text || inside_text});
    names_ += name;
    in_tag_ = true;
}

void XmlWriter::attribute(std::u16string_view name, std::u16string_view value) {
    buffer_.append(u" ").append(name).append(u"=\"");
    escape(value, true);
    buffer_ += u'"';
}

void XmlWriter::attribute(std::u16string_view name, std::int64_t value) {
    const std::string digits = std::to_string(value);
    attribute(name, std::u16string(digits.begin(), digits.end()));
}

void XmlWriter::text_element(std::u16string_view name, std::u16string_view value) {
    start(name, true);
    text(value);
    end();
}

void XmlWriter::text(std::u16string_view value) {
    begin_content();
    escape(value, false);
}

void XmlWriter::end() {
    const Open element = open_.back();
    open_.pop_back();
    const std::size_t name_begin = names_.size() - element.name_length;
    if (element.has_content) {
        if (!element.holds_text) break_line(open_.size());
        buffer_.append(u"</").append(names_, name_begin).append(u">");
    } else {
        buffer_.append(u"/>");
    }
    names_.resize(name_begin);
    in_tag_ = false;
    if (buffer_.size() > buffer_limit) flush();
}

void XmlWriter::finish() {
    buffer_.append(line_end);
    flush();
}

void XmlWriter::begin_content() {
    if (open_.empty()) return;
    if (in_tag_) buffer_ += u'>';
    in_tag_ = false;
    open_.back().has_content = true;
}

void XmlWriter::break_line(std::size_t depth) {
    if (layout_ == XmlLayout::lines) buffer_.append(line_end).append(depth, u'\t');
}

void XmlWriter::escape(std::u16string_view value, bool in_attribute) {
    for (;;) {
        const auto plain_end = std::ranges::find_if_not(value, is_plain);
        buffer_.append(value.begin(), plain_end);
        value.remove_prefix(static_cast<std::size_t>(plain_end - value.begin()));
        if (value.empty()) return;
        const tessera::CodePoint point = tessera::first_code_point(value);
        value.remove_prefix(point.units);
        if (!is_allowed(point.value) || point.is_lone_surrogate()) {
            ++replaced_;
            tessera::append(buffer_, tessera::replacement_character);
        } else if (const auto reference = reference_for(point.value, in_attribute);
                   !reference.empty()) {
            buffer_.append(reference);
        } else {
            tessera::append(buffer_, point.value);
        }
    }
}

void XmlWriter::flush() {
    sink_.write(buffer_);
    buffer_.clear();
}

}  // namespace cli
