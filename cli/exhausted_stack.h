// What happens when a script calls itself without end: the platform's engine has no limit of its
// own, and nothing that it ran on can go on.
#pragma once

namespace cli {

// From now on the program ends with a sentence instead of a crash when the calling thread's stack
// is exhausted. Unfinished files vanish with it.
void report_exhausted_stack() noexcept;

}  // namespace cli
