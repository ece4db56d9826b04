#include "cli/import/workbook_records.h"

#include "automation/bstr.h"
#include "automation/conversion.h"
#include "cli/import/cell_value.h"
#include "cli/unit_labels.h"
#include "cli/workbook/date_format.h"
#include "cli/workbook/workbook_plan.h"

namespace cli {
namespace {

using Kind = CellContent::Kind;

ArchivedValue archived_date(double serial) {
    automation::Variant date(automation_date(serial, false).value_or(serial));
    date.vt = VT_DATE;
    return {u"Date", std::u16string(automation::to_text(date).u16())};
}

ArchivedValue archived(const CellContent& content) {
    switch (content.kind) {
        case Kind::number:
            return {u"Double", shown(content)};
        case Kind::boolean:
            return {u"Boolean", content.number != 0 ? u"-1" : u"0"};
        case Kind::date:
            return archived_date(content.number);
        case Kind::blank:
        case Kind::text:
            break;
    }
    return {u"String", content.text};
}

void take_cell(ContentRecord& record, WorkbookReader& workbook) {
    if (!workbook.has_sheet(record.pointer.sheet)) return;
    const SheetCell* const cell = workbook.sheet(record.pointer.sheet).find(*record.pointer.cell);
    if (!cell || cell->kind == SheetCell::Kind::blank) return;
    const CellContent entered = content_of(*cell, workbook.counts_from_1904());
    if (!is_same_content(entered, cell_content(record))) record.document_value = archived(entered);
}

}  // namespace

WrittenCells written_cells(const ContentRecords& records) {
    WrittenCells written;
    for (const PlannedSheet& sheet : plan_workbook(records, unit_name).sheets)
        for (const PlannedCell& cell : sheet.cells)
            written.insert(cell.record);
    return written;
}

std::vector<ContentRecord> read_workbook_records(WorkbookReader& workbook, const RecordRead& told) {
    ContentRecords records = read_contents(dom::root(workbook.content_document()), told);
    const WrittenCells written = written_cells(records);
    for (ContentRecord& record : records.contents)
        if (written.contains(&record)) take_cell(record, workbook);
    return std::move(records.contents);
}

}  // namespace cli
