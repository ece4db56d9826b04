#include "progress/fake_host.h"

#include <algorithm>

#include "automation/object.h"
#include "host/program_names.h"
#include "server/class_table.h"

namespace fake_host {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::make;
using automation::Object;
using automation::view_of;

// The texts of these tests are ASCII.
std::string ascii(std::wstring_view text) {
    return std::string(text.begin(), text.end());
}
std::string text_of(BSTR text) {
    return ascii(view_of(text));
}

// Notes a call; throws when it is the one that shall fail.
void note(std::string_view name, std::string_view detail = {}) {
    std::string line(name);
    if (!detail.empty()) line.append(" ").append(detail);
    host().calls.push_back(line);
    if (host().failing == name) automation::fail(failure);
}

template <class Body>
HRESULT run(Body&& body) noexcept {
    try {
        body();
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

template <class Interface, class Made>
void hand_out(Interface** result, ComPtr<Made> made) {
    *result = ComPtr<Interface>(made->main_interface()).detach();
}

std::string number_text(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string given(IUnknown* object, std::string_view what) {
    return object ? std::string(what) : "nothing";
}

// ---------------------------------------------------------------------------------------------
// Object model
// ---------------------------------------------------------------------------------------------

class Workset : public Object<Workset, IKelosWorkset> {
  public:
    STDMETHODIMP get_CurrentProject(IKelosProject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrentUser(IKelosUser**) override { return E_NOTIMPL; }
    STDMETHODIMP LoadObject(long, BSTR, IKelosObject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrentLCID(long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrentUndoState(IDispatch** result) override {
        return run([&] {
            note("get CurrentUndoState");
            *result = ComPtr<IDispatch>(host().undo_state).detach();
        });
    }
    STDMETHODIMP putref_CurrentUndoState(IDispatch* value) override {
        return run([&] {
            note("set CurrentUndoState");
            host().undo_state = value;
        });
    }
    STDMETHODIMP get_OuterUndoState(IDispatch** result) override {
        return run([&] {
            note("get OuterUndoState");
            *result = ComPtr<IDispatch>(host().outer_undo_state).detach();
        });
    }
    STDMETHODIMP putref_OuterUndoState(IDispatch* value) override {
        return run([&] {
            note("set OuterUndoState");
            host().outer_undo_state = value;
        });
    }
};

// ---------------------------------------------------------------------------------------------
// Services
// ---------------------------------------------------------------------------------------------

HWND window_of(IDispatch* form) {
    HWND window = nullptr;
    if (const auto owner = ComPtr<IDispatch>(form).try_as<IOleWindow>()) owner->GetWindow(&window);
    return window;
}

class WindowService : public Object<WindowService, IKelosWindowService> {
  public:
    STDMETHODIMP RegisterForm(IDispatch* form, long number, IDispatch* reference,
                              IDispatch* controller) override {
        return run([&] {
            note("RegisterForm", given(form, "form ") + std::to_string(number) + ' ' +
                                     given(reference, "reference") + ' ' +
                                     given(controller, "controller"));
            host().form = form;
            host().controller = controller;
            ShowWindow(window_of(form), SW_SHOW);
        });
    }
    STDMETHODIMP UnregisterForm(IDispatch* form) override {
        return run([&] {
            const bool known = automation::same_object(form, host().form.get());
            note("UnregisterForm", known ? "form" : "another");
            ShowWindow(window_of(form), SW_HIDE);
            host().form.reset();
            host().controller.reset();
        });
    }
};

class Application : public Object<Application, IKelosApplication> {
  public:
    STDMETHODIMP get_CurrentWorkset(IKelosWorkset** result) override {
        return run([&] {
            note("CurrentWorkset");
            if (host().offers_workset) hand_out(result, make<Workset>());
        });
    }
    STDMETHODIMP get_WindowService(IKelosWindowService** result) override {
        return run([&] {
            note("WindowService");
            hand_out(result, make<WindowService>());
        });
    }
};

class FormSetting : public Object<FormSetting, IKelosFormSetting> {
  public:
    STDMETHODIMP Apply(IDispatch* form) override {
        return run([&] { note("Apply", given(form, "form")); });
    }
};

class UIService : public Object<UIService, IKelosUIService> {
  public:
    STDMETHODIMP get_FormSetting(IKelosFormSetting** result) override {
        return run([&] {
            note("FormSetting");
            hand_out(result, make<FormSetting>());
        });
    }
    STDMETHODIMP ConnectControls(IDispatch* form, IDispatch* bridge) override {
        return run(
            [&] { note("ConnectControls", given(form, "form ") + given(bridge, "bridge")); });
    }
    STDMETHODIMP RefreshControls(IDispatch* form) override {
        return run([&] { note("RefreshControls", given(form, "form")); });
    }
};

class ControlWrapper : public Object<ControlWrapper, IKelosControlWrapper> {
  public:
    STDMETHODIMP Activate() override {
        return run([&] { note("Activate"); });
    }
};

// The component keeps the service until its last object on the thread dies. In this program, where
// the host's objects are counted with the component's, the service must not count as one.
class Service : public Object<Service, IKelosService> {
  public:
    Service() { automation::object_died(); }
    ~Service() { automation::object_born(); }

    STDMETHODIMP TranslateText(BSTR key, BSTR* result) override {
        return run([&] {
            note("TranslateText", text_of(key));
            *result = Bstr(L"[" + std::wstring(view_of(key).substr(0, 6)) + L"]").detach();
        });
    }
    STDMETHODIMP ShowMessage(BSTR, long, BSTR, long*) override { return E_NOTIMPL; }
    STDMETHODIMP ReportError(long number, BSTR description, BSTR source, BSTR label) override {
        const bool ours = number == failure;
        host().calls.push_back("ReportError " + text_of(source) + ": " + text_of(label) +
                               (ours ? "" : ": " + text_of(description)));
        return S_OK;
    }
    STDMETHODIMP Trace(BSTR text) override {
        return run([&] { note("Trace", text_of(text)); });
    }
    STDMETHODIMP FocusControl(IDispatch*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Application(IKelosApplication** result) override {
        return run([&] {
            note("Application");
            if (host().offers_application) hand_out(result, make<Application>());
        });
    }
    STDMETHODIMP get_UIService(IKelosUIService** result) override {
        return run([&] {
            note("UIService");
            hand_out(result, make<UIService>());
        });
    }
    STDMETHODIMP get_ControlWrapper(IDispatch* control, IKelosControlWrapper** result) override {
        return run([&] {
            const bool button = ComPtr<IDispatch>(control).try_as<IKelosButton>().get();
            note("ControlWrapper", button ? "button" : "something else");
            hand_out(result, make<ControlWrapper>());
        });
    }
};

// ---------------------------------------------------------------------------------------------
// Controls
// ---------------------------------------------------------------------------------------------

class Label : public Object<Label, IKelosLabel> {
  public:
    STDMETHODIMP get_Caption(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Caption(BSTR text) override {
        return run([&] { note("Label.Caption", text_of(text)); });
    }
};

class Bar : public Object<Bar, IKelosBar> {
  public:
    STDMETHODIMP get_Value(double*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Value(double value) override {
        return run([&] { note("Bar.Value", number_text(value)); });
    }
};

class ProgressBar : public Object<ProgressBar, IKelosProgressBar> {
  public:
    STDMETHODIMP get_Bar(IKelosBar** result) override {
        return run([&] {
            note("Bar");
            hand_out(result, make<Bar>());
        });
    }
};

class Button : public Object<Button, IKelosButton> {
  public:
    STDMETHODIMP get_Caption(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Caption(BSTR text) override {
        return run([&] { note("Button.Caption", text_of(text)); });
    }
    STDMETHODIMP putref_Events(IKelosButtonEvents* events) override {
        return run([&] {
            note("Button.Events", given(events, "sink"));
            host().button_events = events;
        });
    }
};

class StandardControls : public Object<StandardControls, IKelosStandardControls> {
  public:
    STDMETHODIMP CreateLabel(long, long, long, long, long, double font, BSTR text,
                             IKelosLabel** result) override {
        return run([&] {
            note("CreateLabel", number_text(font) + ' ' + text_of(text));
            hand_out(result, make<Label>());
        });
    }
    STDMETHODIMP CreateProgressBar(long, long, long, long, long,
                                   IKelosProgressBar** result) override {
        return run([&] {
            note("CreateProgressBar");
            hand_out(result, make<ProgressBar>());
        });
    }
    STDMETHODIMP CreateButton(long, long, long, long, long, double font, BSTR text,
                              IKelosButton** result) override {
        return run([&] {
            note("CreateButton", number_text(font) + ' ' + text_of(text));
            hand_out(result, make<Button>());
        });
    }
};

class WpfBridge : public Object<WpfBridge, IKelosWpfBridge> {
  public:
    STDMETHODIMP Move(long left, long top, long width, long height) override {
        return run([&] {
            note("Bridge.Move", std::to_string(left) + ' ' + std::to_string(top) + ' ' +
                                    std::to_string(width) + ' ' + std::to_string(height));
        });
    }
    STDMETHODIMP Shutdown() override {
        return run([&] { note("Bridge.Shutdown"); });
    }
    STDMETHODIMP putref_Events(IKelosWpfBridgeEvents* events) override {
        return run([&] {
            note("Bridge.Events", given(events, "sink"));
            host().bridge_events = events;
        });
    }
};

// ---------------------------------------------------------------------------------------------
// The program as the server of these classes
// ---------------------------------------------------------------------------------------------

constexpr CLSID class_id(unsigned char number) {
    return {0x9B1D7C54, 0x2A60, 0x4E83, {0xB5, 0x1F, 0x70, 0xC2, 0x3D, 0x8E, 0x46, number}};
}

// Creates the class, or fails as an unregistered one does.
template <class Class>
ComPtr<IUnknown> create() {
    if (!host().offers_classes) automation::fail(REGDB_E_CLASSNOTREG);
    return make<Class>()->main_interface();
}

const server::ClassEntry classes[] = {
    {tessera::program_names::service, L"", class_id(1), server::create<Service>},
    {tessera::program_names::standard_controls, L"", class_id(2), create<StandardControls>},
    {tessera::program_names::wpf_bridge, L"", class_id(3), server::create<WpfBridge>},
};

std::wstring folder_and_name(std::wstring& name) {
    wchar_t path[MAX_PATH];
    const std::wstring full(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    const auto slash = full.find_last_of(L'\\');
    name = full.substr(slash + 1);
    return full.substr(0, slash + 1);
}

std::string manifest(std::wstring_view program) {
    std::string text =
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\"><file "
        "name=\"" +
        ascii(program) + "\">";
    for (const auto& entry : classes) {
        wchar_t id[40];
        StringFromGUID2(entry.class_id, id, 40);
        text += "<comClass threadingModel=\"Apartment\" clsid=\"" + ascii(id) + "\" progid=\"" +
                ascii(entry.program_name) + "\"/>";
    }
    return text + "</file></assembly>";
}

void write_file(const std::wstring& path, const std::string& text) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
}

}  // namespace

std::string Host::take_calls() {
    std::string lines;
    for (const std::string& call : std::exchange(calls, {}))
        lines.append(call).append("\n");
    return lines;
}

int Host::count(std::string_view name) const {
    return static_cast<int>(std::ranges::count_if(
        calls, [&](const std::string& call) { return call.starts_with(name); }));
}

Host& host() {
    static Host* const the_host = new Host;
    return *the_host;
}

Session::Session() {
    host() = {};
    std::wstring name;
    const std::wstring folder = folder_and_name(name);
    const std::wstring path = folder + name + L".host.manifest";
    write_file(path, manifest(name));
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.lpSource = path.c_str();
    context_ = CreateActCtxW(&description);
    if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_))
        automation::fail(HRESULT_FROM_WIN32(GetLastError()));
    DeleteFileW(path.c_str());
}

Session::~Session() {
    host() = {};
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
}

}  // namespace fake_host

std::span<const server::ClassEntry> server::module_classes() noexcept {
    return fake_host::classes;
}
