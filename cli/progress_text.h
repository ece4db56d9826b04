// How far work is, in words.
#pragma once

#include <cstdint>
#include <string>

namespace cli {

// What has been done of the work since it began.
struct WorkDone {
    long row = 0;    // 0: nothing is said of rows
    long count = 0;  // 0: nobody knows how many there are
    // Rows that were done, and how long they took.
    long rows_timed = 0;
    std::uint64_t milliseconds = 0;
};

// "row 1200 of 20000, 600 rows/s, 31 s left". Rate and remaining time are told when a second has
// shown them.
std::wstring progress_text(const WorkDone& done);

}  // namespace cli
