#include "cli/workbook/workbook_plan.h"

#include <algorithm>
#include <map>

#include "cli/workbook/cell_text.h"
#include "cli/workbook/sheet_name.h"

namespace cli {
namespace {

bool is_before(const PlannedCell& left, const PlannedCell& right) noexcept {
    if (left.at.row != right.at.row) return left.at.row < right.at.row;
    return left.at.column < right.at.column;
}

class Planner {
  public:
    explicit Planner(const UnitLabel& unit_label) : unit_label_(unit_label) {}

    void add(const ContentRecord& record) {
        PlannedCell cell{record.pointer.cell.value_or(CellAddress{}), &record, cell_content(record),
                         cell_role(record), unit_label_(record)};
        const std::wstring reason = place_problem(record.pointer);
        if (!reason.empty()) return leave_out(record, reason);
        if (cell.content.text.size() > longest_cell_text)
            return leave_out(record, L"its text has " + std::to_wstring(cell.content.text.size()) +
                                         L" characters, and a cell holds 32767");
        sheet_named(record.pointer.sheet).cells.push_back(std::move(cell));
    }

    WorkbookPlan finish() {
        for (PlannedSheet& sheet : plan_.sheets) {
            std::ranges::stable_sort(sheet.cells, is_before);
            drop_second_values(sheet);
            plan_.cells += sheet.cells.size();
        }
        return std::move(plan_);
    }

  private:
    static std::wstring place_problem(const CellPointer& pointer) {
        if (!pointer.cell) return L"it is no sheet and cell like \"Sheet!B7\"";
        const std::wstring problem = sheet_name_problem(pointer.sheet);
        if (!problem.empty()) return L"the name of its sheet " + problem;
        if (!is_on_sheet(*pointer.cell)) return L"sheets end at XFD1048576";
        return {};
    }

    void leave_out(const ContentRecord& record, const std::wstring& reason) {
        plan_.unwritten.push_back({record.pointer.text, reason});
    }

    // Sheets whose names differ in case are one, under the name that comes first.
    PlannedSheet& sheet_named(const std::u16string& name) {
        const auto [known, is_new] =
            sheets_.try_emplace(folded_sheet_name(name), plan_.sheets.size());
        if (is_new) plan_.sheets.push_back({name, {}});
        return plan_.sheets[known->second];
    }

    void drop_second_values(PlannedSheet& sheet) {
        CellAddress at;
        std::size_t first = 0;
        std::erase_if(sheet.cells, [&](const PlannedCell& cell) {
            const bool is_second = cell.at == at;
            if (is_second)
                leave_out(*cell.record, L"the cell has a value already, that of content " +
                                            std::to_wstring(first) + L", and this is content " +
                                            std::to_wstring(cell.record->number));
            else
                first = cell.record->number;
            at = cell.at;
            return is_second;
        });
    }

    const UnitLabel& unit_label_;
    WorkbookPlan plan_;
    std::map<std::u16string, std::size_t> sheets_;
};

}  // namespace

WorkbookPlan plan_workbook(const ContentRecords& records, const UnitLabel& unit_label) {
    Planner planner(unit_label);
    for (const ContentRecord& record : records.contents)
        planner.add(record);
    return planner.finish();
}

void count_from_1904(WorkbookPlan& plan) {
    constexpr double from_1900_to_1904 = 1462;
    for (PlannedSheet& sheet : plan.sheets)
        for (PlannedCell& cell : sheet.cells) {
            CellContent& content = cell.content;
            const bool is_time = content.number < 1;
            if (content.kind != CellContent::Kind::date || is_time) continue;
            content.number -= from_1900_to_1904;
            if (content.number < 1)
                content = {CellContent::Kind::text, 0, cell.record->cell_value().text};
        }
}

}  // namespace cli
