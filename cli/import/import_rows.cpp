#include "cli/import/import_rows.h"

#include <map>
#include <tuple>

#include "automation/bstr.h"
#include "automation/error.h"
#include "cli/failure.h"
#include "cli/import/cell_value.h"
#include "cli/import/workbook_records.h"

namespace cli {
namespace {

using automation::as_wide;

std::wstring quoted(std::u16string_view text) {
    return std::wstring(L"\"").append(as_wide(text)).append(L"\"");
}

ContentRecord of_host_only(const ContentRecord& record) {
    ContentRecord result = record;
    result.document_value = {};
    return result;
}

void fail_row(ImportRow& row, std::wstring reason) {
    row.outcome = Outcome::failed;
    row.reason = std::move(reason);
}

class RowComparison {
  public:
    RowComparison(WorkbookReader& workbook, const HostValues& host, Preference preference)
        : workbook_(workbook), host_(host), preference_(preference) {}

    ImportRow compare(const ContentRecord& record) {
        ImportRow row;
        row.record = &record;
        const CellContent exported = cell_content(record);
        row.exported = shown(exported);
        const SheetCells& sheet = sheet_of(record);
        const SheetCell* const cell = sheet.find(*record.pointer.cell);
        if (cell)
            row.state = cell->kind == SheetCell::Kind::blank ? CellState::blank : CellState::value;
        const CellContent entered =
            cell ? content_of(*cell, workbook_.counts_from_1904()) : CellContent();
        row.cell = shown(entered);
        if (!is_same_content(entered, exported)) take_edit(row, sheet, cell, entered);
        return row;
    }

  private:
    const SheetCells& sheet_of(const ContentRecord& record) {
        if (workbook_.has_sheet(record.pointer.sheet)) return workbook_.sheet(record.pointer.sheet);
        throw Failure(L"\"" + workbook_.path() + L"\" has no sheet " +
                      quoted(record.pointer.sheet) + L", in which the cell " +
                      std::wstring(as_wide(record.pointer.cell_text)) +
                      L" was; put the sheet back, or export the workbook anew");
    }

    void take_edit(ImportRow& row, const SheetCells& sheet, const SheetCell* cell,
                   const CellContent& entered) const {
        const ContentRecord& record = *row.record;
        const CellRole role = cell_role(record);
        const CellRange* const merged = sheet.merged_over(*record.pointer.cell);
        if (role == CellRole::input && merged)
            return fail_row(row, L"the cell was merged into " +
                                     std::wstring(as_wide(cell_name(merged->first))) +
                                     L", which keeps only the value of its first cell");
        if (role == CellRole::input && cell && cell->is_formula &&
            cell->kind == SheetCell::Kind::blank)
            return fail_row(row,
                            L"the cell holds a formula that was never calculated; open and save "
                            L"the workbook with a spreadsheet program");
        if (row.state != CellState::value) {
            row.outcome = Outcome::blank;
            return;
        }
        // Forms have formulas of their own where a value would have stood.
        if (role != CellRole::input && cell->is_formula) {
            row.notice = L"a formula stands in the cell, and nothing goes back from it";
            return;
        }
        if (role != CellRole::input) {
            row.outcome = Outcome::refused;
            row.reason = role == CellRole::heading ? L"the cell has a fixed text"
                                                   : L"the value goes out of the project only";
            return;
        }
        if (cell->kind == SheetCell::Kind::error)
            return fail_row(row, quoted(row.cell) + L" is an error");
        if (cell->is_formula) row.notice = L"a formula; what it last came to is taken";
        compare_with_project(row, entered);
    }

    void compare_with_project(ImportRow& row, const CellContent& entered) const try {
        const ContentRecord& record = *row.record;
        const auto now = host_.current(record);
        if (!now)
            return fail_row(row, L"the project no longer has " + quoted(record.object.path) +
                                     L" with this property");
        const CellContent current = cell_content(*now);
        row.project = shown(current);
        EnteredValue value = entered_value(entered, *now);
        if (!value.problem.empty()) return fail_row(row, std::move(value.problem));
        row.value = std::move(value.value);
        row.new_value = row.cell;
        if (is_same_content(entered, current)) {
            row.outcome = Outcome::unchanged;
            row.notice = L"the project has this value already";
            return;
        }
        const bool is_project_changed =
            !is_same_content(current, cell_content(of_host_only(record)));
        row.outcome = !is_project_changed                  ? Outcome::changed
                      : preference_ == Preference::sheet   ? Outcome::changed
                      : preference_ == Preference::project ? Outcome::kept
                                                           : Outcome::conflict;
        if (is_project_changed) row.reason = L"changed in the project, too, since the export";
    } catch (const automation::Error&) {
        fail_row(row, automation::current_error().description.str());
    }

    WorkbookReader& workbook_;
    const HostValues& host_;
    const Preference preference_;
};

// What found no place in the workbook cannot have been edited there.
ImportRow unwritten_row(const ContentRecord& record) {
    ImportRow row;
    row.record = &record;
    row.exported = shown(cell_content(record));
    row.notice = L"the value found no place in the workbook";
    return row;
}

// One value of the project can stand in several cells. Edited in one of them it is changed; edited
// in several and differently, nobody knows what it shall be.
void fail_contradictions(std::vector<ImportRow>& rows) {
    using Target = std::tuple<std::u16string, std::u16string, long, std::u16string>;
    std::map<Target, ImportRow*> written;
    for (ImportRow& row : rows) {
        if (row.outcome != Outcome::changed) continue;
        const ContentRecord& record = *row.record;
        const Target target{record.object.uid, record.object.path, record.property.query_property,
                            record.property.parameter.text};
        const auto [first, is_first] = written.try_emplace(target, &row);
        ImportRow& other = *first->second;
        if (is_first ||
            (other.cell == row.cell && other.record->property.unit == record.property.unit))
            continue;
        for (ImportRow* const one : {&row, &other}) {
            const ImportRow& against = one == &row ? other : row;
            fail_row(*one, L"the same value of the project is " + quoted(against.cell) + L" in " +
                               std::wstring(as_wide(against.record->pointer.text)));
        }
    }
}

std::u16string value_now(const ImportRow& row, const HostValues& host) {
    const auto now = host.current(*row.record);
    return now ? shown(cell_content(*now)) : std::u16string();
}

void write_row(ImportRow& row, const HostValues& host) try {
    host.write(*row.record, row.value);
    row.new_value = value_now(row, host);
} catch (const automation::Error&) {
    fail_row(row, automation::current_error().description.str());
}

}  // namespace

std::vector<ImportRow> compare_rows(const ContentRecords& records, WorkbookReader& workbook,
                                    const HostValues& host, Preference preference,
                                    const RowStep& step) {
    const WrittenCells written = written_cells(records);
    RowComparison comparison(workbook, host, preference);
    std::vector<ImportRow> rows;
    rows.reserve(records.contents.size());
    for (const ContentRecord& record : records.contents) {
        step(static_cast<long>(rows.size()) + 1);
        rows.push_back(written.contains(&record) ? comparison.compare(record)
                                                 : unwritten_row(record));
    }
    fail_contradictions(rows);
    return rows;
}

void write_rows(std::vector<ImportRow>& rows, const HostValues& host, const RowStep& step) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        step(static_cast<long>(i) + 1);
        if (rows[i].outcome == Outcome::changed) write_row(rows[i], host);
    }
    // Properties of several names can lead to one value, such as a text in the current language and
    // in that of a number.
    for (ImportRow& row : rows)
        if (row.outcome == Outcome::changed && value_now(row, host) != row.new_value)
            fail_row(row, L"another cell that was edited sets the same value of the project");
}

std::u16string way_back(const ContentRecord& record) {
    if (cell_role(record) != CellRole::input) return {};
    PropertyRecord property = record.property;
    property.name = property.write_name;
    property.parameter = property.write_parameter;
    return property_text(property);
}

}  // namespace cli
