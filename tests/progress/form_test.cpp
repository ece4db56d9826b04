// The real form: opened through the component, shown by the kit's window service, driven by
// messages as a user drives it.
#include "progress/form_layout.h"
#include "support/com_fixture.h"

#include <commctrl.h>

namespace {

using namespace test;
namespace layout = tessera::form_layout;

class FormFixture : public ComFixture {
  public:
    // Before the base class looks for what is still alive.
    ~FormFixture() { progress.reset(); }

    ComPtr<IHostKitForms> forms() const {
        const auto application = get(service(), &IKelosService::get_Application);
        const auto windows = get(application, &IKelosApplication::get_WindowService);
        return get(windows.as<IHostKitWindowService>(), &IHostKitWindowService::get_Forms);
    }
    long form_count() const { return get(forms(), &IHostKitForms::get_Count); }
    ComPtr<IHostKitForm> form(long index = 1) const {
        return get(forms(), &IHostKitForms::get_Item, index);
    }
    HWND window(long index = 1) const {
        return static_cast<HWND>(LongToHandle(get(form(index), &IHostKitForm::get_Window)));
    }
    HWND control(const wchar_t* window_class) const {
        return FindWindowExW(window(), nullptr, window_class, nullptr);
    }
    HWND text_line() const { return control(WC_STATICW); }
    HWND bar() const { return control(PROGRESS_CLASSW); }
    HWND button() const { return control(WC_BUTTONW); }

    uceProgressState state() const { return get(progress, &ITesseraProgress::get_State); }
    void percentage(short value) const { call(progress, &ITesseraProgress::put_Percentage, value); }

    ComPtr<ITesseraProgress> progress = create<ITesseraProgress>(L"Tessera.Progress");
};

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

}  // namespace

TEST_CASE_FIXTURE(FormFixture, "the form has its title, its texts and its controls' places") {
    struct Texts {
        HostKitLanguage language;
        const wchar_t* line;
        const wchar_t* button;
    };
    const Texts all[] = {{hklGerman, L"Bitte warten...", L"Abbrechen"},
                         {hklEnglish, L"Please wait...", L"Abort"}};
    call(progress, &ITesseraProgress::put_Caption, Bstr(L"Export \u00e4").get());
    for (const Texts& texts : all) {
        call(service(), &IHostKitService::put_Language, texts.language);
        call(progress, &ITesseraProgress::StartProcess);
        CHECK(text_of(window()) == L"Export \u00e4");
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
        call(progress, &ITesseraProgress::StopProcess);
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(FormFixture,
                  "the host gets the form with its number, no reference, the controller") {
    percentage(30);
    CHECK(form_count() == 1);
    CHECK(get(form(), &IHostKitForm::get_Number) == 0);
    CHECK_FALSE(get(form(), &IHostKitForm::get_Reference));
    const auto controller = get(form(), &IHostKitForm::get_Controller).as<ITesseraProgress>();
    CHECK(get(controller, &ITesseraProgress::get_State) == uccStateExecuting);
    const auto ui = get(service(), &IKelosService::get_UIService).as<IHostKitUIService>();
    CHECK(get(ui, &IHostKitUIService::get_AppliedCount) == 1);
}

TEST_CASE_FIXTURE(FormFixture, "the bar shows the percentage until the form closes") {
    for (const short value : {0, 1, 50, 99}) {
        percentage(value);
        CHECK(SendMessageW(bar(), PBM_GETPOS, 0, 0) == value);
        CHECK(state() == (value == 0 ? uccStateOpen : uccStateExecuting));
    }
    const HWND shown = window();
    percentage(100);
    CHECK(form_count() == 0);
    CHECK_FALSE(IsWindow(shown));
    CHECK(state() == uccStateClosed);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(FormFixture, "an abort while a walk runs is seen at the next read of the state") {
    percentage(0);
    SUBCASE("clicked at once") {
        SendMessageW(button(), BM_CLICK, 0, 0);
    }
    SUBCASE("a click waits") {
        PostMessageW(button(), BM_CLICK, 0, 0);
    }
    SUBCASE("a press of the mouse waits") {
        PostMessageW(button(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        PostMessageW(button(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }
    SUBCASE("the keyboard is at the button, a press of the space bar waits") {
        CHECK(GetFocus() == button());
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_SPACE, 0x00390001);
        PostMessageW(GetFocus(), WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0390001));
    }
    CHECK(state() == uccStateAbort);
    CHECK(form_count() == 1);
    percentage(60);
    CHECK(state() == uccStateAbort);
    CHECK(form_count() == 0);
    percentage(0);
    CHECK(state() == uccStateOpen);
    CHECK(form_count() == 1);
}

TEST_CASE_FIXTURE(FormFixture, "a click that waits counts for the next percentage") {
    percentage(10);
    PostMessageW(button(), BM_CLICK, 0, 0);
    percentage(20);
    CHECK(form_count() == 0);
    CHECK(state() == uccStateAbort);
}

TEST_CASE_FIXTURE(FormFixture, "the user may close the form while the walk goes on") {
    percentage(10);
    const HWND shown = window();
    PostMessageW(shown, WM_SYSCOMMAND, SC_CLOSE, 0);
    for (short value = 11; value < 100; ++value) {
        percentage(value);
        CHECK(state() == uccStateExecuting);
    }
    CHECK_FALSE(IsWindowVisible(shown));
    percentage(100);
    CHECK_FALSE(IsWindow(shown));
    CHECK(error_count() == 0);
    percentage(0);
    CHECK(IsWindowVisible(window()));
}

TEST_CASE_FIXTURE(FormFixture, "a controller that is released takes its form down") {
    percentage(10);
    const HWND shown = window();
    progress.reset();
    CHECK_FALSE(IsWindow(shown));
    CHECK(form_count() == 0);
    CHECK(error_count() == 0);
    CHECK(is_idle(L"Tessera.dll"));
}

TEST_CASE_FIXTURE(FormFixture, "two controllers have forms of their own") {
    auto second = create<ITesseraProgress>(L"Tessera.Progress");
    percentage(10);
    call(second, &ITesseraProgress::put_Percentage, short{20});
    CHECK(form_count() == 2);
    const HWND first_window = window(1);
    const HWND second_window = window(2);
    SendMessageW(button(), BM_CLICK, 0, 0);
    CHECK(state() == uccStateAbort);
    CHECK(get(second, &ITesseraProgress::get_State) == uccStateExecuting);
    percentage(100);
    CHECK_FALSE(IsWindow(first_window));
    CHECK(IsWindow(second_window));
    percentage(0);
    CHECK(form_count() == 2);
}

TEST_CASE_FIXTURE(FormFixture, "the last form takes its window class along") {
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

TEST_CASE_FIXTURE(FormFixture, "without a display the failure is reported and the walk goes on") {
    {
        const NoDisplay none;
        percentage(0);
        CHECK(state() == uccStateOpen);
        for (short value = 1; value < 100; ++value) {
            percentage(value);
            CHECK(state() == uccStateExecuting);
        }
        percentage(100);
        CHECK(state() == uccStateClosed);
        CHECK(form_count() == 0);
        CHECK(error_count() == 1);
        CHECK(error(1) == L"Tessera.Progress|Private Sub 'StartProcess'");
    }
    percentage(0);
    CHECK(form_count() == 1);
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(FormFixture, "the embedded control lives as long as the form") {
    percentage(10);
    const auto embedded = get(get(form(), &IHostKitForm::get_Form).as<IKelosVBUsercontrol>(),
                              &IKelosVBUsercontrol::get_WPFControl)
                              .as<IHostKitWpfBridge>();
    call(service(), &IHostKitService::Clear);
    call(embedded, &IHostKitWpfBridge::GainFocus);
    CHECK(trace(1) == L"ZUL: WS Is Nothing");
    call(get(form(), &IHostKitForm::get_Form).as<IKelosVBUsercontrol>(),
         &IKelosVBUsercontrol::UpdateLayout);
    const auto size = layout::to_pixels(layout::client_area, screen());
    CHECK(get(embedded, &IHostKitWpfBridge::get_Width) == size.width);
    CHECK(get(embedded, &IHostKitWpfBridge::get_Height) == size.height);
    percentage(100);
    CHECK(get(embedded, &IHostKitWpfBridge::get_Ended) == VARIANT_TRUE);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(FormFixture, "scripts drive it by name") {
    automation::put_property(progress.get(), L"Percentage", Variant(std::int16_t{7}));
    CHECK(automation::get_property(progress.get(), L"State").lVal == uccStateExecuting);
    CHECK(SendMessageW(bar(), PBM_GETPOS, 0, 0) == 7);
    const auto controller = get(form(), &IHostKitForm::get_Controller);
    automation::put_property(controller.get(), L"State", Variant(long{uccStateAbort}));
    automation::call_method(controller.get(), L"StopProcess");
    CHECK(state() == uccStateAbort);
    CHECK(form_count() == 0);
}
