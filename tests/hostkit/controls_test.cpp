// Through the DLL: the controls of the kit, with real windows.
#include <functional>
#include <limits>

#include "support/early_bound.h"
#include "support/transcript.h"

#include <commctrl.h>

using namespace test;

namespace {

constexpr wchar_t parent_class[] = L"HostKitTestParent";

// A top-level window that counts the commands that its controls send and nobody else takes.
class Parent {
  public:
    Parent() {
        WNDCLASSW definition{};
        definition.lpfnWndProc = procedure;
        definition.lpszClassName = parent_class;
        RegisterClassW(&definition);
        commands_ = 0;
        handle_ = CreateWindowExW(0, parent_class, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500,
                                  200, nullptr, nullptr, nullptr, nullptr);
        REQUIRE(handle_);
    }
    ~Parent() { destroy(); }
    Parent(const Parent&) = delete;
    Parent& operator=(const Parent&) = delete;

    HWND get() const { return handle_; }
    long number() const { return static_cast<long>(reinterpret_cast<LONG_PTR>(handle_)); }
    void destroy() {
        if (handle_) DestroyWindow(std::exchange(handle_, nullptr));
    }
    static int commands() { return commands_; }

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
        if (message == WM_COMMAND) ++commands_;
        return DefWindowProcW(window, message, first, second);
    }
    static inline int commands_ = 0;
    HWND handle_ = nullptr;
};

// Counts the events of a control; may do more on each.
template <class Events>
class EventCounter : public EarlyBound<Events> {
  public:
    int count = 0;
    std::function<void()> then;

  protected:
    HRESULT happened() {
        ++count;
        if (then) then();
        return S_OK;
    }
};

struct Clicks : EventCounter<IKelosButtonEvents> {
    STDMETHODIMP Click() override { return happened(); }
};

struct Focuses : EventCounter<IKelosWpfBridgeEvents> {
    STDMETHODIMP WPFGotFocus() override { return happened(); }
};

HWND window_of(IUnknown* control) {
    HWND window = nullptr;
    REQUIRE(ComPtr<IUnknown>(control).as<IOleWindow>()->GetWindow(&window) == S_OK);
    REQUIRE(IsWindow(window));
    return window;
}

std::wstring window_text(HWND window) {
    wchar_t text[200];
    return {text, static_cast<std::size_t>(GetWindowTextW(window, text, 200))};
}

RECT place_of(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

class ControlsFixture : public ComFixture {
  public:
    ControlsFixture() : factory(create<IKelosStandardControls>(L"Kelos.StandardControls")) {}

    ComPtr<IKelosButton> button(const Parent& parent) {
        const Bstr caption(L"Abort");
        return get(factory, &IKelosStandardControls::CreateButton, parent.number(), 10L, 20L, 100L,
                   30L, 10.0, caption.get());
    }

    ComPtr<IKelosStandardControls> factory;
};

}  // namespace

TEST_CASE_FIXTURE(ControlsFixture, "controls are real children at their places") {
    const Parent parent;
    const Bstr caption(L"Größe & Höhe");
    const auto label = get(factory, &IKelosStandardControls::CreateLabel, parent.number(), 8L, 12L,
                           308L, 14L, 10.0, caption.get());
    const HWND window = window_of(label.get());
    CHECK(GetParent(window) == parent.get());
    const RECT place = place_of(window);
    CHECK(place.left == 8);
    CHECK(place.top == 12);
    CHECK(place.right - place.left == 308);
    CHECK(place.bottom - place.top == 14);
    CHECK(get(label, &IKelosLabel::get_Caption).str() == L"Größe & Höhe");

    const Bstr changed(L"Bitte warten...");
    call(label, &IKelosLabel::put_Caption, changed.get());
    CHECK(window_text(window) == L"Bitte warten...");
    CHECK((GetWindowLongPtrW(window, GWL_STYLE) & SS_ELLIPSISMASK) == SS_ENDELLIPSIS);

    // Ten points, in the pixels of the screen.
    LOGFONTW font{};
    const auto handle = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    REQUIRE(GetObjectW(handle, sizeof font, &font));
    const HDC device = GetDC(window);
    CHECK(font.lfHeight == -MulDiv(10, GetDeviceCaps(device, LOGPIXELSY), 72));
    ReleaseDC(window, device);
}

TEST_CASE_FIXTURE(ControlsFixture, "a bar is drawn between 0 and 100 and keeps what it was given") {
    const Parent parent;
    const auto progress = get(factory, &IKelosStandardControls::CreateProgressBar, parent.number(),
                              8L, 31L, 313L, 19L);
    const auto bar = get(progress, &IKelosProgressBar::get_Bar);
    const HWND window = window_of(progress.get());
    const struct {
        double value;
        LRESULT drawn;
    } cases[] = {{0, 0}, {1.4, 1}, {49.5, 50}, {100, 100}, {120, 100}, {-5, 0}, {1e300, 100}};
    for (const auto& [value, drawn] : cases) {
        CAPTURE(value);
        call(bar, &IKelosBar::put_Value, value);
        CHECK(SendMessageW(window, PBM_GETPOS, 0, 0) == drawn);
        CHECK(get(bar, &IKelosBar::get_Value) == value);
    }
    const auto same = get(progress, &IKelosProgressBar::get_Bar);
    CHECK(get(same, &IKelosBar::get_Value) == 1e300);
    CHECK(FAILED(bar->put_Value(std::numeric_limits<double>::quiet_NaN())));
}

TEST_CASE_FIXTURE(ControlsFixture, "a button's clicks reach its receiver until that is ended") {
    const Parent parent;
    const auto clicks = automation::make_plain<Clicks>();
    const auto first = button(parent);
    const auto second = button(parent);
    const HWND window = window_of(first.get());
    CHECK(window_text(window) == L"Abort");
    const Bstr too_long(L"Abort it all at once");
    call(first, &IKelosButton::put_Caption, too_long.get());
    CHECK(get(first, &IKelosButton::get_Caption).view() == too_long.view());
    const std::wstring shown = window_text(window);
    CHECK(shown.starts_with(L"Abort it"));
    CHECK(shown.ends_with(L"..."));
    CHECK(shown.size() < too_long.view().size());
    call(first, &IKelosButton::putref_Events, static_cast<IKelosButtonEvents*>(clicks.get()));

    SendMessageW(window, BM_CLICK, 0, 0);
    CHECK(clicks->count == 1);
    PostMessageW(window, BM_CLICK, 0, 0);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        DispatchMessageW(&message);
    CHECK(clicks->count == 2);
    SendMessageW(window_of(second.get()), BM_CLICK, 0, 0);
    CHECK(clicks->count == 2);
    // What is no click still arrives where it is meant to.
    const int before = Parent::commands();
    SendMessageW(parent.get(), WM_COMMAND, 42, 0);
    CHECK(Parent::commands() == before + 1);

    call(first, &IKelosButton::putref_Events, static_cast<IKelosButtonEvents*>(nullptr));
    CHECK(reference_count(clicks.get()) == 1);
    SendMessageW(window, BM_CLICK, 0, 0);
    CHECK(clicks->count == 2);
}

TEST_CASE_FIXTURE(ControlsFixture,
                  "a window that ends lets go of the receiver and of the control") {
    Parent parent;
    const auto clicks = automation::make_plain<Clicks>();
    auto control = button(parent);
    call(control, &IKelosButton::putref_Events, static_cast<IKelosButtonEvents*>(clicks.get()));
    SUBCASE("from outside") {
        parent.destroy();
    }
    SUBCASE("in the middle of its own click") {
        clicks->then = [&] { parent.destroy(); };
        SendMessageW(window_of(control.get()), BM_CLICK, 0, 0);
    }
    SUBCASE("when the control's object is gone in the middle of the click") {
        const HWND window = window_of(control.get());
        clicks->then = [&] {
            control.reset();
            parent.destroy();
        };
        SendMessageW(window, BM_CLICK, 0, 0);
    }
    clicks->then = {};
    CHECK(reference_count(clicks.get()) == 1);
    if (!control) return;
    Bstr caption;
    HWND window = nullptr;
    CHECK(FAILED(control->get_Caption(caption.put())));
    CHECK(FAILED(control->putref_Events(clicks.get())));
    CHECK(control.as<IOleWindow>()->GetWindow(&window) == E_FAIL);
    CHECK(reference_count(clicks.get()) == 1);
}

TEST_CASE_FIXTURE(ControlsFixture, "a window belongs to its parent, not to the control's object") {
    const Parent parent;
    const auto clicks = automation::make_plain<Clicks>();
    auto control = button(parent);
    const HWND window = window_of(control.get());
    call(control, &IKelosButton::putref_Events, static_cast<IKelosButtonEvents*>(clicks.get()));
    control.reset();
    CHECK(IsWindow(window));
    // Its code must stay loaded meanwhile.
    CHECK_FALSE(is_idle(L"KelosHostKit.dll"));
    SendMessageW(window, BM_CLICK, 0, 0);
    CHECK(clicks->count == 1);
}

TEST_CASE_FIXTURE(ControlsFixture, "without a window there is an error and no control") {
    for (const long window : {0L, 0x7FFFFFF0L}) {
        ComPtr<IKelosLabel> label;
        ComPtr<IKelosProgressBar> bar;
        ComPtr<IKelosButton> button;
        CHECK(FAILED(factory->CreateLabel(window, 0, 0, 1, 1, 10, nullptr, label.put())));
        CHECK(FAILED(factory->CreateProgressBar(window, 0, 0, 1, 1, bar.put())));
        CHECK(FAILED(factory->CreateButton(window, 0, 0, 1, 1, 10, nullptr, button.put())));
        CHECK_FALSE((label || bar || button));
    }
    CHECK_THROWS_AS(get(factory, &IKelosStandardControls::CreateProgressBar, 0L, 0L, 0L, 1L, 1L),
                    automation::Error);
}

TEST_CASE_FIXTURE(ComFixture, "a text box counts both characters of a line end") {
    const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
    check_transcript(
        LR"-(
    ? Text -> ""
    script = "Sub DoVex()" & vbCrLf & "  x = 1" & vbCrLf & "End Sub"
    Text = script
    ? (Text = script) & " " & SelStart & " " & SelLength -> True 0 0
    SelStart = 13
    SelLength = 9
    ? SelStart & " " & SelLength -> 13 9
    ' Setting the start makes the selection empty; what lies behind the text ends with it.
    SelStart = 5
    ? SelStart & " " & SelLength -> 5 0
    SelStart = 22
    SelLength = 1000
    ? SelStart & " " & SelLength -> 22 7
    SelLength = 2147483647
    ? SelStart & " " & SelLength -> 22 7
    SelStart = -1 -> ! A selection does not start before the text
    SelLength = -1 -> ! A selection's length is not negative
    ' More than the control's own messages can say in 16 bits, and more than its usual limit.
    large = Replace(String(10000, "x"), "x", "x = 12345" & vbCrLf)
    Text = large
    ? (Text = large) & Len(large) -> True110000
    SelStart = 80000
    SelLength = 5
    ? SelStart & " " & SelLength -> 80000 5
)-",
        {{L"Box", box.get()}});
}

TEST_CASE_FIXTURE(ComFixture, "a script editor finds lines and keeps the text as it was given") {
    auto control = create<IHostKitScriptControl>(L"Kelos.ScriptControl");
    const auto editor = get(control, &IHostKitScriptControl::get_Object);
    CHECK_FALSE(editor.try_as<IKelosTextBox>());
    control.reset();
    const ScriptObjects objects = {{L"Editor", editor.get()}};
    // The long line is wider than any window. A line end is one character here.
    check_transcript(
        LR"-(
    script = "Sub DoVex()" & vbCrLf & "  x = 1" & vbCrLf & vbCrLf & String(3000, "y") & vbCrLf & "End Sub"
    Text = script
    ? Text = script -> True
    ? LinePosition(1) & " " & LinePosition(2) & " " & LinePosition(3) -> 0 12 20
    ? LinePosition(4) & " " & LinePosition(5) -> 21 3022
    ? LinePosition(6) & LinePosition(0) & LinePosition(-1) -> -1-1-1
    ? LineLength(0) & LineLength(12) & LineLength(15) & LineLength(20) -> 11770
    ? LineLength(21) & " " & LineLength(3022) -> 3000 7
    SelStart = 12
    SelLength = 7
    ? SelStart & " " & SelLength -> 12 7
    SelStart = 20
    ? SelStart & " " & SelLength -> 20 0
    Text = ""
    ? Text -> ""
    Text = "a" & vbLf & "b"
    ? Text = "a" & vbLf & "b" -> True
    Text = "a" & vbCrLf & "b" & vbCrLf
    ? Text = "a" & vbCrLf & "b" & vbCrLf -> True
    Text = "{\rtf1 no markup}ä→"
    ? Text -> {\rtf1 no markup}ä→
    Text = "one" & vbCrLf & "three"
    SelStart = 4
)-",
        objects);
    // What a user writes into it counts from then on.
    SendMessageW(window_of(editor.get()), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"two\r"));
    check_transcript(
        LR"-(
    ? Replace(Text, vbCrLf, "/") & LinePosition(3) -> one/two/three8
)-",
        objects);
}

TEST_CASE_FIXTURE(ControlsFixture, "the service gives controls the keyboard") {
    const Parent parent;
    const auto abort = button(parent);
    const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
    const auto control = create<IHostKitScriptControl>(L"Kelos.ScriptControl");
    const auto editor = get(control, &IHostKitScriptControl::get_Object);
    const auto focused = [&](IDispatch* object) {
        SetFocus(nullptr);
        call(service(), &IHostKitService::FocusControl, object);
        return GetFocus() == window_of(object);
    };
    CHECK(focused(abort.get()));
    CHECK(focused(box.get()));
    CHECK(focused(control.get()));
    CHECK(focused(editor.get()));

    SetFocus(nullptr);
    const auto wrapper =
        get(service(), &IHostKitService::get_ControlWrapper, static_cast<IDispatch*>(abort.get()));
    call(wrapper, &IKelosControlWrapper::Activate);
    CHECK(GetFocus() == window_of(abort.get()));

    // Objects without a window are left alone; nothing is not even an object.
    const auto bare = make_object();
    CHECK(service()->FocusControl(bare->dispatch()) == S_OK);
    CHECK(FAILED(service()->FocusControl(nullptr)));
    CHECK(message_count() + error_count() == 0);
}

TEST_CASE_FIXTURE(ComFixture, "a bridge is moved, tells of the focus, and is shut down once") {
    const auto bridge = create<IHostKitWpfBridge>(L"Kelos.WpfBridge");
    const auto events = automation::make_plain<Focuses>();
    const ScriptObjects objects = {{L"Bridge", bridge.get()}};
    check_transcript(
        LR"(
    Bridge.Move 1, 2, 300, 40
    ? Bridge.Left & " " & Bridge.Top & " " & Bridge.Width & " " & Bridge.Height -> 1 2 300 40
)",
        objects);
    call(bridge, &IHostKitWpfBridge::GainFocus);
    call(bridge, &IHostKitWpfBridge::putref_Events,
         static_cast<IKelosWpfBridgeEvents*>(events.get()));
    call(bridge, &IHostKitWpfBridge::GainFocus);
    CHECK(events->count == 1);

    call(bridge, &IHostKitWpfBridge::Shutdown);
    CHECK(get(bridge, &IHostKitWpfBridge::get_Ended) == VARIANT_TRUE);
    CHECK(reference_count(events.get()) == 1);
    CHECK(FAILED(bridge->Move(0, 0, 0, 0)));
    CHECK(FAILED(bridge->Shutdown()));
    CHECK(bridge->putref_Events(nullptr) == S_OK);
}
