// The form against a host that records: undo states, window, embedding.
#include "progress/progress_fixture.h"

namespace tessera {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::make;
using fake_host::host;

class Marker : public automation::Object<Marker, IKelosBar> {
  public:
    STDMETHODIMP get_Value(double*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Value(double) override { return E_NOTIMPL; }
};
ComPtr<IDispatch> marker() {
    return make<Marker>()->main_pointer();
}

}  // namespace

TEST_CASE_FIXTURE(ProgressFixture, "the title is the caption at the time of opening") {
    const auto title = [&] {
        wchar_t text[64];
        GetWindowTextW(window(), text, 64);
        return std::wstring(text);
    };
    progress->StartProcess();
    CHECK((title() == L""));
    progress->StopProcess();
    progress->put_Caption(Bstr(L"Export \u00e4\u4e16").get());
    progress->StartProcess();
    progress->put_Caption(Bstr(L"later").get());
    progress->StartProcess();
    CHECK((title() == L"Export \u00e4\u4e16"));
}

TEST_CASE_FIXTURE(ProgressFixture, "the undo states of the opening are written back") {
    const auto inner = marker();
    const auto outer = marker();
    host().undo_state = inner;
    host().outer_undo_state = outer;
    progress->StartProcess();
    host().undo_state = outer;
    host().outer_undo_state.reset();
    SUBCASE("by a percentage") {
        percentage(1);
    }
    SUBCASE("by the form's member") {
        host().form.as<ITesseraPrgFrm>()->SetUndoState();
    }
    SUBCASE("by the embedded control's focus") {
        ComPtr<IDispatch> bridge;
        host().form.as<IKelosVBUsercontrol>()->get_WPFControl(bridge.put());
        host().bridge_events->WPFGotFocus();
    }
    CHECK(host().undo_state == inner);
    CHECK(host().outer_undo_state == outer);
}

TEST_CASE_FIXTURE(ProgressFixture, "a form opens although its look or its texts fail") {
    struct Failure {
        const char* call;
        const char* label;
    };
    const Failure failures[] = {
        {"UIService", "Sub InitializeWpfControls"},
        {"Apply", "Sub InitializeWpfControls"},
        {"TranslateText", "Private Sub 'Form_Load'"},
        {"Button.Caption", "Private Sub 'Form_Load'"},
        {"ControlWrapper", "Private Sub 'Form_Activate'"},
        {"Activate", "Private Sub 'Form_Activate'"},
    };
    for (const Failure& failure : failures) {
        CAPTURE(failure.call);
        host().failing = failure.call;
        percentage(0);
        CHECK(form_is_open());
        CHECK(host().count("ReportError") == 1);
        CHECK(host().count(std::string("ReportError Tessera.PrgFrm: ") + failure.label) == 1);
        progress->StopProcess();
        host().take_calls();
    }
}

TEST_CASE_FIXTURE(ProgressFixture, "a window that the user or the host takes away does no harm") {
    percentage(10);
    ComPtr<IDispatch> bridge;
    host().form.as<IKelosVBUsercontrol>()->get_WPFControl(bridge.put());
    host().take_calls();
    const HWND shown = window();
    std::string moved = "Bar\nBar.Value 20\n";
    SUBCASE("closed by the user") {
        SendMessageW(shown, WM_CLOSE, 0, 0);
        CHECK_FALSE(IsWindowVisible(shown));
        // An abort it is not.
        CHECK(state() == uccStateExecuting);
    }
    SUBCASE("closed by the user, the message still waiting") {
        PostMessageW(shown, WM_CLOSE, 0, 0);
        CHECK(state() == uccStateExecuting);
        CHECK_FALSE(IsWindowVisible(shown));
    }
    SUBCASE("destroyed") {
        DestroyWindow(shown);
        moved.clear();
    }
    CHECK(host().take_calls() == "Bridge.Shutdown\n");
    percentage(20);
    CHECK(host().take_calls() == std::string(undo_restored) + undo_restored + moved);
    progress->StopProcess();
    CHECK_FALSE(IsWindow(shown));
    CHECK(host().take_calls() == "Application\nWindowService\nUnregisterForm form\n");
    percentage(0);
    CHECK(IsWindowVisible(window()));
}

TEST_CASE_FIXTURE(ProgressFixture, "the host's surface embeds the form") {
    progress->StartProcess();
    const auto control = host().form.as<IKelosVBUsercontrol>();
    host().take_calls();
    long version = 0;
    CHECK(control->Version(&version) == S_OK);
    CHECK(version == 1);

    CHECK(control->UpdateLayout() == S_OK);
    CHECK(host().take_calls() == "UIService\nRefreshControls form\n");

    ComPtr<IDispatch> first;
    ComPtr<IDispatch> second;
    CHECK(control->get_WPFControl(first.put()) == S_OK);
    CHECK(host().take_calls() == "Bridge.Events sink\nUIService\nConnectControls form bridge\n");
    CHECK(control->get_WPFControl(second.put()) == S_OK);
    CHECK(first);
    CHECK(first == second);
    CHECK(host().take_calls() == "");

    SetWindowPos(window(), nullptr, 0, 0, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT area;
    GetClientRect(window(), &area);
    CHECK(control->UpdateLayout() == S_OK);
    CHECK(host().take_calls() == "Bridge.Move 0 0 " + std::to_string(area.right) + " " +
                                     std::to_string(area.bottom) +
                                     "\nUIService\nRefreshControls form\n");

    SUBCASE("the control ends with the form") {
        progress->StopProcess();
        CHECK(host().take_calls().ends_with("UnregisterForm form\nBridge.Shutdown\n"));
    }
    SUBCASE("a control that does not end is let go all the same") {
        host().failing = "Bridge.Shutdown";
        progress->StopProcess();
        CHECK(host().count("ReportError Tessera.PrgFrm: Sub Form_Unload") == 1);
    }
    // Afterwards there is nothing that could be embedded, and nothing is.
    const ComPtr<IKelosWpfBridgeEvents> focus = host().bridge_events;
    host().take_calls();
    CHECK(focus->WPFGotFocus() == S_OK);
    CHECK(control->get_WPFControl(first.put()) == S_OK);
    CHECK_FALSE(first);
    CHECK(host().take_calls() ==
          "ReportError Tessera.PrgFrm: Property IKelosVBUsercontrol_WPFControl: "
          "The progress form is not open\n");
}

TEST_CASE_FIXTURE(ProgressFixture, "an embedding that fails is reported") {
    progress->StartProcess();
    const auto control = host().form.as<IKelosVBUsercontrol>();
    host().failing = "ConnectControls";
    ComPtr<IDispatch> bridge;
    CHECK(control->get_WPFControl(bridge.put()) == S_OK);
    CHECK_FALSE(bridge);
    CHECK(host().count("ReportError Tessera.PrgFrm: Property IKelosVBUsercontrol_WPFControl") == 1);
    host().failing = "RefreshControls";
    CHECK(control->UpdateLayout() == S_OK);
    CHECK(host().count("ReportError Tessera.PrgFrm: Sub IKelosVBUsercontrol_UpdateLayout") == 1);
    host().failing = "set OuterUndoState";
    CHECK(host().bridge_events->WPFGotFocus() == S_OK);
    CHECK(host().count("ReportError Tessera.PrgFrm: Private Sub 'm_UC_WPFGotFocus'") == 1);
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

}  // namespace tessera
