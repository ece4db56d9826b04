#include "cli/review/content_input.h"

#include "automation/file_handle.h"
#include "cli/import/workbook_records.h"
#include "cli/records/content_reader.h"

namespace cli {
namespace {

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

}  // namespace

std::vector<ContentRecord> read_content_input(const std::wstring& path, Course& course) {
    course.phase(L"reading " + path);
    const RecordRead told = [&](long number, long count) { course.step(number, count); };
    if (!is_zip(path)) return read_contents(dom::root(load_content_document(path)), told).contents;
    WorkbookReader workbook(path);
    return read_workbook_records(workbook, told);
}

}  // namespace cli
