// Where a value stands in a document: "Sheet1!B7".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

// Both count from 1.
struct CellAddress {
    std::int32_t column = 0;
    std::int32_t row = 0;

    bool operator==(const CellAddress&) const = default;
    // By columns, and in each from the top.
    friend bool operator<(const CellAddress& left, const CellAddress& right) noexcept {
        return left.column != right.column ? left.column < right.column : left.row < right.row;
    }
};

// The last cell that a sheet of a workbook has, XFD1048576.
inline constexpr CellAddress last_cell{16384, 1048576};

struct CellPointer {
    std::u16string text;
    std::u16string sheet;             // what stands before the first "!"
    std::u16string cell_text;         // what stands behind it; without one, all of the text
    std::optional<CellAddress> cell;  // nothing when the text leads to no cell
};

// Reads pointers as the component does: what follows a second "!" is passed over, letters may be
// of either case, blanks may stand before the number. Letters that are none lead nowhere.
CellPointer parse_pointer(std::u16string_view text);

bool is_on_sheet(const CellAddress& cell) noexcept;

// 1 is "A", 27 is "AA"; empty below 1.
std::u16string column_letters(std::int32_t column);
std::u16string cell_name(const CellAddress& cell);

}  // namespace cli
