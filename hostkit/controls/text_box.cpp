// Kelos.TextBox: a plain text box on the platform's edit control.

#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"
#include "hostkit/controls/edit_window.h"

#include <commctrl.h>

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::view_of;

// Positions count both characters of a line end.
class TextBox
    : public automation::Object<TextBox, automation::Extends<IHostKitTextBox, IKelosTextBox>,
                                IOleWindow> {
  public:
    // The edit control takes 30000 characters unless told otherwise; 0 means as many as it can.
    TextBox() : window_(WC_EDITW) { window_.send(EM_SETLIMITTEXT, 0); }

    STDMETHODIMP get_Text(BSTR* result) override {
        return answer<Watched>(result, [&] { return window_.text(); });
    }
    STDMETHODIMP put_Text(BSTR value) override {
        return run<Watched>(Given(value), [&] { window_.set_text(view_of(value)); });
    }
    STDMETHODIMP get_SelStart(long* result) override {
        return answer<Watched>(result, [&] { return selection().start; });
    }
    STDMETHODIMP put_SelStart(long value) override {
        return run<Watched>(Given(value), [&] { select(selection_from(value)); });
    }
    STDMETHODIMP get_SelLength(long* result) override {
        return answer<Watched>(result, [&] {
            const TextSelection selected = selection();
            return selected.end - selected.start;
        });
    }
    STDMETHODIMP put_SelLength(long value) override {
        return run<Watched>(Given(value),
                            [&] { select(selection_with_length(selection(), value)); });
    }

    STDMETHODIMP GetWindow(HWND* result) override {
        if (!result) return E_POINTER;
        *result = window_.handle();
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    // By address: the message's own result has only 16 bits for each.
    TextSelection selection() const noexcept {
        DWORD start = 0;
        DWORD end = 0;
        window_.send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return {static_cast<long>(start), static_cast<long>(end)};
    }
    void select(TextSelection selected) noexcept {
        window_.send(EM_SETSEL, static_cast<WPARAM>(selected.start), selected.end);
        window_.send(EM_SCROLLCARET);
    }

    EditWindow window_;
};

}  // namespace

ComPtr<IUnknown> create_text_box() {
    return automation::make<TextBox>()->main_interface();
}

}  // namespace hostkit
