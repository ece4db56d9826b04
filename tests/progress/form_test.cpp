// The form, through the DLL: shown by the kit's window service, driven by messages as a user drives
// it, embedded by the host's surface.
#include "progress/form_layout.h"
#include "progress/progress_fixture.h"

using namespace test;
namespace layout = tessera::form_layout;

namespace {

std::wstring text_of(HWND window) {
    wchar_t text[128];
    return std::wstring(text, static_cast<std::size_t>(GetWindowTextW(window, text, 128)));
}

layout::Place place_of(HWND control) {
    RECT area;
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&area), 2);
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

layout::Resolution screen() {
    const HDC context = GetDC(nullptr);
    const layout::Resolution result{GetDeviceCaps(context, LOGPIXELSX),
                                    GetDeviceCaps(context, LOGPIXELSY)};
    ReleaseDC(nullptr, context);
    return result;
}

}  // namespace

TEST_CASE_FIXTURE(ProgressFixture, "the form has its title, its texts and its controls' places") {
    struct Texts {
        HostKitLanguage language;
        const wchar_t* line;
        const wchar_t* button;
    };
    const Texts all[] = {{hklGerman, L"Bitte warten...", L"Abbrechen"},
                         {hklEnglish, L"Please wait...", L"Abort"}};
    call(progress, &ITesseraProgress::put_Caption, Bstr(L"Export \u00e4\u4e16").get());
    for (const Texts& texts : all) {
        call(service(), &IHostKitService::put_Language, texts.language);
        start();
        CHECK(text_of(window()) == L"Export \u00e4\u4e16");
        CHECK(text_of(text_line()) == texts.line);
        CHECK(text_of(button()) == texts.button);
        CHECK(IsWindowVisible(window()));

        RECT client;
        GetClientRect(window(), &client);
        const auto size = layout::to_pixels(layout::client_area, screen());
        CHECK(client.right == size.width);
        CHECK(client.bottom == size.height);
        CHECK(place_of(text_line()) == layout::to_pixels(layout::text_line, screen()));
        CHECK(place_of(bar()) == layout::to_pixels(layout::progress_bar, screen()));
        CHECK(place_of(button()) == layout::to_pixels(layout::abort_button, screen()));
        stop();
    }
    // The title is the caption at the time of opening.
    start();
    call(progress, &ITesseraProgress::put_Caption, Bstr(L"later").get());
    start();
    CHECK(text_of(window()) == L"Export \u00e4\u4e16");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "the form follows its monitor's resolution, there and back") {
    start();
    const auto font_height = [&] {
        LOGFONTW font{};
        const LRESULT handle = SendMessageW(text_line(), WM_GETFONT, 0, 0);
        GetObjectW(reinterpret_cast<HGDIOBJ>(handle), sizeof font, &font);
        return font.lfHeight;
    };
    const LONG height = font_height();
    const int usual = screen().horizontal;
    for (const int pixels_per_inch : {usual * 2, usual * 3 / 2, usual}) {
        CAPTURE(pixels_per_inch);
        RECT proposed{40, 50, 740, 250};
        SendMessageW(window(), WM_DPICHANGED, MAKEWPARAM(pixels_per_inch, pixels_per_inch),
                     reinterpret_cast<LPARAM>(&proposed));
        RECT outer;
        GetWindowRect(window(), &outer);
        CHECK(EqualRect(&outer, &proposed));
        const layout::Resolution now{pixels_per_inch, pixels_per_inch};
        CHECK(place_of(text_line()).width ==
              doctest::Approx(layout::to_pixels(layout::text_line, now).width).epsilon(0.01));
        CHECK(place_of(button()).left ==
              doctest::Approx(layout::to_pixels(layout::abort_button, now).left).epsilon(0.01));
        CHECK(font_height() ==
              doctest::Approx(MulDiv(height, pixels_per_inch, usual)).epsilon(0.1));
    }
    stop();
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "the bar shows the percentage until the form closes") {
    for (const short value : {0, 1, 50, 99}) {
        percentage(value);
        CHECK(SendMessageW(bar(), PBM_GETPOS, 0, 0) == value);
        CHECK(state() == (value == 0 ? uccStateOpen : uccStateExecuting));
    }
    const HWND shown = window();
    percentage(100);
    CHECK_FALSE(form_is_open());
    CHECK_FALSE(IsWindow(shown));
    CHECK(state() == uccStateClosed);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "an abort while a walk runs is seen at the next read of the state") {
    percentage(0);
    SUBCASE("clicked at once") {
        click_abort();
    }
    SUBCASE("a click waits") {
        PostMessageW(button(), BM_CLICK, 0, 0);
    }
    SUBCASE("a press of the mouse waits") {
        PostMessageW(button(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        PostMessageW(button(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }
    // The keyboard is at the button.
    SUBCASE("a press of the space bar waits") {
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_SPACE, 0x00390001);
        PostMessageW(GetFocus(), WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0390001));
    }
    SUBCASE("a press of Enter waits, behind the held key that started the work") {
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x401C0001);
        CHECK(state() == uccStateOpen);
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0x001C0001);
    }
    CHECK(state() == uccStateAbort);
    CHECK(form_is_open());
    percentage(60);
    CHECK(state() == uccStateAbort);
    CHECK_FALSE(form_is_open());
    percentage(0);
    CHECK(state() == uccStateOpen);
    CHECK(form_is_open());
    stop();
    CHECK(state() == uccStateOpen);
}

TEST_CASE_FIXTURE(ProgressFixture, "a click that waits counts for the next percentage, 0 as well") {
    percentage(0);
    PostMessageW(button(), BM_CLICK, 0, 0);
    percentage(0);
    CHECK(state() == uccStateAbort);
    percentage(0);
    percentage(10);
    PostMessageW(button(), BM_CLICK, 0, 0);
    percentage(20);
    CHECK_FALSE(form_is_open());
    CHECK(state() == uccStateAbort);
}

TEST_CASE_FIXTURE(ProgressFixture, "an abort clicked while the host shows a message counts") {
    percentage(10);
    call(service(), &IHostKitService::put_Mode, hkmInteractive);
    static HWND abort_button;
    abort_button = button();
    // Runs in the message box's own loop.
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) {
        const HWND box = FindWindowW(L"#32770", L"HQuery (Tessera)");
        if (!box) return;
        SendMessageW(abort_button, BM_CLICK, 0, 0);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    const auto cursor = create<ITesseraHQuery>(L"Tessera.HQuery");
    call(cursor, &ITesseraHQuery::MoveFirst);
    CHECK_FALSE(get(cursor, &ITesseraHQuery::get_Cell, short{1}));
    KillTimer(nullptr, timer);
    call(service(), &IHostKitService::put_Mode, hkmRecording);
    CHECK(message_count() == 1);
    CHECK(state() == uccStateAbort);
    percentage(20);
    CHECK_FALSE(form_is_open());
}

TEST_CASE_FIXTURE(ProgressFixture, "the undo states of the opening are written back") {
    const auto inner = get(workset, &IKelosWorkset::get_CurrentUndoState);
    const auto outer = get(workset, &IKelosWorkset::get_OuterUndoState);
    start();
    call(workset, &IKelosWorkset::putref_CurrentUndoState, outer.get());
    call(workset, &IKelosWorkset::putref_OuterUndoState, nullptr);
    SUBCASE("by a percentage") {
        percentage(1);
    }
    SUBCASE("by the form's member") {
        call(form_as<ITesseraPrgFrm>(), &ITesseraPrgFrm::SetUndoState);
    }
    SUBCASE("by the embedded control's focus") {
        const auto bridge =
            get(form_as<IKelosVBUsercontrol>(), &IKelosVBUsercontrol::get_WPFControl);
        call(bridge.as<IHostKitWpfBridge>(), &IHostKitWpfBridge::GainFocus);
    }
    CHECK(get(workset, &IKelosWorkset::get_CurrentUndoState) == inner);
    CHECK(get(workset, &IKelosWorkset::get_OuterUndoState) == outer);
    // Who calls the form's member hears of a failure.
    fail(L"WorksetObject.putref_OuterUndoState");
    CHECK(FAILED(form_as<ITesseraPrgFrm>()->SetUndoState()));
    CHECK(take_errors().empty());
}

TEST_CASE_FIXTURE(ProgressFixture, "a form opens although its look or its texts fail") {
    struct Failure {
        const wchar_t* member;
        const wchar_t* report;
    };
    const Failure failures[] = {
        {L"Service.get_UIService", L"Tessera.PrgFrm|Sub InitializeWpfControls\n"},
        {L"FormSetting.Apply", L"Tessera.PrgFrm|Sub InitializeWpfControls\n"},
        {L"Service.TranslateText", L"Tessera.PrgFrm|Private Sub 'Form_Load'\n"},
        {L"Button.put_Caption", L"Tessera.PrgFrm|Private Sub 'Form_Load'\n"},
        {L"Service.get_ControlWrapper", L"Tessera.PrgFrm|Private Sub 'Form_Activate'\n"},
        {L"ControlWrapper.Activate", L"Tessera.PrgFrm|Private Sub 'Form_Activate'\n"},
    };
    for (const Failure& failure : failures) {
        CAPTURE(failure.member);
        fail(failure.member);
        percentage(0);
        CHECK(form_is_open());
        CHECK(take_errors() == failure.report);
        stop();
    }
}

TEST_CASE_FIXTURE(ProgressFixture, "a window that the user or the host takes away does no harm") {
    percentage(10);
    const auto bridge = get(form_as<IKelosVBUsercontrol>(), &IKelosVBUsercontrol::get_WPFControl);
    log_calls();
    const HWND shown = window();
    std::wstring moved = L"ProgressBar.get_Bar\nBar.put_Value 20\n";
    SUBCASE("closed by the user") {
        SendMessageW(shown, WM_CLOSE, 0, 0);
        CHECK_FALSE(IsWindowVisible(shown));
        // An abort it is not.
        CHECK(state() == uccStateExecuting);
    }
    SUBCASE("closed by the user, the message still waiting") {
        PostMessageW(shown, WM_SYSCOMMAND, SC_CLOSE, 0);
        CHECK(state() == uccStateExecuting);
        CHECK_FALSE(IsWindowVisible(shown));
    }
    SUBCASE("destroyed") {
        DestroyWindow(shown);
        moved.clear();
    }
    CHECK(calls() == L"\nWpfBridge.Shutdown\n");
    percentage(20);
    CHECK(calls() == L"\n" + undo_restored + undo_restored + moved);
    stop();
    CHECK_FALSE(IsWindow(shown));
    CHECK(calls() == L"\n" + given_back);
    percentage(0);
    CHECK(IsWindowVisible(window()));
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "who closed the form gets one again with the next work") {
    for (const bool destroyed : {false, true}) {
        for (const bool started : {false, true}) {
            CAPTURE(destroyed);
            CAPTURE(started);
            percentage(10);
            const HWND closed = window();
            destroyed ? DestroyWindow(closed) : SendMessageW(closed, WM_CLOSE, 0, 0);
            percentage(20);
            CHECK_FALSE(IsWindowVisible(closed));
            started ? start() : percentage(0);
            CHECK(IsWindowVisible(window()));
            CHECK(form_count() == 1);
            CHECK_FALSE(IsWindow(closed));
            stop();
        }
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "a key that opens menus does not stop the walk") {
    percentage(10);
    // Whoever opened a menu would wait here until it is closed.
    bool menu_opened = false;
    static bool* const seen = &menu_opened;
    static const WNDPROC before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        window(), GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(+[](HWND form, UINT message, WPARAM wide, LPARAM longer) {
            if (message != WM_ENTERMENULOOP)
                return CallWindowProcW(before, form, message, wide, longer);
            *seen = true;
            return static_cast<LRESULT>(SendMessageW(form, WM_CANCELMODE, 0, 0));
        })));
    for (const LPARAM key : {0, int{L' '}})
        PostMessageW(window(), WM_SYSCOMMAND, SC_KEYMENU, key);
    CHECK(state() == uccStateExecuting);
    CHECK_FALSE(menu_opened);
}

TEST_CASE_FIXTURE(ProgressFixture, "the form belongs to the window that the user works in") {
    const HWND host = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200,
                                      150, 700, 300, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(host);
    REQUIRE(GetActiveWindow() == host);
    percentage(10);
    CHECK(GetWindow(window(), GW_OWNER) == host);
    RECT outer;
    RECT own;
    GetWindowRect(host, &outer);
    GetWindowRect(window(), &own);
    CHECK(abs((outer.left + outer.right) - (own.left + own.right)) <= 1);
    CHECK(abs((outer.top + outer.bottom) - (own.top + own.bottom)) <= 1);
    // The second form stays when the first one, which is active, goes.
    const auto second = create<ITesseraProgress>(L"Tessera.Progress");
    call(second, &ITesseraProgress::StartProcess);
    const HWND second_window = form_window(2);
    CHECK(GetWindow(second_window, GW_OWNER) == host);
    stop();
    CHECK(IsWindowVisible(second_window));
    // At the edge of the screen it stays on the screen.
    call(second, &ITesseraProgress::StopProcess);
    SetWindowPos(host, nullptr, -600, -280, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SetForegroundWindow(host);
    start();
    GetWindowRect(window(), &own);
    CHECK(own.left >= 0);
    CHECK(own.top >= 0);
    // With its owner the form goes, and the work goes on.
    DestroyWindow(host);
    percentage(20);
    CHECK(state() == uccStateExecuting);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "the host's surface embeds the form") {
    start();
    const auto control = form_as<IKelosVBUsercontrol>();
    CHECK(get(control, &IKelosVBUsercontrol::Version) == 1);
    log_calls();
    const std::wstring refreshed =
        L"Service.get_UIService\nUIService.RefreshControls ITesseraPrgFrm\n";
    call(control, &IKelosVBUsercontrol::UpdateLayout);
    CHECK(calls() == L"\n" + refreshed);

    const auto embedded = get(control, &IKelosVBUsercontrol::get_WPFControl);
    CHECK(calls() ==
          LR"(
new Kelos.WpfBridge
WpfBridge.putref_Events IKelosWpfBridgeEvents
Service.get_UIService
UIService.ConnectControls ITesseraPrgFrm, IHostKitWpfBridge
)");
    CHECK(get(control, &IKelosVBUsercontrol::get_WPFControl) == embedded);
    CHECK(calls() == L"\n");

    SetWindowPos(window(), nullptr, 0, 0, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT area;
    GetClientRect(window(), &area);
    call(control, &IKelosVBUsercontrol::UpdateLayout);
    CHECK(calls() == L"\nWpfBridge.Move 0, 0, " + std::to_wstring(area.right) + L", " +
                         std::to_wstring(area.bottom) + L"\n" + refreshed);

    SUBCASE("the control ends with the form") {
        stop();
        CHECK(calls() == L"\n" + given_back + L"WpfBridge.Shutdown\n");
        CHECK(get(embedded.as<IHostKitWpfBridge>(), &IHostKitWpfBridge::get_Ended) != 0);
    }
    SUBCASE("a control that does not end is let go all the same") {
        fail(L"WpfBridge.Shutdown");
        stop();
        CHECK(take_errors() == L"Tessera.PrgFrm|Sub Form_Unload\n");
    }
    // Afterwards there is nothing that could be embedded.
    call(service(), &IHostKitService::Clear);
    CHECK_FALSE(get(control, &IKelosVBUsercontrol::get_WPFControl));
    CHECK(take_errors() == L"Tessera.PrgFrm|Property IKelosVBUsercontrol_WPFControl\n");
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "only the form's own messages are handled, and a quit is left alone") {
    percentage(10);
    const HWND other = CreateWindowExW(0, L"STATIC", L"other", WS_POPUP, 0, 0, 10, 10, nullptr,
                                       nullptr, nullptr, nullptr);
    PostMessageW(other, WM_CLOSE, 0, 0);
    PostMessageW(window(), WM_CLOSE, 0, 0);
    PostQuitMessage(7);
    state();
    CHECK_FALSE(IsWindowVisible(window()));
    CHECK(IsWindow(other));

    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
        DispatchMessageW(&message);
    CHECK(message.message == WM_QUIT);
    CHECK(message.wParam == 7);
    CHECK_FALSE(IsWindow(other));
}

TEST_CASE_FIXTURE(ProgressFixture, "the last form takes its window class along") {
    percentage(0);
    wchar_t name[64];
    GetClassNameW(window(), name, 64);
    const auto component = reinterpret_cast<HINSTANCE>(GetClassLongPtrW(window(), GCLP_HMODULE));
    CHECK(component == GetModuleHandleW(L"Tessera.dll"));
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    CHECK(GetClassInfoExW(component, name, &description));
    percentage(100);
    CHECK_FALSE(GetClassInfoExW(component, name, &description));
}
