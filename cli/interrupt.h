// Ctrl-C and Ctrl-Break: a wish to stop that running work reads, not the end of the process.
#pragma once

namespace cli {

// From now on Ctrl-C only asks to stop; a second one ends the process at once.
void catch_interrupts() noexcept;
bool is_interrupted() noexcept;

}  // namespace cli
