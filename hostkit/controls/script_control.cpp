// Kelos.ScriptControl: a script editor on the platform's rich edit control.

#include <string>

#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"
#include "hostkit/controls/edit_window.h"

#include <richedit.h>

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::make;
using automation::view_of;

// The window class of the newest rich edit control that the system has.
const wchar_t* rich_edit_class() {
    static const wchar_t* const name = LoadLibraryW(L"Msftedit.dll")   ? L"RICHEDIT50W"
                                       : LoadLibraryW(L"Riched20.dll") ? L"RichEdit20W"
                                                                       : nullptr;
    if (!name) automation::fail(E_FAIL, L"The system has no rich edit control");
    return name;
}

// Positions are the control's own, in which a line end is one character.
class ScriptEditor : public automation::Object<ScriptEditor, IKelosScriptEditor, IOleWindow> {
  public:
    ScriptEditor() : window_(rich_edit_class()) {
        window_.send(EM_SETTEXTMODE, TM_PLAINTEXT);
        window_.send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
        // Lines are the script's lines: nothing is wrapped at the window's border.
        window_.send(EM_SETTARGETDEVICE, 0, 1);
    }

    STDMETHODIMP get_Text(BSTR* result) override {
        return answer<Watched>(result, [&] { return text(); });
    }
    STDMETHODIMP put_Text(BSTR value) override {
        return run<Watched>(Given(value), [&] {
            given_text_ = view_of(value);
            window_.set_text(given_text_);
            window_.send(EM_SETMODIFY, FALSE);
        });
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
    STDMETHODIMP LinePosition(long line_number, long* result) override {
        return answer<Watched>(result, Given(line_number),
                               [&] { return line_position(line_number); });
    }
    STDMETHODIMP LineLength(long position, long* result) override {
        return answer<Watched>(result, Given(position), [&] {
            if (position < 0) automation::fail(E_INVALIDARG, L"There is no such position");
            return static_cast<long>(window_.send(EM_LINELENGTH, static_cast<WPARAM>(position)));
        });
    }

    STDMETHODIMP GetWindow(HWND* result) override {
        if (!result) return E_POINTER;
        *result = window_.handle();
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    // The control has one kind of line end only: while nobody has edited the text, it is what was
    // given.
    Bstr text() const { return window_.send(EM_GETMODIFY) ? window_.text() : Bstr(given_text_); }
    long line_position(long line_number) const noexcept {
        // The control would take a negative number for the line with the caret.
        if (line_number < 1) return -1;
        return static_cast<long>(window_.send(EM_LINEINDEX, static_cast<WPARAM>(line_number) - 1));
    }
    TextSelection selection() const noexcept {
        CHARRANGE range{};
        window_.send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return {range.cpMin, range.cpMax};
    }
    void select(TextSelection selected) noexcept {
        CHARRANGE range{selected.start, selected.end};
        window_.send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        window_.send(EM_SCROLLCARET);
    }

    EditWindow window_;
    std::wstring given_text_;
};

class ScriptControl : public automation::Object<ScriptControl, IHostKitScriptControl, IOleWindow> {
  public:
    ScriptControl() : editor_(make<ScriptEditor>()) {}

    STDMETHODIMP get_Object(IKelosScriptEditor** result) override {
        return answer<Watched>(result, [&] { return ComPtr<IKelosScriptEditor>(editor_); });
    }
    STDMETHODIMP GetWindow(HWND* result) override { return editor_->GetWindow(result); }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    const ComPtr<ScriptEditor> editor_;
};

}  // namespace

ComPtr<IUnknown> create_script_control() {
    return make<ScriptControl>()->main_interface();
}

}  // namespace hostkit
