#include "hostkit/services/application.h"

#include <algorithm>

#include "hostkit/services/collection.h"
#include "hostkit/services/ole_window.h"

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::make;

class Form : public automation::Object<Form, IHostKitForm> {
  public:
    explicit Form(const RegisteredForm& entry) : entry_(entry) {}

    STDMETHODIMP get_Form(IDispatch** result) override {
        return answer<Uncounted>(result, [&] { return entry_.form; });
    }
    STDMETHODIMP get_Number(long* result) override {
        return answer<Uncounted>(result, [&] { return entry_.number; });
    }
    STDMETHODIMP get_Reference(IDispatch** result) override {
        return answer<Uncounted>(result, [&] { return entry_.reference; });
    }
    STDMETHODIMP get_Controller(IDispatch** result) override {
        return answer<Uncounted>(result, [&] { return entry_.controller; });
    }
    STDMETHODIMP get_Window(long* result) override {
        return answer<Uncounted>(result,
                                 [&] { return window_number(window_of(entry_.form.get())); });
    }

  private:
    const RegisteredForm entry_;
};

ComPtr<IHostKitForm> present_form(const RegisteredForm& entry) {
    return make<Form>(entry)->main_pointer();
}

using Forms = Collection<IHostKitForms, IHostKitForm*, &ServiceState::forms, present_form>;

auto find_form(IDispatch* form) {
    return std::ranges::find_if(service_state().forms, [&](const RegisteredForm& entry) {
        return automation::same_object(entry.form.get(), form);
    });
}

void show(IDispatch* form) {
    const HWND window = window_of(form);
    if (!window) return;
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    UpdateWindow(window);
}

void hide(IDispatch* form) {
    if (const HWND window = window_of(form)) ShowWindow(window, SW_HIDE);
}

class WindowService
    : public automation::Object<WindowService,
                                automation::Extends<IHostKitWindowService, IKelosWindowService>> {
  public:
    STDMETHODIMP RegisterForm(IDispatch* form, long number, IDispatch* reference,
                              IDispatch* controller) override {
        return run<Watched>(Given(form, number, reference, controller), [&] {
            automation::require(form);
            auto& state = service_state();
            if (find_form(form) != state.forms.end())
                automation::fail(E_INVALIDARG, L"The form is registered already");
            state.forms.push_back({form, number, reference, controller});
            ++state.uses.registered;
            show(form);
        });
    }

    STDMETHODIMP UnregisterForm(IDispatch* form) override {
        return run<Watched>(Given(form), [&] {
            automation::require(form);
            auto& state = service_state();
            const auto found = find_form(form);
            if (found == state.forms.end())
                automation::fail(E_INVALIDARG, L"The form is not registered");
            // Out of the list first: hiding the window may run the form's own code.
            const RegisteredForm entry = std::move(*found);
            state.forms.erase(found);
            ++state.uses.unregistered;
            hide(form);
        });
    }

    STDMETHODIMP get_Forms(IHostKitForms** result) override {
        return answer<Uncounted>(result, [] { return make<Forms>()->main_pointer(); });
    }
    STDMETHODIMP get_RegisteredCount(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().uses.registered; });
    }
    STDMETHODIMP get_UnregisteredCount(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().uses.unregistered; });
    }
};

}  // namespace

ComPtr<IHostKitWindowService> window_service() {
    return make<WindowService>()->main_pointer();
}

}  // namespace hostkit
