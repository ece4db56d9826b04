// Physical units and the groups (dimensions) that they belong to.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

struct UnitGroup;

// A value in the group's base unit is factor * value + offset.
struct Unit {
    UnitGroup* group = nullptr;
    std::wstring text;  // group name, ".", unit name: what is stored and asked for
    std::wstring label;
    double factor = 1;
    double offset = 0;
};

struct UnitGroup {
    std::wstring name;
    std::vector<std::unique_ptr<Unit>> units;

    const Unit* find(std::wstring_view unit_text) const noexcept;
};

// Both units are of one group. The result is rounded to 12 significant digits, so that it does not
// show the noise of the factors.
double convert(double value, const Unit& from, const Unit& to);

}  // namespace hostkit
