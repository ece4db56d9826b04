// Kelos.Service: the recording host service.

#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"
#include "hostkit/services/application.h"
#include "hostkit/services/records.h"
#include "hostkit/services/text_keys.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::view_of;

std::wstring text_of(BSTR text) {
    return std::wstring(view_of(text));
}

void fail_on_request() {
    if (const HRESULT code = service_state().failure; FAILED(code))
        automation::fail(code, L"Failed on request");
}

// The contract's members; all of them fail while FailService is in force.
template <class Body, class... Values>
HRESULT serve(const Given<Values...>& arguments, Body&& body,
              const std::source_location& member = std::source_location::current()) noexcept {
    const auto unless_failing = [&] {
        fail_on_request();
        body();
    };
    return run<Watched>(arguments, unless_failing, member);
}
template <class T, class Body, class... Values>
HRESULT serve(T* result, const Given<Values...>& arguments, Body&& body,
              const std::source_location& member = std::source_location::current()) noexcept {
    const auto unless_failing = [&] {
        fail_on_request();
        return body();
    };
    return answer<Watched>(result, arguments, unless_failing, member);
}

class Service
    : public automation::Object<Service, automation::Extends<IHostKitService, IKelosService>> {
  public:
    STDMETHODIMP TranslateText(BSTR text_key, BSTR* result) override {
        return serve(result, Given(text_key), [&] {
            return Bstr(translate_key(view_of(text_key), service_state().language));
        });
    }
    STDMETHODIMP ShowMessage(BSTR text, long style, BSTR title, long* result) override {
        return serve(result, Given(text, style, title),
                     [&] { return show_message(text_of(text), style, text_of(title)); });
    }
    STDMETHODIMP ReportError(long number, BSTR description, BSTR source, BSTR label) override {
        return serve(Given(number, description, source, label), [&] {
            service_state().add_error(
                {number, text_of(description), text_of(source), text_of(label), noted_row()});
        });
    }
    STDMETHODIMP Trace(BSTR text) override {
        return serve(Given(text), [&] { service_state().add_trace(text_of(text)); });
    }
    STDMETHODIMP FocusControl(IDispatch* control) override {
        return serve(Given(control), [&] { focus_control(control); });
    }
    STDMETHODIMP get_Application(IKelosApplication** result) override {
        return serve(result, Given(), [] {
            return service_state().offers_application ? host_application()
                                                      : ComPtr<IKelosApplication>();
        });
    }
    STDMETHODIMP get_UIService(IKelosUIService** result) override {
        return serve(result, Given(), [] { return ui_service(); });
    }
    STDMETHODIMP get_ControlWrapper(IDispatch* control, IKelosControlWrapper** result) override {
        return serve(result, Given(control), [&] { return wrap_control(control); });
    }

    STDMETHODIMP get_Messages(IHostKitMessages** result) override {
        return answer<Uncounted>(result, [] { return recorded_messages(); });
    }
    STDMETHODIMP get_Errors(IHostKitErrors** result) override {
        return answer<Uncounted>(result, [] { return recorded_errors(); });
    }
    STDMETHODIMP get_Traces(IHostKitTraces** result) override {
        return answer<Uncounted>(result, [] { return recorded_traces(); });
    }
    STDMETHODIMP get_ScriptErrors(IHostKitScriptErrors** result) override {
        return answer<Uncounted>(result, [] { return recorded_script_errors(); });
    }
    STDMETHODIMP Clear() override {
        return run<Uncounted>([] { service_state().clear(); });
    }

    STDMETHODIMP get_Language(HostKitLanguage* result) override {
        return answer<Uncounted>(result, [] { return service_state().language; });
    }
    STDMETHODIMP put_Language(HostKitLanguage value) override {
        return run<Uncounted>([&] {
            if (value != hklGerman && value != hklEnglish)
                automation::fail(E_INVALIDARG, L"The kit speaks German and English only");
            service_state().language = value;
        });
    }
    STDMETHODIMP get_Mode(HostKitMode* result) override {
        return answer<Uncounted>(result, [] { return service_state().mode; });
    }
    STDMETHODIMP put_Mode(HostKitMode value) override {
        return run<Uncounted>([&] {
            if (value < hkmRecording || value > hkmInteractive)
                automation::fail(E_INVALIDARG, L"There is no such mode");
            service_state().mode = value;
        });
    }
    STDMETHODIMP get_MessageAnswer(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().message_answer; });
    }
    STDMETHODIMP put_MessageAnswer(long value) override {
        return run<Uncounted>([&] { service_state().message_answer = value; });
    }
    STDMETHODIMP get_TraceLimit(long* result) override {
        return answer<Uncounted>(result,
                                 [] { return static_cast<long>(service_state().trace_limit); });
    }
    STDMETHODIMP put_TraceLimit(long value) override {
        return run<Uncounted>([&] { service_state().set_trace_limit(value); });
    }
    STDMETHODIMP get_OffersApplication(VARIANT_BOOL* result) override {
        return answer<Uncounted>(
            result, [] { return as_variant_bool(service_state().offers_application); });
    }
    STDMETHODIMP put_OffersApplication(VARIANT_BOOL value) override {
        return run<Uncounted>([&] { service_state().offers_application = value != VARIANT_FALSE; });
    }
    STDMETHODIMP FailService(long code) override {
        return run<Uncounted>([&] {
            if (code > 0) automation::fail(E_INVALIDARG, L"Only failure codes make a call fail");
            service_state().failure = code;
        });
    }
    STDMETHODIMP get_AllowsScripts(VARIANT_BOOL* result) override {
        return answer<Uncounted>(result,
                                 [] { return as_variant_bool(service_state().allows_scripts); });
    }
    STDMETHODIMP put_AllowsScripts(VARIANT_BOOL value) override {
        return run<Uncounted>([&] { service_state().allows_scripts = value != VARIANT_FALSE; });
    }
    STDMETHODIMP get_AllowedScript(BSTR* result) override {
        return answer<Uncounted>(result, [] { return Bstr(service_state().allowed_script); });
    }
    STDMETHODIMP put_AllowedScript(BSTR value) override {
        return run<Uncounted>([&] { service_state().allowed_script = view_of(value); });
    }
};

}  // namespace

ComPtr<IUnknown> create_service() {
    return automation::make<Service>()->main_interface();
}

}  // namespace hostkit
