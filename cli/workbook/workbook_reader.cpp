#include "cli/workbook/workbook_reader.h"

#include <algorithm>

#include "automation/bstr.h"
#include "cli/failure.h"
#include "cli/records/content_reader.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"
#include "cli/workbook/carrier_sheet.h"
#include "cli/workbook/sheet_name.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::wstring_view contents_element = L"Contents";

struct SheetReference {
    std::wstring name;
    std::wstring relationship;
};

class WorkbookHandler : public XmlHandler {
  public:
    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        if (name == L"workbook") is_workbook = true;
        if (name == L"sheet") sheets.push_back({attributes.text(L"name"), attributes.text(L"id")});
        if (name != L"workbookPr") return;
        const std::wstring flag = attributes.text(L"date1904");
        counts_from_1904 = flag == L"1" || flag == L"true";
    }
    void end(std::wstring_view) override {}
    void text(std::wstring_view) override {}

    std::vector<SheetReference> sheets;
    bool counts_from_1904 = false;
    bool is_workbook = false;
};

// Reads no further than the root element.
class RootHandler : public XmlHandler {
  public:
    struct Found {};
    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        is_contents = name == contents_element && attributes.find(L"Version").has_value();
        throw Found();
    }
    void end(std::wstring_view) override {}
    void text(std::wstring_view) override {}

    bool is_contents = false;
};

// Programs renumber such parts: what one is, its root element says.
bool holds_contents(const std::string& part) {
    RootHandler handler;
    try {
        read_xml(part, handler, {});
    } catch (const RootHandler::Found&) {
    } catch (const Failure&) {
        return false;
    }
    return handler.is_contents;
}

// The text of a part in UTF-8 or UTF-16.
std::optional<std::u16string> decoded(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (!bytes.starts_with("\xFF\xFE")) return tessera::from_utf8(bytes);
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned char>(bytes[i + 1]) << 8);
    return text;
}

}  // namespace

WorkbookReader::WorkbookReader(const std::wstring& path)
    : WorkbookReader(path, read_bytes(path, L"the workbook")) {}

WorkbookReader::WorkbookReader(const std::wstring& path, std::string bytes)
    : package_(path, std::move(bytes)) {
    const auto of_package = package_.relationships({});
    const Relationship* const main = find_relationship(of_package, L"officeDocument");
    const std::wstring start = quoted_input(path) + L" ";
    if (!main)
        throw Failure(start +
                      L"is no workbook: its package has no main document; save it as .xlsx");
    workbook_ = main->target;
    WorkbookHandler handler;
    package_.read_part(workbook_, handler);
    if (!handler.is_workbook)
        throw Failure(start + L"is no workbook, but another office document; name the workbook");
    counts_from_1904_ = handler.counts_from_1904;
    relationships_ = package_.relationships(workbook_);
    for (const SheetReference& reference : handler.sheets)
        for (const Relationship& relationship : relationships_)
            if (relationship.id == reference.relationship && relationship.type == L"worksheet")
                sheets_.push_back(
                    {std::u16string(automation::as_u16(reference.name)), relationship.target, {}});
}

const SheetCells& WorkbookReader::sheet(std::u16string_view name) {
    if (Sheet* const found = find_sheet(name)) return cells_of(*found);
    throw Failure(L"\"" + path() + L"\" has no sheet \"" + std::wstring(automation::as_wide(name)) +
                  L"\"; it was there when the workbook was made: put it back");
}

WorkbookReader::Sheet* WorkbookReader::find_sheet(std::u16string_view name) {
    const std::u16string wanted = folded_sheet_name(name);
    const auto found = std::ranges::find_if(
        sheets_, [&](const Sheet& sheet) { return folded_sheet_name(sheet.name) == wanted; });
    return found == sheets_.end() ? nullptr : &*found;
}

const SheetCells& WorkbookReader::cells_of(Sheet& sheet) {
    if (!tables_) tables_ = read_cell_tables(package_, relationships_);
    if (!sheet.cells)
        sheet.cells = std::make_unique<SheetCells>(read_sheet(package_, sheet.part, *tables_));
    return *sheet.cells;
}

dom::Document WorkbookReader::content_document() {
    std::optional<std::string> document = content_part();
    if (!document) document = content_sheet();
    const std::wstring start = L"\"" + path() + L"\"";
    if (!document)
        throw Failure(start +
                      L" holds no content document: it was not made by \"tessera export\" or "
                      L"\"tessera spreadsheet\", or a program dropped it when it was saved");
    const auto text = decoded(*document);
    const std::wstring name = L"the content document in " + start;
    if (!text) throw Failure(name + L" is not encoded in UTF-8");
    return parse_content_document(*text, name);
}

std::optional<std::string> WorkbookReader::content_part() const {
    std::vector<Relationship> all = relationships_;
    // Some programs relate it from the package instead.
    for (Relationship& relationship : package_.relationships({}))
        all.push_back(std::move(relationship));
    for (const Relationship& relationship : all) {
        if (relationship.type != L"customXml" || !package_.has(relationship.target)) continue;
        std::string part = package_.read(relationship.target);
        if (holds_contents(part)) return part;
    }
    return {};
}

std::optional<std::string> WorkbookReader::content_sheet() {
    for (Sheet& sheet : sheets_)
        if (sheet.name.starts_with(carrier_sheet))
            if (auto document = read_carrier_sheet(
                    cells_of(sheet), L"\"" + path() + L"\", sheet \"" +
                                         std::wstring(automation::as_wide(sheet.name)) + L"\""))
                return document;
    return {};
}

}  // namespace cli
