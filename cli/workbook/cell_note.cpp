#include "cli/workbook/cell_note.h"

#include "cli/text.h"

namespace cli {
namespace {

std::u16string_view way_of(const PlannedCell& cell) {
    const ContentRecord& record = *cell.record;
    if (cell.role == CellRole::input)
        return record.goes_out() ? u"out of the project and back into it" : u"into the project";
    return record.comes_in() ? u"out of the project only: the property cannot be written"
                             : u"out of the project only";
}

// An expression can be a whole script; programs refuse notes that are too long.
constexpr std::size_t longest_value = 1000;

void append_line(std::u16string& text, std::u16string_view name, std::u16string_view value) {
    if (value.empty()) return;
    if (!text.empty()) text += u'\n';
    text.append(name).append(u": ").append(cut_to(value, longest_value));
}

std::u16string unit_text(const PlannedCell& cell) {
    const std::u16string& unit = cell.record->property.unit;
    return cell.unit.empty() || cell.unit == unit ? unit : cell.unit + u" (" + unit + u")";
}

}  // namespace

std::u16string note_text(const PlannedCell& cell) {
    if (cell.role == CellRole::heading) return {};
    std::u16string text;
    append_line(text, u"Object", cell.record->object.path);
    append_line(text, u"Property", property_text(cell.record->property));
    append_line(text, u"Unit", unit_text(cell));
    append_line(text, u"Direction", way_of(cell));
    return text;
}

}  // namespace cli
