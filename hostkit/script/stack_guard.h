// What keeps scripts that call themselves without end from exhausting the thread's stack.
#pragma once

#include <string>
#include <string_view>

#include "automation/com_ptr.h"

namespace hostkit {

// What the code calls the guard that `guarded` makes it ask.
inline constexpr wchar_t stack_guard_name[] = L"KelosStack";

// The code, in which every procedure first asks the guard whether it may go on. Lines keep their
// numbers.
std::wstring guarded(std::wstring_view code);

// Wine's engine recurses until the process ends, where that of Windows raises error 28. The guard
// raises it when only a quarter is left of the stack that there is now.
automation::ComPtr<IDispatch> make_stack_guard();

}  // namespace hostkit
