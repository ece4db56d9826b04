// The rows of a mapping table.
#pragma once

#include <string>
#include <vector>

#include "automation/variant.h"

namespace hostkit {

struct Element;

struct MappingRow {
    std::wstring target;
    Element* source = nullptr;
    std::wstring property;
    automation::Variant index;
    std::wstring unit;
    std::wstring direction;
    automation::Variant value;
};

// Rows that stand once or, generated, many times one after the other; only generated rows have
// their "{row}" replaced, counting from `first_number`.
struct MappingBlock {
    std::vector<MappingRow> rows;
    long repeat = 1;
    long first_number = 0;
    bool generated = false;
};

class MappingTable {
  public:
    // A row by its index from 1, with the number that stands for "{row}" in it.
    struct Place {
        const MappingRow* row;
        const MappingBlock* block;
        long number;
    };

    void add(MappingBlock block);
    long count() const noexcept { return count_; }
    // Throws "subscript out of range".
    Place at(long index) const;

  private:
    std::vector<MappingBlock> blocks_;
    std::vector<long> ends_;  // index of each block's last row
    long count_ = 0;
};

std::wstring target_of(const MappingTable::Place& place);
automation::Variant value_of(const MappingTable::Place& place);

}  // namespace hostkit
