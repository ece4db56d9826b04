// What differs between two content documents, cell by cell.
#pragma once

#include <string>
#include <vector>

#include "cli/records/content_records.h"

namespace cli {

enum class ChangeKind { added, removed, changed };

// One thing that is said of a cell, before and after.
struct Difference {
    std::u16string_view what;  // "value", "unit", …
    std::u16string before;
    std::u16string after;
};

struct CellChange {
    ChangeKind kind;
    const ContentRecord* before;  // nothing for a cell that was added
    const ContentRecord* after;   // nothing for a cell that was removed
    std::vector<Difference> differences;

    const ContentRecord& record() const noexcept { return after ? *after : *before; }
};

// In the order of the new document, then what was removed, in the order of the old one. Of several
// values for one cell, the first is compared with the first, and so on. The records must outlive
// the result.
std::vector<CellChange> compare_contents(const std::vector<ContentRecord>& before,
                                         const std::vector<ContentRecord>& after);

std::u16string_view name_of(ChangeKind kind) noexcept;

}  // namespace cli
