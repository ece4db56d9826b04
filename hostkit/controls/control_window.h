// A child window that is one of the platform's controls.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "automation/bstr.h"

namespace hostkit {

struct ControlPlace {
    HWND parent;
    long left;
    long top;
    long width;
    long height;
};

// What an automation object knows about its control's window. The window belongs to its parent:
// it outlives the automation object, and the automation object may outlive it, in which case
// everything but `find_window` throws.
class ControlWindow : public std::enable_shared_from_this<ControlWindow> {
  public:
    struct Key;  // only `create` makes them

    // With a font of the given size in points; 0 leaves the control its own. Throws when there is
    // no parent or no display.
    static std::shared_ptr<ControlWindow> create(const wchar_t* window_class, DWORD style,
                                                 const ControlPlace& place, double font_points,
                                                 std::wstring_view caption);

    explicit ControlWindow(const Key&);
    ~ControlWindow();
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    // Null once the window has been destroyed.
    HWND find_window() const noexcept { return window_; }
    HWND window() const;

    automation::Bstr caption() const;
    void set_caption(std::wstring_view caption);

    // The text as the control has room for it on one line: with an ellipsis where it is cut.
    std::wstring fitting(std::wstring_view text) const;

    // What a click does, until another handler or none is set or the window is destroyed.
    void on_click(std::function<void()> handler);

  private:
    struct FontDeleter {
        void operator()(HFONT__* font) const noexcept { DeleteObject(font); }
    };

    void attach(HWND window, HWND parent);
    void set_font(double points);
    void clicked();
    void window_destroyed() noexcept;
    static LRESULT CALLBACK control_procedure(HWND window, UINT message, WPARAM first,
                                              LPARAM second, UINT_PTR id, DWORD_PTR data);
    static LRESULT CALLBACK parent_procedure(HWND window, UINT message, WPARAM first, LPARAM second,
                                             UINT_PTR id, DWORD_PTR data);

    HWND window_ = nullptr;
    HWND parent_ = nullptr;
    std::unique_ptr<HFONT__, FontDeleter> font_;
    std::function<void()> click_handler_;
};

}  // namespace hostkit
