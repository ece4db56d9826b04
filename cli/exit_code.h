// The program's exit codes.
#pragma once

namespace cli {

inline constexpr int exit_success = 0;
inline constexpr int exit_with_errors = 1;  // it ran, and something was reported or is missing
inline constexpr int exit_not_run = 2;      // arguments or files that cannot be used

}  // namespace cli
