#include "progress/form_window.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string_view>
#include <utility>

#include "automation/error.h"
#include "automation/module.h"
#include "automation/window_resolution.h"

namespace tessera {

using automation::this_module;

namespace {

constexpr wchar_t class_name[] = L"KelosTessera.ProgressForm";
constexpr DWORD window_style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
// The frame of a dialog, which has no icon.
constexpr DWORD extended_style = WS_EX_DLGMODALFRAME;

// The system uses the four low bits of a system command itself.
constexpr WPARAM system_command_mask = 0xFFF0;

// Enough for every click and key of a user; a window that never gets painted up to date must not
// keep the caller from its work.
constexpr int messages_at_once = 256;

// A class must not outlive the module that its procedure is in, so the last window takes it along.
// The lock keeps a thread from losing the class between registering and using it; it is recursive
// since creating a window lets other threads' messages in.
std::recursive_mutex class_lock;

void register_class(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = this_module();
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = class_name;
    if (!RegisterClassExW(&description) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        automation::fail(HRESULT_FROM_WIN32(GetLastError()));
}

// Fails, as it shall, while another window is left.
void unregister_class() noexcept {
    const std::lock_guard lock(class_lock);
    UnregisterClassW(class_name, this_module());
}

bool is_progress_form(HWND window) noexcept {
    wchar_t name[std::size(class_name)]{};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return std::wstring_view(name) == class_name;
}

// The host's window that the user works in: the form stays in front of it. A form must not be
// owned by another one, whose end would be its own.
HWND find_owner() noexcept {
    HWND owner = GetActiveWindow();
    while (owner && is_progress_form(owner))
        owner = GetWindow(owner, GW_OWNER);
    return owner;
}

// Puts the window into the middle of its owner, as far as the screen has room there.
void center(HWND window, HWND owner) noexcept {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT outer;
    RECT own;
    if (IsIconic(owner) || !GetWindowRect(owner, &outer) || !GetWindowRect(window, &own) ||
        !GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &monitor))
        return;
    const RECT& screen = monitor.rcWork;
    const LONG left = (outer.left + outer.right - (own.right - own.left)) / 2;
    const LONG top = (outer.top + outer.bottom - (own.bottom - own.top)) / 2;
    const LONG last_left = std::max(screen.left, screen.right - (own.right - own.left));
    const LONG last_top = std::max(screen.top, screen.bottom - (own.bottom - own.top));
    SetWindowPos(window, nullptr, std::clamp(left, screen.left, last_left),
                 std::clamp(top, screen.top, last_top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// In a dialog the platform would do this. A key that is held down counts as pressed where it was
// first: the one that started the work must not end it.
bool presses_button(const MSG& message) noexcept {
    return message.message == WM_KEYDOWN && message.wParam == VK_RETURN &&
           !(HIWORD(message.lParam) & KF_REPEAT) &&
           (SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON);
}

}  // namespace

void FormWindow::create(const form_layout::Size& client_area) {
    const std::lock_guard lock(class_lock);
    register_class(procedure);
    uses_class_ = true;
    SetLastError(ERROR_SUCCESS);
    const HWND owner = find_owner();
    window_ = CreateWindowExW(extended_style, class_name, L"", window_style, CW_USEDEFAULT,
                              CW_USEDEFAULT, 0, 0, owner, nullptr, this_module(), this);
    if (window_) {
        fit(client_area);
        if (owner) center(window_, owner);
        return;
    }
    // Without a display the platform gives no reason.
    const DWORD reason = GetLastError();
    automation::fail(reason ? HRESULT_FROM_WIN32(reason) : E_FAIL,
                     L"The window of the progress form cannot be created");
}

// Which monitor the window is on, the system decides when it creates it.
void FormWindow::fit(const form_layout::Size& client_area) noexcept {
    resolution_ = automation::pixels_per_inch(window_);
    const form_layout::Size pixels = form_layout::to_pixels(client_area, resolution());
    const SIZE outer = automation::outer_size({pixels.width, pixels.height}, window_style,
                                              extended_style, resolution_);
    SetWindowPos(window_, nullptr, 0, 0, outer.cx, outer.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::destroy() noexcept {
    if (const HWND window = std::exchange(window_, nullptr)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
    controls_.clear();
    if (std::exchange(uses_class_, false)) unregister_class();
}

void FormWindow::set_title(const wchar_t* title) {
    if (!SetWindowTextW(window_, title)) automation::fail(HRESULT_FROM_WIN32(GetLastError()));
}

form_layout::Place FormWindow::client_area() const noexcept {
    RECT area{};
    if (window_) GetClientRect(window_, &area);
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

void FormWindow::handle_pending_messages() noexcept {
    if (handling_messages_) return;
    handling_messages_ = true;
    MSG message;
    for (int count = 0; count < messages_at_once && window_; ++count) {
        if (!PeekMessageW(&message, window_, 0, 0, PM_REMOVE)) break;
        if (message.message == WM_QUIT) {
            // Meant for the host's message loop.
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (presses_button(message)) {
            SendMessageW(message.hwnd, BM_CLICK, 0, 0);
        } else {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    handling_messages_ = false;
}

void FormWindow::follow_resolution(HWND window, int pixels_per_inch,
                                   const RECT& proposed) noexcept {
    const int before = std::exchange(resolution_, pixels_per_inch);
    SetWindowPos(window, nullptr, proposed.left, proposed.top, proposed.right - proposed.left,
                 proposed.bottom - proposed.top, SWP_NOZORDER | SWP_NOACTIVATE);
    controls_.scale(window, pixels_per_inch, before);
}

LRESULT CALLBACK FormWindow::procedure(HWND window, UINT message, WPARAM wide, LPARAM longer) {
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(longer);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self ? self->handle_message(window, message, wide, longer)
                : DefWindowProcW(window, message, wide, longer);
}

// After an event this object may be gone.
LRESULT FormWindow::handle_message(HWND window, UINT message, WPARAM wide, LPARAM longer) {
    switch (message) {
        case WM_ACTIVATE:
            // The owner says which control gets the keyboard.
            if (LOWORD(wide) != WA_INACTIVE) events_.window_activated();
            return 0;
        case WM_SYSCOMMAND:
            // A menu that a key opens has a message loop of its own: the caller's work would wait.
            if ((wide & system_command_mask) == SC_KEYMENU) return 0;
            return DefWindowProcW(window, message, wide, longer);
        case WM_DPICHANGED:
            follow_resolution(window, HIWORD(wide), *reinterpret_cast<const RECT*>(longer));
            return 0;
        case WM_CLOSE:
            events_.window_closed();
            ShowWindow(window, SW_HIDE);
            return 0;
        case WM_DESTROY:
            events_.window_dying();
            return 0;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            window_ = nullptr;
            return DefWindowProcW(window, message, wide, longer);
        default:
            return DefWindowProcW(window, message, wide, longer);
    }
}

}  // namespace tessera
