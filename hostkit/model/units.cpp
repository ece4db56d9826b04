#include "hostkit/model/units.h"

#include <charconv>

namespace hostkit {
namespace {

double rounded(double value) {
    char digits[40];
    const auto written =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 12);
    std::from_chars(digits, written.ptr, value);
    return value;
}

}  // namespace

const Unit* UnitGroup::find(std::wstring_view unit_text) const noexcept {
    for (const auto& unit : units)
        if (unit->text == unit_text) return unit.get();
    return nullptr;
}

double convert(double value, const Unit& from, const Unit& to) {
    if (&from == &to) return value;
    return rounded((value * from.factor + from.offset - to.offset) / to.factor);
}

}  // namespace hostkit
