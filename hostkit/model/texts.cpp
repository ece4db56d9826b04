#include "hostkit/model/texts.h"

#include <charconv>
#include <cmath>

namespace hostkit {
namespace {

constexpr std::wstring_view blanks = L" \t\r\n";
constexpr std::wstring_view row_mark = L"{row}";

// Numbers are plain ASCII; anything else cannot be part of one.
bool narrow(std::wstring_view text, std::string& result) {
    text = trimmed(text);
    if (text.empty()) return false;
    for (const wchar_t character : text) {
        if (character > 0x7F) return false;
        result.push_back(static_cast<char>(character));
    }
    return true;
}

template <class Number>
bool read(std::wstring_view text, Number& number) {
    std::string digits;
    if (!narrow(text, digits)) return false;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    // "nan" and "inf" are read, too.
    return error == std::errc{} && end == digits.data() + digits.size() &&
           std::isfinite(static_cast<double>(number));
}

}  // namespace

void LocalText::replace(std::size_t language, std::wstring text) {
    const bool translated = language < translations_.size() && !translations_[language].empty();
    (translated ? translations_[language] : base_) = std::move(text);
}

std::wstring_view trimmed(std::wstring_view text) noexcept {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::wstring_view> split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == text.npos) return parts;
        text.remove_prefix(end + 1);
    }
}

bool read_number(std::wstring_view text, double& number) {
    return read(text, number);
}

bool read_number(std::wstring_view text, long& number) {
    return read(text, number);
}

std::wstring with_row(std::wstring_view text, long row) {
    std::wstring result;
    for (;;) {
        const std::size_t mark = text.find(row_mark);
        result += text.substr(0, mark);
        if (mark == text.npos) return result;
        result += std::to_wstring(row);
        text.remove_prefix(mark + row_mark.size());
    }
}

}  // namespace hostkit
