// The controller, through the DLL: order of calls, states, reports, lifetimes.
#include "progress/progress_fixture.h"

#include <functional>
#include <memory>

using namespace test;

namespace {

constexpr wchar_t start_failed[] = L"Tessera.Progress|Private Sub 'StartProcess'\n";

// What a test does once, while a window is being activated or given the focus.
std::function<void(HWND)> meanwhile;

LRESULT CALLBACK do_meanwhile(int code, WPARAM window, LPARAM) {
    if (code == HCBT_ACTIVATE || code == HCBT_SETFOCUS)
        if (const auto action = std::exchange(meanwhile, nullptr))
            action(reinterpret_cast<HWND>(window));
    return 0;
}

}  // namespace

TEST_CASE_FIXTURE(ProgressFixture, "a form is opened once and closed once") {
    log_calls();
    start();
    calls();
    SUBCASE("an open form is not opened again") {
        start();
        CHECK(calls() == L"\n" + undo_restored);
    }
    SUBCASE("only the first stop does something") {
        stop();
        CHECK(calls() == L"\n" + given_back);
        stop();
        CHECK(calls() == L"\n");
    }
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "every percentage leads from every state to the one of the table") {
    struct Step {
        short percentage;
        uceProgressState next;
        bool open;
    };
    const Step steps[] = {
        {-32768, uccStateClosed, false}, {-1, uccStateClosed, false},
        {0, uccStateOpen, true},         {1, uccStateExecuting, true},
        {99, uccStateExecuting, true},   {100, uccStateClosed, false},
        {32767, uccStateClosed, false},
    };
    for (const auto begin : {uccStateClosed, uccStateExecuting, uccStateOpen, uccStateAbort}) {
        for (const bool opened : {false, true}) {
            for (const Step& step : steps) {
                CAPTURE(begin);
                CAPTURE(opened);
                CAPTURE(step.percentage);
                opened ? start() : stop();
                call(progress, &ITesseraProgress::put_State, begin);
                CHECK(form_is_open() == opened);
                CHECK(state() == begin);
                percentage(step.percentage);
                const bool aborted = begin == uccStateAbort && step.next == uccStateExecuting;
                CHECK(state() == (aborted ? uccStateAbort : step.next));
                CHECK(form_is_open() == (aborted ? false : step.open));
            }
        }
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "a missing workset is only traced") {
    workset.reset();
    call(kit, &IHostKit::Close);
    log_calls();
    percentage(0);
    CHECK(calls({L"Trace", L"UndoState", L"CreateLabel"}) ==
          L"\nService.Trace \"ZUL: Form_Initialize\"\n"
          L"Service.Trace \"ZUL: WS Is Nothing\"\n"
          L"StandardControls.CreateLabel 10, \"run\"\n"
          L"Service.Trace \"ZUL: WS Is Nothing\"\n");
    percentage(1);
    CHECK(calls() ==
          L"\nService.Trace \"ZUL: WS Is Nothing\"\nService.Trace \"ZUL: WS Is Nothing\"\n"
          L"ProgressBar.get_Bar\nBar.put_Value 1\n");
    stop();
    call(service(), &IHostKitService::put_OffersApplication, VARIANT_FALSE);
    start();
    CHECK(calls({L"Trace"}) ==
          L"\nService.Trace \"ZUL: Form_Initialize\"\nService.Trace \"ZUL: AppI Is Nothing\"\n");
    call(service(), &IHostKitService::put_OffersApplication, VARIANT_TRUE);
}

TEST_CASE_FIXTURE(ProgressFixture, "what cannot be opened is reported once and the walk goes on") {
    std::unique_ptr<NoDisplay> none;
    SUBCASE("no application") {
        call(service(), &IHostKitService::put_OffersApplication, VARIANT_FALSE);
    }
    SUBCASE("no display") {
        none = std::make_unique<NoDisplay>();
    }
    SUBCASE("no controls") {
        fail(L"new Kelos.StandardControls");
    }
    SUBCASE("no registration") {
        fail(L"WindowService.RegisterForm");
    }
    SUBCASE("no workset") {
        fail(L"Application.get_CurrentWorkset");
    }
    SUBCASE("no undo state") {
        fail(L"WorksetObject.get_OuterUndoState");
    }

    percentage(0);
    CHECK(state() == uccStateOpen);
    if (none) {
        const auto errors = get(service(), &IHostKitService::get_Errors);
        const auto error = get(errors, &IHostKitErrors::get_Item, 1L);
        CHECK(get(error, &IHostKitError::get_Description).view() ==
              L"The window of the progress form cannot be created");
    }
    CHECK(take_errors() == start_failed);
    for (short step = 1; step < 100; ++step) {
        percentage(step);
        CHECK(state() == uccStateExecuting);
    }
    // An abort can come from somebody who shares the controller.
    call(progress, &ITesseraProgress::put_State, uccStateAbort);
    percentage(60);
    percentage(61);
    CHECK(state() == uccStateAbort);
    CHECK(take_errors() == L"");

    // Every new beginning tries again.
    percentage(0);
    start();
    percentage(100);
    CHECK(state() == uccStateClosed);
    percentage(1);
    CHECK(take_errors() == std::wstring(start_failed) + start_failed + start_failed);

    none.reset();
    fail_nothing();
    call(service(), &IHostKitService::put_OffersApplication, VARIANT_TRUE);
    percentage(0);
    CHECK(form_is_open());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "the host gets the controller itself and keeps it with its form") {
    percentage(10);
    const HWND shown = window();
    // A title with a button that closes, nothing that resizes.
    CHECK((GetWindowLongPtrW(shown, GWL_STYLE) & (WS_TILEDWINDOW | WS_POPUP)) ==
          (WS_CAPTION | WS_SYSMENU));
    CHECK(form_as<IKelosVBUsercontrol>()->Version(nullptr) == S_OK);
    CHECK(take_errors() == L"Tessera.PrgFrm|Function IKelosVBUsercontrol_Version\n");
    const auto kept = form_controller();
    CHECK(automation::same_object(kept.get(), progress.get()));
    // The form does not count: these are the fixture's, the test's and the host's.
    CHECK(reference_count(progress.get()) == 3);
    progress.reset();
    CHECK(IsWindowVisible(shown));
    click_abort();
    CHECK(get(kept, &ITesseraProgress::get_State) == uccStateAbort);
    call(kept, &ITesseraProgress::StopProcess);
    CHECK_FALSE(form_is_open());
    CHECK_FALSE(IsWindow(shown));
}

TEST_CASE_FIXTURE(ProgressFixture, "two controllers have forms of their own") {
    auto second = create<ITesseraProgress>(L"Tessera.Progress");
    percentage(10);
    call(second, &ITesseraProgress::put_Percentage, short{20});
    CHECK(form_count() == 2);
    const HWND first_window = form_window(1);
    const HWND second_window = form_window(2);
    click_abort();
    CHECK(state() == uccStateAbort);
    CHECK(get(second, &ITesseraProgress::get_State) == uccStateExecuting);
    percentage(100);
    CHECK_FALSE(IsWindow(first_window));
    CHECK(IsWindow(second_window));
    percentage(0);
    CHECK(form_count() == 2);
    call(second, &ITesseraProgress::StopProcess);
}

TEST_CASE_FIXTURE(ProgressFixture, "a picture decides on the direction") {
    const auto where = [&] { return get(progress, &ITesseraProgress::get_Where); };
    CHECK(where() == uccNothing);
    call(progress, &ITesseraProgress::put_Where, uccKelosToBox);
    CHECK(where() == uccKelosToBox);
    call(progress, &ITesseraProgress::put_Picture, Bstr(L"x").get());
    CHECK(where() == uccUserDef);
    CHECK(get(progress, &ITesseraProgress::get_Picture).str() == L"x");
    call(progress, &ITesseraProgress::put_Picture, nullptr);
    CHECK(where() == uccNothing);
    CHECK(get(progress, &ITesseraProgress::get_Picture).empty());
}

TEST_CASE_FIXTURE(ProgressFixture, "messages reach the form one by one, and in its time only") {
    const HHOOK hook = SetWindowsHookExW(WH_CBT, do_meanwhile, nullptr, GetCurrentThreadId());
    // The form has its controller when the host has the form.
    meanwhile = [](HWND form) {
        SendMessageW(FindWindowExW(form, nullptr, WC_BUTTONW, nullptr), BM_CLICK, 0, 0);
    };
    start();
    CHECK_FALSE(meanwhile);
    CHECK(state() == uccStateClosed);
    // Who asks while a message is handled handles no other.
    SetFocus(nullptr);
    uceProgressState seen = uccStateAbort;
    meanwhile = [&](HWND) { seen = state(); };
    PostMessageW(button(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageW(button(), BM_CLICK, 0, 0);
    CHECK(state() == uccStateAbort);
    CHECK(seen == uccStateClosed);
    UnhookWindowsHookEx(hook);
    // Nothing waits behind a percentage.
    PostMessageW(window(), WM_NULL, 0, 0);
    percentage(0);
    MSG waiting;
    CHECK_FALSE(PeekMessageW(&waiting, window(), 0, 0, PM_NOREMOVE));
    // A control that does not end has nobody to tell of its focus any more.
    const auto form = form_as<IKelosVBUsercontrol>();
    const auto bridge = get(form, &IKelosVBUsercontrol::get_WPFControl).as<IHostKitWpfBridge>();
    fail(L"WpfBridge.Shutdown");
    stop();
    log_calls();
    call(bridge, &IHostKitWpfBridge::GainFocus);
    CHECK(calls() == L"\n");
}
