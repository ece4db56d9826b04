// What a workbook is made from: nothing, or one that exists and keeps what it has.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/package/package_reader.h"
#include "cli/package/package_writer.h"

namespace cli {

struct BaseSheet {
    std::u16string name;
    std::u16string part;  // "/xl/worksheets/sheet1.xml"
    bool has_cells = true;
    bool is_carrier = false;  // of a content document that came before
};

class BaseWorkbook {
  public:
    // The plainest workbook, without a sheet.
    BaseWorkbook();
    // Throws Failure for a file that is no workbook, or one that needs another name than ".xlsx".
    explicit BaseWorkbook(const std::wstring& path);

    const std::vector<BaseSheet>& sheets() const noexcept { return sheets_; }
    // Names of parts begin with "/".
    bool counts_from_1904() const;
    bool has(std::u16string_view part) const;
    // A part that is markup in UTF-8; throws Failure for any other.
    std::string read(std::u16string_view part) const;
    std::string bytes(std::u16string_view part) const;
    std::vector<std::u16string> parts() const;

    std::u16string book_part = u"/xl/workbook.xml";
    std::string book;                  // the workbook's own text
    std::u16string styles_part;        // empty when it has no styles
    std::u16string contents_part;      // of a content document that came before; empty without one
    std::u16string calculation_chain;  // the part, or empty
    ContentTypes types;
    Relationships of_package;
    Relationships of_book;

  private:
    void read_types();
    void read_book();
    void read_sheets();
    void find_contents();
    [[noreturn]] void fail(std::wstring_view problem) const;

    std::unique_ptr<PackageReader> package_;
    std::vector<BaseSheet> sheets_;
};

}  // namespace cli
