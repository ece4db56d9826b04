// The native window of the progress form: its class, its messages, and nothing of what is in it.
#pragma once

#include "automation/windows_headers.h"
#include "progress/form_layout.h"
#include "progress/scaled_controls.h"

namespace tessera {

// The window belongs to the thread that created it, and so does this object.
class FormWindow {
  public:
    // What the window's owner is told. Any of them may destroy the window.
    class Events {
      public:
        virtual void window_activated() noexcept = 0;
        // The user closes the window: it gets hidden, but is not destroyed.
        virtual void window_closed() noexcept = 0;
        // Somebody else is destroying the window; its controls go with it.
        virtual void window_dying() noexcept = 0;

      protected:
        ~Events() = default;
    };

    explicit FormWindow(Events& events) noexcept : events_(events) {}
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;
    ~FormWindow() { destroy(); }

    // Creates the window, hidden, owned by the thread's active window and in its middle. The client
    // area is given in twips. Throws when there is no display to create it on.
    void create(const form_layout::Size& client_area);
    // The owner is told nothing of a destruction that it asks for.
    void destroy() noexcept;

    // Null while there is no window.
    HWND handle() const noexcept { return window_; }
    void set_title(const wchar_t* title);
    // Pixels per inch of the window, by which its controls are laid out. When that changes, because
    // the user takes the window to another monitor, the window scales them.
    form_layout::Resolution resolution() const noexcept { return {resolution_, resolution_}; }
    form_layout::Place client_area() const noexcept;

    // Handles the messages that wait for this window and its children, and no others: the host's
    // own windows stay as they are while the caller is at work. A call from within a message that
    // is being handled does nothing. The owner keeps this object alive meanwhile.
    void handle_pending_messages() noexcept;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wide, LPARAM longer);
    LRESULT handle_message(HWND window, UINT message, WPARAM wide, LPARAM longer);

    void fit(const form_layout::Size& client_area) noexcept;
    void follow_resolution(HWND window, int pixels_per_inch, const RECT& proposed) noexcept;

    Events& events_;
    HWND window_ = nullptr;
    int resolution_ = USER_DEFAULT_SCREEN_DPI;
    ScaledControls controls_;
    bool uses_class_ = false;
    bool handling_messages_ = false;
};

}  // namespace tessera
