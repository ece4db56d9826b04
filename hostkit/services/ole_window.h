// The window behind an automation object.
#pragma once

#include "automation/com_ptr.h"

namespace hostkit {

// The window of a form or control that answers IOleWindow; null for everything else.
inline HWND window_of(IUnknown* object) noexcept {
    const auto owner = automation::ComPtr<IUnknown>(object).try_as<IOleWindow>();
    HWND window = nullptr;
    if (!owner || FAILED(owner->GetWindow(&window))) return nullptr;
    return window;
}

// Window handles cross automation as a long: they have 32 significant bits on every platform.
inline long window_number(HWND window) noexcept {
    return static_cast<long>(reinterpret_cast<LONG_PTR>(window));
}
inline HWND window_from(long number) noexcept {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(number));
}

}  // namespace hostkit
