// What a content document is checked for.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

enum class Severity { error, warning, notice };

enum class Rule {
    pointer,
    outside_sheet,
    sheet_name,
    same_cell,
    expression_failed,
    unreadable_value,
    not_numeric,
    wrong_entry,
    long_text,
    no_object,
    wrong_unit,
    unknown_property,
    no_display_text,
    same_display_text,
    direction,
    object_moved,
    no_way_back,
};

struct RuleText {
    Rule rule;
    std::u16string_view id;
    Severity severity;
    std::u16string_view sentence;
    bool needs_project = false;
};

// Every rule once, the errors first.
inline constexpr RuleText rules[] = {
    {Rule::pointer, u"pointer", Severity::error, u"the pointer leads to no cell"},
    {Rule::outside_sheet, u"outside-sheet", Severity::error,
     u"the cell is beyond a sheet's last one, XFD1048576"},
    {Rule::sheet_name, u"sheet-name", Severity::error, u"no workbook has a sheet of this name"},
    {Rule::same_cell, u"same-cell", Severity::error, u"the cell has a value already"},
    {Rule::expression_failed, u"expression-failed", Severity::error,
     u"the expression could not be evaluated"},
    {Rule::unreadable_value, u"unreadable-value", Severity::error,
     u"the text cannot be read as a value of its type"},
    {Rule::not_numeric, u"not-numeric", Severity::error,
     u"all values are said to be numbers, and this one is none"},
    {Rule::wrong_entry, u"wrong-entry", Severity::error,
     u"what stands in the cell is no value of the property"},
    {Rule::long_text, u"long-text", Severity::error, u"the text is longer than a cell holds"},
    {Rule::no_object, u"no-object", Severity::error, u"the project does not have the object", true},
    {Rule::wrong_unit, u"wrong-unit", Severity::error, u"the unit is none of the attribute's group",
     true},
    {Rule::unknown_property, u"unknown-property", Severity::warning,
     u"the property is none of the known ones, nor an expression"},
    {Rule::no_display_text, u"no-display-text", Severity::warning,
     u"an entry of the value list has no display text"},
    {Rule::same_display_text, u"same-display-text", Severity::warning,
     u"different entries of the value list have the same display text"},
    {Rule::direction, u"direction", Severity::warning, u"the direction is none of I, O and IO"},
    {Rule::object_moved, u"object-moved", Severity::notice,
     u"the object has another path in the project", true},
    {Rule::no_way_back, u"no-way-back", Severity::notice,
     u"the direction leads into the project, and the property cannot be written"},
};

static_assert(std::size(rules) == static_cast<std::size_t>(Rule::no_way_back) + 1,
              "every rule has a row, and the last one is named here");

const RuleText& text_of(Rule rule) noexcept;
std::u16string_view name_of(Severity severity) noexcept;

struct Finding {
    Rule rule;
    std::size_t record;     // its place among the records, from 0
    std::u16string detail;  // what is particular about it; may be empty
};

}  // namespace cli
