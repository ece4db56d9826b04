// What has been read of the current row.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/bstr.h"
#include "automation/com_ptr.h"
#include "kelos.h"

namespace tessera {

// Cells and their texts by column index. Emptying costs what the row used, and keeps the room for
// the next row.
class RowCache {
  public:
    // Null when the column's cell has not been read; a missing cell is one that has.
    const automation::ComPtr<IKelosCell>* cell(std::int16_t column) const noexcept;
    void keep_cell(std::int16_t column, automation::ComPtr<IKelosCell> cell);

    // Null when the column's text has not been read.
    const automation::Bstr* text(std::int16_t column) const noexcept;
    void keep_text(std::int16_t column, automation::Bstr text);

    void clear() noexcept;

  private:
    struct Entry {
        bool has_cell = false;
        bool has_text = false;
        automation::ComPtr<IKelosCell> cell;
        automation::Bstr text;
    };

    const Entry* find(std::int16_t column) const noexcept;
    Entry& used(std::int16_t column);

    std::vector<Entry> entries_;
    std::vector<std::size_t> used_;  // the entries that hold something
};

}  // namespace tessera
