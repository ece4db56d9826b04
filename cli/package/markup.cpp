#include "cli/package/markup.h"

#include <algorithm>
#include <charconv>

namespace cli::markup {
namespace {

constexpr std::string_view blanks = " \t\r\n";

// What is passed over whole: how it begins, and how it ends.
struct Passage {
    std::string_view begin;
    std::string_view end;
};
constexpr Passage passages[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!", ">"}};

// Behind the ">" of a tag; one in a value does not end it.
std::size_t tag_end(std::string_view text, std::size_t begin) {
    char quote = 0;
    for (std::size_t i = begin; i < text.size(); ++i) {
        const char letter = text[i];
        if (quote != 0)
            quote = letter == quote ? '\0' : quote;
        else if (letter == '"' || letter == '\'')
            quote = letter;
        else if (letter == '>')
            return i + 1;
    }
    return text.npos;
}

// An attribute in the text of a tag.
struct Found {
    std::size_t begin = 0;  // of the blanks before it
    std::size_t end = 0;
    std::string_view name;  // without its prefix
    std::string_view value;
};

std::optional<Found> next_attribute(std::string_view text, std::size_t from) {
    const std::size_t name = text.find_first_not_of(blanks, from);
    const std::size_t sign = text.find('=', from);
    if (name == text.npos || sign == text.npos) return {};
    const std::size_t open = text.find_first_of("\"'", sign);
    const std::size_t close = open == text.npos ? open : text.find(text[open], open + 1);
    if (close == text.npos) return {};
    std::string_view shown = text.substr(name, sign - name);
    shown = shown.substr(0, shown.find_first_of(blanks));
    return Found{from, close + 1, shown.substr(shown.find(':') + 1),
                 text.substr(open + 1, close - open - 1)};
}

std::optional<Found> find_attribute(std::string_view text, std::string_view name) {
    std::size_t from = std::min(text.find_first_of(blanks), text.size());
    while (const auto found = next_attribute(text, from)) {
        if (found->name == name) return found;
        from = found->end;
    }
    return {};
}

}  // namespace

std::optional<Tag> Scanner::next() {
    while (true) {
        const std::size_t begin = text_.find('<', position_);
        if (begin == text_.npos) return {};
        const std::string_view rest = text_.substr(begin);
        const auto* const passage = std::ranges::find_if(
            passages, [&](const Passage& known) { return rest.starts_with(known.begin); });
        if (passage == std::end(passages)) {
            position_ = tag_end(text_, begin);
            if (position_ == text_.npos) return {};
            Tag tag{begin, position_, text_.substr(begin, position_ - begin), {}, {}};
            tag.is_end = tag.text.starts_with("</");
            tag.is_empty = tag.text.ends_with("/>");
            const std::string_view name = tag.text.substr(tag.is_end ? 2 : 1);
            const std::string_view whole = name.substr(0, name.find_first_of(" \t\r\n/>"));
            const std::size_t colon = whole.find(':') + 1;
            tag.prefix = whole.substr(0, colon);
            tag.name = whole.substr(colon);
            return tag;
        }
        const std::size_t end = text_.find(passage->end, begin + passage->begin.size());
        if (end == text_.npos) return {};
        position_ = end + passage->end.size();
    }
}

std::optional<Tag> find(std::string_view text, std::string_view name, std::size_t from) {
    Scanner scanner(text, from);
    while (auto tag = scanner.next())
        if (tag->is_start_of(name)) return tag;
    return {};
}

std::size_t end_of(std::string_view text, const Tag& start) {
    if (start.is_empty) return start.end;
    Scanner scanner(text, start.end);
    std::size_t depth = 1;
    while (const auto tag = scanner.next()) {
        if (tag->is_end)
            --depth;
        else if (!tag->is_empty)
            ++depth;
        if (depth == 0) return tag->end;
    }
    return text.size();
}

std::size_t inner_end_of(std::string_view text, const Tag& start) {
    return text.substr(0, end_of(text, start)).rfind("</");
}

std::optional<std::string_view> attribute(const Tag& tag, std::string_view name) {
    if (const auto found = find_attribute(tag.text, name)) return found->value;
    return {};
}

std::optional<long> number(const Tag& tag, std::string_view name) {
    const auto text = attribute(tag, name);
    if (!text) return {};
    long value = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value);
    if (error != std::errc() || end != text->data() + text->size()) return {};
    return value;
}

std::string with_attribute(const Tag& tag, std::string_view name, std::string_view value) {
    std::string text = without_attribute(tag, name);
    const std::size_t end = text.size() - (tag.is_empty ? 2 : 1);
    return text.insert(end, std::string(" ").append(name).append("=\"").append(value).append("\""));
}

std::string without_attribute(const Tag& tag, std::string_view name) {
    std::string text(tag.text);
    if (const auto found = find_attribute(text, name))
        text.erase(found->begin, found->end - found->begin);
    return text;
}

std::string with_children(std::string_view text, const Tag& element, std::string_view children,
                          std::size_t count) {
    std::string tag(element.text);
    if (const auto known = number(element, "count"))
        tag = with_attribute(element, "count", std::to_string(*known + static_cast<long>(count)));
    std::string result(text.substr(0, element.begin));
    if (element.is_empty) {
        result.append(tag, 0, tag.size() - 2).append(">").append(children);
        result.append("</").append(element.prefix).append(element.name).append(">");
        return result.append(text.substr(element.end));
    }
    const std::size_t end = inner_end_of(text, element);
    result.append(tag).append(text.substr(element.end, end - element.end)).append(children);
    return result.append(text.substr(end));
}

std::string prefixed(std::string_view fragment, std::string_view prefix) {
    if (prefix.empty()) return std::string(fragment);
    std::string result;
    Scanner scanner(fragment);
    std::size_t copied = 0;
    while (const auto tag = scanner.next()) {
        const std::size_t name = tag->begin + (tag->is_end ? 2 : 1);
        result.append(fragment.substr(copied, name - copied)).append(prefix);
        copied = name;
    }
    return result.append(fragment.substr(copied));
}

}  // namespace cli::markup
