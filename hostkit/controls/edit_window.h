// A multi-line edit control in a hidden window of its own.
#pragma once

#include <string_view>

#include "automation/bstr.h"

namespace hostkit {

// Owns the window, which is created and destroyed on one thread. Nothing is shown: the window only
// holds what a user would edit. It can have the keyboard where there is a display (or a driver
// that stands in for one); without, it is a message-only window.
class EditWindow {
  public:
    // Of any class that understands the messages of edit controls; throws when there is no window.
    explicit EditWindow(const wchar_t* window_class);
    ~EditWindow();
    EditWindow(const EditWindow&) = delete;
    EditWindow& operator=(const EditWindow&) = delete;

    HWND handle() const noexcept { return window_; }
    LRESULT send(UINT message, WPARAM first = 0, LPARAM second = 0) const noexcept {
        return SendMessageW(window_, message, first, second);
    }

    automation::Bstr text() const;
    void set_text(std::wstring_view text);

  private:
    HWND window_;
};

// The part of the text that is selected, in the control's own positions.
struct TextSelection {
    long start;
    long end;
};

// What the selection becomes when its start is set (it is empty then) or its length is. Throws for
// negative numbers; the control limits what lies behind its text.
TextSelection selection_from(long start);
TextSelection selection_with_length(TextSelection selection, long length);

}  // namespace hostkit
