#include "cli/progress_text.h"

#include <cmath>

namespace cli {
namespace {

constexpr std::uint64_t least_milliseconds = 1000;

std::wstring two_digits(std::uint64_t number) {
    return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

std::wstring duration_text(std::uint64_t seconds) {
    if (seconds < 60) return std::to_wstring(seconds) + L" s";
    if (seconds < 3600)
        return std::to_wstring(seconds / 60) + L":" + two_digits(seconds % 60) + L" min";
    return std::to_wstring(seconds / 3600) + L":" + two_digits(seconds / 60 % 60) + L" h";
}

// Below ten rows a second a whole number would say too little.
std::wstring rate_text(double rate) {
    const auto tenths = static_cast<std::uint64_t>(std::llround(rate * 10));
    std::wstring text = std::to_wstring(tenths >= 100 ? (tenths + 5) / 10 : tenths / 10);
    if (tenths < 100) text += L"." + std::to_wstring(tenths % 10);
    return text + L" rows/s";
}

}  // namespace

std::wstring progress_text(const WorkDone& done) {
    if (done.row <= 0) return {};
    std::wstring text = L"row " + std::to_wstring(done.row);
    if (done.count > 0) text += L" of " + std::to_wstring(done.count);
    if (done.milliseconds < least_milliseconds || done.rows_timed <= 0) return text;
    const double rate =
        1000.0 * static_cast<double>(done.rows_timed) / static_cast<double>(done.milliseconds);
    text += L", " + rate_text(rate);
    if (done.count > done.row) {
        const double left = static_cast<double>(done.count - done.row) / rate;
        text += L", " + duration_text(static_cast<std::uint64_t>(std::llround(left))) + L" left";
    }
    return text;
}

}  // namespace cli
