// Subclassing of windows by the platform's common controls.
//
// Their older version, which a program gets without a manifest, exports these functions by number
// only: imported by name, they would keep the kit from being loaded there.
#pragma once

#include "automation/windows_headers.h"

#include <commctrl.h>

namespace hostkit::subclass {

// Each as the platform documents it under this name: SetWindowSubclass, RemoveWindowSubclass,
// DefSubclassProc.
bool set(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data) noexcept;
void remove(HWND window, SUBCLASSPROC procedure, UINT_PTR id) noexcept;
LRESULT call_next(HWND window, UINT message, WPARAM first, LPARAM second) noexcept;

}  // namespace hostkit::subclass
