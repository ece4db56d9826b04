// A content document as one page that a browser shows without anything else.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/records/content_records.h"
#include "cli/review/content_diff.h"
#include "cli/text.h"

namespace cli {

struct PageSource {
    std::u16string file;
    std::u16string against;  // the file that it is compared with; empty: none
    const std::vector<ContentRecord>& contents;
    const std::vector<CellChange>& changes;
    // Told of each record that is written; may end the writing with an exception.
    std::function<void(long number, long count)> told;
};

void write_page(TextSink& sink, const PageSource& source);

}  // namespace cli
