#include "cli/import/import_rows.h"

#include <map>
#include <tuple>

#include "automation/bstr.h"
#include "automation/error.h"
#include "cli/failure.h"
#include "cli/import/cell_value.h"

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

class RowComparison {
  public:
    RowComparison(WorkbookReader& workbook, const HostValues& host, Preference preference)
        : workbook_(workbook), host_(host), preference_(preference) {}

    ImportRow compare(const ContentRecord& record) {
        ImportRow row;
        row.record = &record;
        const CellContent exported = cell_content(record);
        row.exported = shown(exported);
        if (!record.pointer.cell) {
            if (cell_role(record) == CellRole::input)
                fail(row, L"the pointer " + quoted(record.pointer.text) + L" leads to no cell");
            return row;
        }
        const SheetCells& sheet = workbook_.sheet(record.pointer.sheet);
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
    static void fail(ImportRow& row, std::wstring reason) {
        row.outcome = Outcome::failed;
        row.reason = std::move(reason);
    }

    void take_edit(ImportRow& row, const SheetCells& sheet, const SheetCell* cell,
                   const CellContent& entered) const {
        const ContentRecord& record = *row.record;
        const CellRole role = cell_role(record);
        const CellRange* const merged = sheet.merged_over(*record.pointer.cell);
        if (role == CellRole::input && merged)
            return fail(row, L"the cell was merged into " +
                                 std::wstring(as_wide(cell_name(merged->first))) +
                                 L", which keeps only the value of its first cell");
        if (role == CellRole::input && cell && cell->is_formula &&
            cell->kind == SheetCell::Kind::blank)
            return fail(row,
                        L"the cell holds a formula that was never calculated; open and save "
                        L"the workbook with a spreadsheet program");
        if (row.state != CellState::value) {
            row.outcome = Outcome::blank;
            return;
        }
        if (role != CellRole::input) {
            row.outcome = Outcome::refused;
            row.reason = role == CellRole::heading ? L"the cell has a fixed text"
                                                   : L"the value goes out of the project only";
            return;
        }
        if (cell->kind == SheetCell::Kind::error)
            return fail(row, quoted(row.cell) + L" is an error");
        if (cell->is_formula) row.notice = L"a formula; what it last came to is taken";
        compare_with_project(row, entered);
    }

    void compare_with_project(ImportRow& row, const CellContent& entered) const try {
        const ContentRecord& record = *row.record;
        const auto now = host_.current(record);
        if (!now)
            return fail(row, L"the project no longer has " + quoted(record.object.path) +
                                 L" with this property");
        const CellContent current = cell_content(*now);
        row.project = shown(current);
        EnteredValue value = entered_value(entered, *now);
        if (!value.problem.empty()) return fail(row, std::move(value.problem));
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
        fail(row, automation::current_error().description.str());
    }

    WorkbookReader& workbook_;
    const HostValues& host_;
    const Preference preference_;
};

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
            one->outcome = Outcome::failed;
            one->reason = L"the same value of the project is " + quoted(against.cell) + L" in " +
                          std::wstring(as_wide(against.record->pointer.text));
        }
    }
}

}  // namespace

std::vector<ImportRow> compare_rows(const std::vector<ContentRecord>& contents,
                                    WorkbookReader& workbook, const HostValues& host,
                                    Preference preference, const std::function<void(long)>& step) {
    RowComparison comparison(workbook, host, preference);
    std::vector<ImportRow> rows;
    rows.reserve(contents.size());
    for (const ContentRecord& record : contents) {
        step(static_cast<long>(rows.size()) + 1);
        rows.push_back(comparison.compare(record));
    }
    fail_contradictions(rows);
    return rows;
}

void write_rows(std::vector<ImportRow>& rows, const HostValues& host) {
    for (ImportRow& row : rows) {
        if (row.outcome != Outcome::changed) continue;
        try {
            host.write(*row.record, row.value);
            const auto now = host.current(*row.record);
            if (now) row.new_value = shown(cell_content(*now));
        } catch (const automation::Error&) {
            row.outcome = Outcome::failed;
            row.reason = automation::current_error().description.str();
        }
    }
}

std::u16string way_back(const ContentRecord& record) {
    if (cell_role(record) != CellRole::input) return {};
    PropertyRecord property = record.property;
    property.name = property.write_name;
    property.parameter = property.write_parameter;
    return property_text(property);
}

}  // namespace cli
