#include "cli/review/content_input.h"

#include "cli/import/workbook_records.h"
#include "cli/records/content_reader.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"

namespace cli {
namespace {

constexpr const wchar_t* role = L"the content document";

// Packages of office documents are zip archives.
bool is_zip(std::string_view bytes) {
    return bytes.starts_with("PK");
}

}  // namespace

std::vector<ContentRecord> read_content_input(const std::wstring& path, Course& course) {
    course.phase(L"reading " + input_name(path));
    const RecordRead told = [&](long number, long count) { course.step(number, count); };
    std::string bytes = read_bytes(path, role);
    if (is_zip(bytes)) {
        WorkbookReader workbook(path, std::move(bytes));
        return read_workbook_records(workbook, told);
    }
    const std::u16string text = decoded_text(bytes, path, role);
    const dom::Document document = parse_content_document(text, quoted_input(path));
    return read_contents(dom::root(document), told).contents;
}

}  // namespace cli
