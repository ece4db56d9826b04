#include "text/leading_number.h"

#include <charconv>
#include <limits>
#include <string>

namespace tessera {
namespace {

bool is_passed_over(char16_t character) {
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

bool belongs_to_number(char16_t character) {
    return (character >= u'0' && character <= u'9') || character == u'+' || character == u'-' ||
           character == u'.' || character == u'e' || character == u'E';
}

// The candidate characters at the start, as ASCII.
std::string number_characters(std::u16string_view text) {
    std::string result;
    for (const char16_t character : text) {
        if (is_passed_over(character)) continue;
        if (!belongs_to_number(character)) break;
        result.push_back(static_cast<char>(character));
    }
    return result;
}

}  // namespace

double leading_number(std::u16string_view text) {
    const std::string characters = number_characters(text);
    // from_chars takes a minus sign, but no plus sign.
    const char* const begin = characters.c_str() + (characters.starts_with('+') ? 1 : 0);
    const char* const end = characters.c_str() + characters.size();
    if (begin != characters.c_str() && *begin == '-') return 0;
    double number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number);
    if (error != std::errc::result_out_of_range) return number;
    // Too large or too small to be held: too small is nothing.
    const std::string_view read(begin, static_cast<std::size_t>(stop - begin));
    const bool tiny = read.find("e-") != read.npos || read.find("E-") != read.npos;
    const double largest = std::numeric_limits<double>::max();
    return tiny ? 0 : (*begin == '-' ? -largest : largest);
}

}  // namespace tessera
