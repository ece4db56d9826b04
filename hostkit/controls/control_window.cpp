#include "hostkit/controls/control_window.h"

#include <cmath>
#include <string>

#include "automation/error.h"
#include "automation/module.h"
#include "automation/window_resolution.h"
#include "hostkit/controls/window_subclass.h"

namespace hostkit {

struct ControlWindow::Key {};

namespace {

using automation::Bstr;
using SharedControl = std::shared_ptr<ControlWindow>;

const HRESULT error_no_window = HRESULT_FROM_WIN32(ERROR_INVALID_WINDOW_HANDLE);
constexpr UINT_PTR control_subclass = 1;

// The font of the system's message boxes, in another size.
HFONT create_font(HWND window, double points) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = -std::lround(points * automation::pixels_per_inch(window) / 72);
    return CreateFontIndirectW(&font);
}

}  // namespace

ControlWindow::ControlWindow(const Key&) {
    // The window's procedures are this module's code: it must stay loaded as long as they may run.
    automation::object_born();
}

ControlWindow::~ControlWindow() {
    automation::object_died();
}

SharedControl ControlWindow::create(const wchar_t* window_class, DWORD style,
                                    const ControlPlace& place, double font_points,
                                    std::wstring_view caption) {
    if (!IsWindow(place.parent))
        automation::fail(error_no_window, L"There is no window to create a control in");
    auto control = std::make_shared<ControlWindow>(Key{});
    const HWND window =
        CreateWindowExW(0, window_class, std::wstring(caption).c_str(),
                        WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.width,
                        place.height, place.parent, nullptr, automation::this_module(), nullptr);
    if (!window) automation::fail(E_FAIL, L"The control's window could not be created");
    control->attach(window, place.parent);
    if (font_points > 0) control->set_font(font_points);
    return control;
}

void ControlWindow::attach(HWND window, HWND parent) {
    // The window holds its control until it is destroyed.
    auto holder = std::make_unique<SharedControl>(shared_from_this());
    const bool attached =
        subclass::set(window, control_procedure, control_subclass,
                      reinterpret_cast<DWORD_PTR>(holder.get())) &&
        subclass::set(parent, parent_procedure, reinterpret_cast<UINT_PTR>(window),
                      reinterpret_cast<DWORD_PTR>(this));
    if (!attached) {
        subclass::remove(window, control_procedure, control_subclass);
        DestroyWindow(window);
        automation::fail(E_FAIL, L"A control can only be created by its window's own thread");
    }
    static_cast<void>(holder.release());
    window_ = window;
    parent_ = parent;
}

void ControlWindow::set_font(double points) {
    font_.reset(create_font(window_, points));
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
}

HWND ControlWindow::window() const {
    if (!window_) automation::fail(error_no_window, L"The control's window has been destroyed");
    return window_;
}

Bstr ControlWindow::caption() const {
    const HWND control = window();
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
    return Bstr(std::wstring_view(text.data(), static_cast<std::size_t>(length)));
}

void ControlWindow::set_caption(std::wstring_view caption) {
    SetWindowTextW(window(), std::wstring(caption).c_str());
}

std::wstring ControlWindow::fitting(std::wstring_view text) const {
    constexpr std::size_t ellipsis_room = 4;
    const HWND control = window();
    std::wstring result(text);
    result.resize(text.size() + ellipsis_room);
    RECT area;
    GetClientRect(control, &area);
    InflateRect(&area, -2 * GetSystemMetrics(SM_CXEDGE), 0);
    const HDC device = GetDC(control);
    const HGDIOBJ before =
        SelectObject(device, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(device, result.data(), static_cast<int>(text.size()), &area,
              DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT);
    SelectObject(device, before);
    ReleaseDC(control, device);
    return result.c_str();
}

void ControlWindow::on_click(std::function<void()> handler) {
    // Swapped in first: letting the old handler go may run code that comes back here.
    std::swap(click_handler_, handler);
}

void ControlWindow::clicked() {
    // Both live to the end of the call, whatever the handler does to the window.
    const SharedControl keep = shared_from_this();
    const std::function<void()> handler = click_handler_;
    if (handler) handler();
}

void ControlWindow::window_destroyed() noexcept {
    subclass::remove(parent_, parent_procedure, reinterpret_cast<UINT_PTR>(window_));
    window_ = nullptr;
    parent_ = nullptr;
    font_.reset();
    on_click({});
}

LRESULT CALLBACK ControlWindow::control_procedure(HWND window, UINT message, WPARAM first,
                                                  LPARAM second, UINT_PTR, DWORD_PTR data) {
    const LRESULT result = subclass::call_next(window, message, first, second);
    if (message == WM_NCDESTROY) {
        const std::unique_ptr<SharedControl> holder(reinterpret_cast<SharedControl*>(data));
        subclass::remove(window, control_procedure, control_subclass);
        (*holder)->window_destroyed();
    }
    return result;
}

// Controls tell their parent of clicks, not themselves.
LRESULT CALLBACK ControlWindow::parent_procedure(HWND window, UINT message, WPARAM first,
                                                 LPARAM second, UINT_PTR id, DWORD_PTR data) {
    const bool click =
        message == WM_COMMAND && static_cast<UINT_PTR>(second) == id && HIWORD(first) == BN_CLICKED;
    if (!click) return subclass::call_next(window, message, first, second);
    try {
        reinterpret_cast<ControlWindow*>(data)->clicked();
    } catch (...) {
        // The platform's message loop cannot take exceptions.
    }
    return 0;
}

}  // namespace hostkit
