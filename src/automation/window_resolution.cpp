#include "automation/window_resolution.h"

namespace automation {
namespace {

// Functions of Windows 10; null on older systems, where all monitors have one resolution.
template <class Function>
Function* of_newer_system(const char* name) noexcept {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

int screen_pixels_per_inch() noexcept {
    const HDC screen = GetDC(nullptr);
    const int found = screen ? GetDeviceCaps(screen, LOGPIXELSY) : 0;
    if (screen) ReleaseDC(nullptr, screen);
    return found > 0 ? found : USER_DEFAULT_SCREEN_DPI;
}

}  // namespace

int pixels_per_inch(HWND window) noexcept {
    static const auto of_window = of_newer_system<UINT WINAPI(HWND)>("GetDpiForWindow");
    const UINT found = window && of_window ? of_window(window) : 0;
    return found > 0 ? static_cast<int>(found) : screen_pixels_per_inch();
}

SIZE outer_size(SIZE client_area, DWORD style, DWORD extended_style, int pixels_per_inch) noexcept {
    static const auto adjust =
        of_newer_system<BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
    RECT frame{0, 0, client_area.cx, client_area.cy};
    if (!adjust ||
        !adjust(&frame, style, FALSE, extended_style, static_cast<UINT>(pixels_per_inch)))
        AdjustWindowRectEx(&frame, style, FALSE, extended_style);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

}  // namespace automation
