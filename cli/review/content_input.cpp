#include "cli/review/content_input.h"

#include "automation/conversion.h"
#include "automation/file_handle.h"
#include "cli/import/cell_value.h"
#include "cli/records/content_reader.h"
#include "cli/workbook/workbook_reader.h"

namespace cli {
namespace {

using automation::Variant;
using Kind = CellContent::Kind;

// Packages of office documents are zip archives. What cannot be opened is told by who reads it.
bool is_zip(const std::wstring& path) {
    const automation::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                                  nullptr));
    char begin[2];
    DWORD got = 0;
    return file.is_open() && ReadFile(file.get(), begin, sizeof begin, &got, nullptr) &&
           std::string_view(begin, got) == "PK";
}

ArchivedValue archived(std::u16string_view type, const Variant& value) {
    return {std::u16string(type),
            std::u16string(automation::as_u16(automation::to_text(value).view()))};
}

// As the component archives a value of that kind.
ArchivedValue archived(const CellContent& content) {
    Variant value(content.number);
    switch (content.kind) {
        case Kind::blank:
            break;
        case Kind::number:
            return archived(u"Double", value);
        case Kind::boolean:
            return {u"Boolean", content.number != 0 ? u"-1" : u"0"};
        case Kind::date:
            value.vt = VT_DATE;
            return archived(u"Date", value);
        case Kind::text:
            return {u"String", content.text};
    }
    return {};
}

// What stands in the cell and was not written there is the document's value.
void take_cell(ContentRecord& record, WorkbookReader& workbook) {
    if (!record.pointer.cell || !is_on_sheet(*record.pointer.cell)) return;
    const SheetCell* cell = workbook.sheet(record.pointer.sheet).find(*record.pointer.cell);
    if (!cell) return;
    const CellContent entered = content_of(*cell, workbook.counts_from_1904());
    if (entered.kind != Kind::blank && !is_same_content(entered, cell_content(record)))
        record.document_value = archived(entered);
}

std::vector<ContentRecord> read_workbook(const std::wstring& path, const RecordRead& told) {
    WorkbookReader workbook(path);
    auto contents = read_contents(dom::root(workbook.content_document()), told).contents;
    for (ContentRecord& record : contents)
        take_cell(record, workbook);
    return contents;
}

}  // namespace

std::vector<ContentRecord> read_content_input(const std::wstring& path, Course& course) {
    course.phase(L"reading " + path);
    const RecordRead told = [&](long number) { course.step(number, 0); };
    if (is_zip(path)) return read_workbook(path, told);
    return read_contents(dom::root(load_content_document(path)), told).contents;
}

}  // namespace cli
