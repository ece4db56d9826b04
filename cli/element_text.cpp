#include "cli/element_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::u16string_view cdata_begin = u"<![CDATA[";
constexpr std::u16string_view cdata_end = u"]]>";

constexpr std::array<std::pair<std::u16string_view, char16_t>, 5> entities = {
    {{u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}}};

// Objects rather than functions, which the algorithms would call through a pointer.
constexpr auto is_blank = [](char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
};
constexpr auto is_not_blank = [](char16_t unit) { return !is_blank(unit); };
constexpr auto is_quote = [](char16_t unit) { return unit == u'"' || unit == u'\''; };
constexpr auto ends_name = [](char16_t unit) {
    return is_blank(unit) || unit == u'=' || unit == u'/' || unit == u'>';
};
constexpr auto needs_decoding = [](char16_t unit) { return unit == u'&' || unit == u'\r'; };

// The number of a reference such as "#228" or "#xE4".
char32_t code_point(std::u16string_view digits) {
    const bool is_hexadecimal = digits.starts_with(u'x');
    if (is_hexadecimal) digits.remove_prefix(1);
    const char32_t base = is_hexadecimal ? 16 : 10;
    char32_t value = 0;
    for (const char16_t unit : digits) {
        const char32_t lower = unit | 0x20;
        const char32_t digit = unit <= u'9' ? unit - U'0' : lower - U'a' + 10;
        if (digit >= base || value > 0x10FFFF) return tessera::replacement_character;
        value = value * base + digit;
    }
    return value > 0 && value <= 0x10FFFF ? value : tessera::replacement_character;
}

void append_reference(std::u16string& text, std::u16string_view name) {
    if (name.starts_with(u'#')) return tessera::append(text, code_point(name.substr(1)));
    const auto known =
        std::ranges::find(entities, name, [](const auto& entity) { return entity.first; });
    if (known != entities.end()) text += known->second;
}

class Scanner {
  public:
    Scanner(std::u16string_view xml, ElementTextHandler& handler) : rest_(xml), handler_(handler) {}

    void scan() {
        while (!rest_.empty()) {
            if (!rest_.starts_with(u'<'))
                handler_.text(decoded(take_to(u'<')));
            else if (rest_.starts_with(cdata_begin))
                cdata();
            else if (rest_.starts_with(u"<!--"))
                drop_through(u"-->");
            else if (rest_.starts_with(u"<?"))
                drop_through(u"?>");
            else if (rest_.starts_with(u"</"))
                end_tag();
            else
                start_tag();
        }
    }

  private:
    // What stands before the first character of this kind.
    template <class Predicate>
    std::u16string_view take_until(Predicate is_end) {
        const auto end = std::ranges::find_if(rest_, is_end);
        return take(static_cast<std::size_t>(end - rest_.begin()));
    }
    std::u16string_view take_to(char16_t end) {
        return take_until([end](char16_t unit) { return unit == end; });
    }
    std::u16string_view take(std::size_t count) {
        const std::u16string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    void drop(std::size_t count) { take(count); }
    void drop_through(std::u16string_view end) {
        take(rest_.find(end));
        drop(end.size());
    }

    void cdata() {
        drop(cdata_begin.size());
        text_.clear();
        append_with_line_feeds(take(rest_.find(cdata_end)));
        handler_.text(text_);
        drop(cdata_end.size());
    }

    void end_tag() {
        take_to(u'>');
        drop(1);
        handler_.end();
    }

    void start_tag() {
        drop(1);
        handler_.start(take_until(ends_name));
        for (;;) {
            take_until(is_not_blank);
            if (rest_.empty()) return;
            if (rest_.front() == u'>') return drop(1);
            if (rest_.front() == u'/') return end_tag();
            attribute();
        }
    }

    void attribute() {
        const std::u16string_view name = take_until(ends_name);
        take_until(is_quote);
        const std::u16string_view quote = take(1);
        if (quote.empty()) return;
        handler_.attribute(name, decoded(take_to(quote.front())));
        drop(1);
    }

    // Valid until the next call.
    std::u16string_view decoded(std::u16string_view raw) {
        if (std::ranges::none_of(raw, needs_decoding)) return raw;
        text_.clear();
        while (!raw.empty()) {
            const std::u16string_view plain = raw.substr(0, raw.find(u'&'));
            append_with_line_feeds(plain);
            raw.remove_prefix(plain.size());
            if (raw.empty()) break;
            const std::u16string_view reference = raw.substr(0, raw.find(u';'));
            append_reference(text_, reference.substr(1));
            raw.remove_prefix(std::min(reference.size() + 1, raw.size()));
        }
        return text_;
    }

    void append_with_line_feeds(std::u16string_view plain) {
        for (std::size_t i = 0; i < plain.size(); ++i) {
            if (plain[i] != u'\r')
                text_ += plain[i];
            else if (!plain.substr(i + 1).starts_with(u'\n'))
                text_ += u'\n';
        }
    }

    std::u16string_view rest_;
    ElementTextHandler& handler_;
    std::u16string text_;
};

}  // namespace

void read_element_text(std::u16string_view xml, ElementTextHandler& handler) {
    Scanner(xml, handler).scan();
}

}  // namespace cli
