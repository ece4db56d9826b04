// The styles of a workbook's cells: each that is asked for is written once.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "cli/workbook/workbook_plan.h"
#include "cli/xml_writer.h"

namespace cli {

struct CellStyle {
    CellRole role = CellRole::output;
    std::u16string format;  // code of the number format
    bool is_wrapped = false;
    bool is_quoted = false;  // typed in again, the text stays a text

    auto operator<=>(const CellStyle&) const = default;
};

// Texts that are wider than this many characters are wrapped.
inline constexpr std::size_t widest_column = 60;

CellStyle style_of(const PlannedCell& cell);

class StyleTable {
  public:
    // The index by which cells refer to the style.
    std::size_t index_of(const CellStyle& style);
    // The whole style sheet, in which the index 0 is that of cells that nobody filled.
    void write(XmlWriter& writer) const;

  private:
    void write_formats(XmlWriter& writer) const;
    void write_cell_styles(XmlWriter& writer) const;

    std::map<CellStyle, std::size_t> known_;
    std::vector<CellStyle> styles_;
    std::map<std::u16string, std::int64_t> formats_;
};

}  // namespace cli
