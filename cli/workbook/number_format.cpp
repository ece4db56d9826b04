#include "cli/workbook/number_format.h"

#include <cstdio>
#include <optional>

namespace cli {
namespace {

constexpr std::u16string_view general = u"General";
// Programs refuse longer codes.
constexpr std::size_t longest_code = 255;

// The number in so many digits as a text shows of a double, with a point.
std::u16string shortest(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", number);
    return std::u16string(text, text + std::char_traits<char>::length(text));
}

// Digits, and how many of them stand behind the last separator. Nothing when the text has others
// than those of a plain number.
std::optional<std::size_t> decimals_in(std::u16string_view text) {
    if (text.find_first_of(u"0123456789") == text.npos) return {};
    if (text.find_first_not_of(u"-0123456789.,") != text.npos) return {};
    const std::size_t separator = text.find_last_of(u".,");
    return separator == text.npos ? 0 : text.size() - separator - 1;
}

std::u16string with_point(std::u16string_view text) {
    std::u16string result(text);
    const std::size_t separator = result.find_last_of(u".,");
    if (separator != result.npos) result[separator] = u'.';
    return result;
}

std::u16string digits_code(double number, std::u16string_view display) {
    constexpr std::size_t most_decimals = 30;
    const auto decimals = decimals_in(display);
    if (!decimals || *decimals > most_decimals || with_point(display) == shortest(number))
        return std::u16string(general);
    std::u16string code = u"0";
    if (*decimals > 0) code += u'.';
    return code.append(*decimals, u'0');
}

// Inside quotation marks everything stands for itself but a quotation mark.
std::u16string quoted(std::u16string_view text) {
    std::u16string code = u"\"";
    for (const char16_t letter : text) {
        if (letter == u'"')
            code += u"\"\\\"\"";
        else
            code += letter < u' ' ? u' ' : letter;
    }
    return code + u'"';
}

}  // namespace

std::u16string number_format(double number, std::u16string_view display, std::u16string_view unit) {
    std::u16string code = digits_code(number, display);
    if (unit.empty()) return code;
    const std::u16string suffix = quoted(u" " + std::u16string(unit));
    return code.size() + suffix.size() > longest_code ? code : code + suffix;
}

}  // namespace cli
