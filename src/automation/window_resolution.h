// How many pixels an inch has for a window.
#pragma once

#include "automation/windows_headers.h"

namespace automation {

// Of the monitor that the window is on, in a process that asks the system to know; otherwise what
// the system lets the process believe of every monitor. Without a window, the screen's.
int pixels_per_inch(HWND window) noexcept;

// The outer size of a window with this client area at this resolution.
SIZE outer_size(SIZE client_area, DWORD style, DWORD extended_style, int pixels_per_inch) noexcept;

}  // namespace automation
