#include "hostkit/services/application.h"

#include "automation/object.h"
#include "automation/thread_slot.h"
#include "hostkit/boundary.h"
#include "hostkit/services/ole_window.h"
#include "hostkit/services/service_state.h"

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::make;

// A plain pointer: at thread exit COM may be gone, so that nothing may be released then.
const automation::ThreadSlot& thread_workset() {
    static const automation::ThreadSlot slot;
    return slot;
}

// The look of the host's forms: the colour of the system's dialogs, which labels and buttons have.
void apply_look(IDispatch* form) {
    const HWND window = window_of(automation::require(form));
    if (!window) return;
    SetClassLongPtrW(window, GCLP_HBRBACKGROUND, COLOR_3DFACE + 1);
    InvalidateRect(window, nullptr, TRUE);
}

class FormSetting : public automation::Object<FormSetting, IKelosFormSetting> {
  public:
    STDMETHODIMP Apply(IDispatch* form) override {
        return run<Watched>(Given(form), [&] {
            apply_look(form);
            ++service_state().uses.applied;
        });
    }
};

class UIService
    : public automation::Object<UIService,
                                automation::Extends<IHostKitUIService, IKelosUIService>> {
  public:
    STDMETHODIMP get_FormSetting(IKelosFormSetting** result) override {
        return answer<Watched>(result, [] { return make<FormSetting>()->main_pointer(); });
    }
    STDMETHODIMP ConnectControls(IDispatch* form, IDispatch* bridge) override {
        return run<Watched>(Given(form, bridge), [&] {
            automation::require(form);
            automation::require(bridge);
            ++service_state().uses.connected;
        });
    }
    STDMETHODIMP RefreshControls(IDispatch* form) override {
        return run<Watched>(Given(form), [&] {
            if (const HWND window = window_of(automation::require(form)))
                RedrawWindow(window, nullptr, nullptr,
                             RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
            ++service_state().uses.refreshed;
        });
    }
    STDMETHODIMP get_AppliedCount(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().uses.applied; });
    }
    STDMETHODIMP get_ConnectedCount(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().uses.connected; });
    }
    STDMETHODIMP get_RefreshedCount(long* result) override {
        return answer<Uncounted>(result, [] { return service_state().uses.refreshed; });
    }
};

class Application : public automation::Object<Application, IKelosApplication> {
  public:
    STDMETHODIMP get_CurrentWorkset(IKelosWorkset** result) override {
        return answer<Watched>(result, [] { return current_workset(); });
    }
    STDMETHODIMP get_WindowService(IKelosWindowService** result) override {
        return answer<Watched>(result,
                               [] { return ComPtr<IKelosWindowService>(window_service()); });
    }
};

class ControlWrapper : public automation::Object<ControlWrapper, IKelosControlWrapper> {
  public:
    explicit ControlWrapper(IDispatch* control) : control_(control) {}

    STDMETHODIMP Activate() override {
        return run<Watched>([&] { focus_control(control_.get()); });
    }

  private:
    const ComPtr<IDispatch> control_;
};

}  // namespace

ComPtr<IKelosApplication> host_application() {
    return make<Application>()->main_pointer();
}

ComPtr<IKelosUIService> ui_service() {
    return make<UIService>()->main_pointer();
}

ComPtr<IKelosControlWrapper> wrap_control(IDispatch* control) {
    return make<ControlWrapper>(automation::require(control))->main_pointer();
}

void focus_control(IDispatch* control) {
    if (const HWND window = window_of(automation::require(control))) SetFocus(window);
}

ComPtr<IKelosWorkset> current_workset() {
    return static_cast<IKelosWorkset*>(thread_workset().get());
}

void set_current_workset(ComPtr<IKelosWorkset> workset) {
    // Released last: its end may come back to here.
    const auto old =
        ComPtr<IKelosWorkset>::attach(static_cast<IKelosWorkset*>(thread_workset().get()));
    thread_workset().set(workset.get());
    static_cast<void>(workset.detach());
}

}  // namespace hostkit
