#include "hostkit/controls/edit_window.h"

#include <limits>
#include <string>

#include "automation/error.h"
#include "automation/module.h"

namespace hostkit {
namespace {

constexpr DWORD edit_style =
    WS_POPUP | ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_WANTRETURN | ES_NOHIDESEL;

HWND create_window(const wchar_t* window_class, HWND parent) {
    return CreateWindowExW(0, window_class, L"", edit_style, 0, 0, 640, 480, parent, nullptr,
                           automation::this_module(), nullptr);
}

}  // namespace

EditWindow::EditWindow(const wchar_t* window_class)
    : window_(create_window(window_class, nullptr)) {
    if (!window_) window_ = create_window(window_class, HWND_MESSAGE);
    if (!window_) automation::fail(E_FAIL, L"The edit control's window could not be created");
}

EditWindow::~EditWindow() {
    DestroyWindow(window_);
}

automation::Bstr EditWindow::text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
    const int length = GetWindowTextW(window_, text.data(), static_cast<int>(text.size()));
    return automation::Bstr(std::wstring_view(text.data(), static_cast<std::size_t>(length)));
}

void EditWindow::set_text(std::wstring_view text) {
    SetWindowTextW(window_, std::wstring(text).c_str());
}

TextSelection selection_from(long start) {
    if (start < 0) automation::fail(E_INVALIDARG, L"A selection does not start before the text");
    return {start, start};
}

TextSelection selection_with_length(TextSelection selection, long length) {
    if (length < 0) automation::fail(E_INVALIDARG, L"A selection's length is not negative");
    if (length > std::numeric_limits<long>::max() - selection.start)
        length = std::numeric_limits<long>::max() - selection.start;
    return {selection.start, selection.start + length};
}

}  // namespace hostkit
