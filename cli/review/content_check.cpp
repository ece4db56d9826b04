#include "cli/review/content_check.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "automation/conversion.h"
#include "automation/error.h"
#include "cli/import/cell_value.h"
#include "cli/records/ascii.h"
#include "cli/workbook/cell_text.h"
#include "cli/workbook/sheet_name.h"
#include "host/known_properties.h"

namespace cli {
namespace {

constexpr std::u16string_view failed_expression = u"<< Error >>";

// What is wrong in particular; nothing when the rule is kept.
using Broken = std::optional<std::u16string>;

struct TypeName {
    std::u16string_view name;
    VARTYPE type;
};
constexpr TypeName archived_types[] = {
    {u"Byte", VT_UI1},  {u"Integer", VT_I2},   {u"Long", VT_I4},
    {u"Single", VT_R4}, {u"Double", VT_R8},    {u"Currency", VT_CY},
    {u"Date", VT_DATE}, {u"Boolean", VT_BOOL}, {u"String", VT_BSTR},
};

bool is_readable(const ArchivedValue& value) {
    const auto* known = std::ranges::find(archived_types, value.type, &TypeName::name);
    if (known == std::end(archived_types)) return false;
    try {
        automation::to_type(automation::Variant(automation::as_wide(value.text)), known->type);
        return true;
    } catch (const automation::Error&) {
        return false;
    }
}

Broken broken_if(bool is_broken, std::u16string_view detail = {}) {
    if (!is_broken) return {};
    return std::u16string(detail);
}

Broken leads_to_no_cell(const ContentRecord& record) {
    return broken_if(!record.pointer.cell);
}

Broken is_outside_sheet(const ContentRecord& record) {
    return broken_if(record.pointer.cell && !is_on_sheet(*record.pointer.cell));
}

Broken has_no_sheet_name(const ContentRecord& record) {
    if (!record.pointer.cell) return {};
    const std::wstring problem = sheet_name_problem(record.pointer.sheet);
    return broken_if(!problem.empty(), u"it " + std::u16string(automation::as_u16(problem)));
}

Broken has_failed(const ContentRecord& record) {
    return broken_if(record.property_kind() == PropertyKind::expression &&
                     record.value.text == failed_expression);
}

template <class IsBroken>
Broken any_value(const ContentRecord& record, IsBroken&& is_broken) {
    for (const ArchivedValue* value : {&record.value, &record.document_value})
        if (value->holds_value() && is_broken(*value)) return value->type + u" " + value->text;
    for (const ListItem& item : record.items)
        if (item.value.holds_value() && is_broken(item.value))
            return item.value.type + u" " + item.value.text;
    return {};
}

Broken is_unreadable(const ContentRecord& record) {
    return any_value(record, [](const ArchivedValue& value) { return !is_readable(value); });
}

Broken is_no_number(const ContentRecord& record) {
    if (!record.all_values_numeric) return {};
    return any_value(record, [&record](const ArchivedValue& value) {
        if (value.text.empty()) return !record.empty_numeric_value_stays_empty;
        return !value.is_number() && !automation::is_numeric(automation::as_wide(value.text));
    });
}

Broken has_wrong_entry(const ContentRecord& record) {
    if (!record.comes_in() || !record.document_value.holds_value()) return {};
    const std::wstring problem = entered_value(cell_content(record), record).problem;
    return broken_if(!problem.empty(), automation::as_u16(problem));
}

Broken is_too_long(const ContentRecord& record) {
    const std::size_t length =
        std::max(record.cell_value().text.size(), record.display_value().text.size());
    return broken_if(length > longest_cell_text,
                     decimal(static_cast<long>(length)) + u" characters");
}

// Names of letters, digits and underscores: an expression is more than that.
bool is_plain_name(std::u16string_view text) {
    return std::ranges::all_of(text, [](char16_t letter) {
        const char16_t lower = lower_case(letter);
        return (lower >= u'a' && lower <= u'z') || (letter >= u'0' && letter <= u'9') ||
               letter == u'_';
    });
}

Broken has_unknown_property(const ContentRecord& record) {
    switch (record.property_kind()) {
        case PropertyKind::none:
        case PropertyKind::known:
            return {};
        case PropertyKind::numbered:
            return broken_if(!known_property(record.property.name));
        case PropertyKind::expression:
            return broken_if(record.property.parameter.text.empty() &&
                             is_plain_name(record.property.name));
    }
    return {};
}

Broken lacks_display_text(const ContentRecord& record) {
    if (!record.is_value_list()) return {};
    for (const ListItem& item : record.items)
        if (item.display.text.empty()) return u"of the value " + item.value.text;
    return {};
}

// A current value that is no entry of the list stands in it once more.
Broken has_same_display_text(const ContentRecord& record) {
    if (!record.is_value_list()) return {};
    std::map<std::u16string_view, const ArchivedValue*> seen;
    for (const ListItem& item : record.items) {
        const auto [first, is_new] = seen.emplace(item.display.text, &item.value);
        if (!is_new && !item.display.text.empty() && *first->second != item.value)
            return item.display.text;
    }
    return {};
}

Broken has_no_direction(const ContentRecord& record) {
    constexpr std::u16string_view known[] = {u"", u"I", u"O", u"IO"};
    return broken_if(std::ranges::find(known, record.direction) == std::end(known),
                     record.direction);
}

Broken has_no_way_back(const ContentRecord& record) {
    const kelos::KnownProperty* property = known_property(record.property.name);
    return broken_if(record.comes_in() && property && property->set_name.empty());
}

struct RecordRule {
    Rule rule;
    Broken (*broken)(const ContentRecord& record);
};
constexpr RecordRule record_rules[] = {
    {Rule::pointer, leads_to_no_cell},
    {Rule::outside_sheet, is_outside_sheet},
    {Rule::sheet_name, has_no_sheet_name},
    {Rule::expression_failed, has_failed},
    {Rule::unreadable_value, is_unreadable},
    {Rule::not_numeric, is_no_number},
    {Rule::wrong_entry, has_wrong_entry},
    {Rule::long_text, is_too_long},
    {Rule::unknown_property, has_unknown_property},
    {Rule::no_display_text, lacks_display_text},
    {Rule::same_display_text, has_same_display_text},
    {Rule::direction, has_no_direction},
    {Rule::no_way_back, has_no_way_back},
};

}  // namespace

void ContentCheck::check(std::size_t record, std::vector<Finding>& findings) {
    for (const RecordRule& rule : record_rules)
        if (auto detail = rule.broken(contents_[record]))
            findings.push_back({rule.rule, record, std::move(*detail)});
    check_cell(record, findings);
}

void ContentCheck::check_cell(std::size_t record, std::vector<Finding>& findings) {
    const CellPointer& pointer = contents_[record].pointer;
    if (!pointer.cell) return;
    const auto [taken, is_new] =
        taken_cells_.emplace(std::pair(folded_sheet_name(pointer.sheet), *pointer.cell), record);
    if (is_new) return;
    const ContentRecord& first = contents_[taken->second];
    std::u16string detail = u"of row " + decimal(static_cast<long>(first.number));
    if (!first.property.name.empty())
        detail += u", " + first.object.path + u" " + property_text(first.property);
    findings.push_back({Rule::same_cell, record, std::move(detail)});
}

}  // namespace cli
