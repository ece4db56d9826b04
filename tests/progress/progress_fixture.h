// A controller of the component, and what a user sees and does of its form.
#pragma once

#include "support/watched_host.h"

#include <commctrl.h>

namespace test {

class ProgressFixture : public WatchedProject {
  public:
    // Before the base class looks for what is still alive: the host keeps a controller whose form
    // is open.
    ~ProgressFixture() {
        if (progress) progress->StopProcess();
    }

    uceProgressState state() const { return get(progress, &ITesseraProgress::get_State); }
    void percentage(short value) const { call(progress, &ITesseraProgress::put_Percentage, value); }
    void start() const { call(progress, &ITesseraProgress::StartProcess); }
    void stop() const { call(progress, &ITesseraProgress::StopProcess); }
    bool form_is_open() const { return form_count() > 0; }
    HWND window() const { return form_window(); }
    HWND text_line() const { return form_control(WC_STATICW); }
    HWND bar() const { return form_control(PROGRESS_CLASSW); }
    HWND button() const { return form_control(WC_BUTTONW); }
    void click_abort() const { SendMessageW(button(), BM_CLICK, 0, 0); }
    template <class Role>
    ComPtr<Role> form_as() const {
        return get(form(), &IHostKitForm::get_Form).as<Role>();
    }

    ComPtr<ITesseraProgress> progress = create<ITesseraProgress>(L"Tessera.Progress");
};

// A desktop on which no window can be created: CreateWindow answers nothing and gives no reason.
class NoDisplay {
  public:
    NoDisplay() : hook_(SetWindowsHookExW(WH_CBT, refuse, nullptr, GetCurrentThreadId())) {}
    NoDisplay(const NoDisplay&) = delete;
    NoDisplay& operator=(const NoDisplay&) = delete;
    ~NoDisplay() { UnhookWindowsHookEx(hook_); }

  private:
    static LRESULT CALLBACK refuse(int code, WPARAM, LPARAM) { return code == HCBT_CREATEWND; }

    HHOOK hook_;
};

// What a restored undo state looks like to the host, and a form that is given back.
inline const std::wstring undo_restored =
    L"WorksetObject.putref_CurrentUndoState IHostKitUndoState\n"
    L"WorksetObject.putref_OuterUndoState IHostKitUndoState\n"
    L"Service.Trace \"ZUL: CurrentUndoState was set back succesfull\"\n";
inline const std::wstring given_back =
    L"Service.get_Application\n"
    L"Application.get_WindowService\n"
    L"WindowService.UnregisterForm ITesseraPrgFrm\n";

}  // namespace test
