// Reads workbooks that any program may have saved.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "automation/dom.h"
#include "cli/workbook/sheet_reader.h"

namespace cli {

class WorkbookReader {
  public:
    // Throws Failure when the file is no workbook.
    explicit WorkbookReader(const std::wstring& path);
    // The same for the bytes of that file.
    WorkbookReader(const std::wstring& path, std::string bytes);

    const std::wstring& path() const noexcept { return package_.path(); }
    bool counts_from_1904() const noexcept { return counts_from_1904_; }

    bool has_sheet(std::u16string_view name) { return find_sheet(name) != nullptr; }
    // Read when it is first asked for. Throws Failure when there is no such sheet.
    const SheetCells& sheet(std::u16string_view name);

    // The content document that travels inside: the part of the package in which it was written or,
    // where a program dropped that, the sheet. Throws Failure when there is neither.
    dom::Document content_document();

  private:
    struct Sheet {
        std::u16string name;
        std::string part;
        std::unique_ptr<SheetCells> cells;
    };

    Sheet* find_sheet(std::u16string_view name);
    const SheetCells& cells_of(Sheet& sheet);
    std::optional<std::string> content_part() const;
    std::optional<std::string> content_sheet();

    PackageReader package_;
    std::string workbook_;  // name of the part
    std::vector<Relationship> relationships_;
    std::vector<Sheet> sheets_;
    std::optional<CellTables> tables_;
    bool counts_from_1904_ = false;
};

}  // namespace cli
