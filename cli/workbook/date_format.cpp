#include "cli/workbook/date_format.h"

#include <algorithm>

namespace cli {
namespace {

// Takes what stands for itself, or is no part of the number's form, off the front of a code:
// "quoted", \c, _c, *c, [Red]. Elapsed hours, minutes and seconds stand in brackets, too.
std::size_t literal_length(std::u16string_view code) {
    const auto through = [&](char16_t last) {
        return std::min(code.find(last, 1), code.size() - 1) + 1;
    };
    switch (code.front()) {
        case u'"':
            return through(u'"');
        case u'\\':
        case u'_':
        case u'*':
            return std::min<std::size_t>(2, code.size());
        case u'[':
            return code.substr(1, 1).find_first_of(u"hHmMsS") == 0 ? 0 : through(u']');
        default:
            return 0;
    }
}

}  // namespace

bool is_date_format(std::u16string_view code) {
    while (!code.empty() && code.front() != u';') {
        const std::size_t literal = literal_length(code);
        if (literal == 0 && code.substr(0, 1).find_first_of(u"dDmMyYhHsS") == 0) return true;
        code.remove_prefix(std::max<std::size_t>(literal, 1));
    }
    return false;
}

bool is_date_format(long built_in) noexcept {
    return (built_in >= 14 && built_in <= 22) || (built_in >= 27 && built_in <= 36) ||
           (built_in >= 45 && built_in <= 47) || (built_in >= 50 && built_in <= 58);
}

std::optional<double> automation_date(double serial, bool from_1904) noexcept {
    constexpr double day_that_never_was = 60;
    constexpr double from_1900_to_1904 = 1462;
    constexpr double last = 2958466;  // the day after 31 December 9999
    if (serial < 0) return {};
    // A number below 1 is a time of day and no day, but for the first one from 1904.
    const bool is_time = serial > 0 && serial < 1;
    if (from_1904 && !is_time) serial += from_1900_to_1904;
    if (serial >= last) return {};
    if (serial < 1 || serial >= day_that_never_was + 1) return serial;
    if (serial >= day_that_never_was) return {};
    return serial + 1;
}

}  // namespace cli
