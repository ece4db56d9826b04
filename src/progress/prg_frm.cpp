#include "progress/prg_frm.h"

#include "automation/dispatch.h"
#include "host/error_boundary.h"
#include "host/program_names.h"
#include "host/service.h"
#include "progress/progress.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

constexpr MemberName member(const wchar_t* label) noexcept {
    return {L"Tessera.PrgFrm", label};
}

constexpr MemberName get_bar = member(L"Public Property Get 'PBar'");
constexpr MemberName get_version = member(L"Function IKelosVBUsercontrol_Version");
constexpr MemberName get_wpf_control = member(L"Property IKelosVBUsercontrol_WPFControl");

ComPtr<IKelosUIService> ui_service() {
    return get(host_service(), &IKelosService::get_UIService);
}

void set_caption(const ComPtr<IKelosLabel>& label, const Bstr& caption) {
    call(label, &IKelosLabel::put_Caption, caption.get());
}
void set_caption(const ComPtr<IKelosButton>& button, const Bstr& caption) {
    call(button, &IKelosButton::put_Caption, caption.get());
}

}  // namespace

// The sinks of the form's controls: they outlive it without harm.
class PrgFrm::AbortClicks : public automation::Object<AbortClicks, IKelosButtonEvents> {
  public:
    explicit AbortClicks(PrgFrm* form) noexcept : form_(form) {}
    void disconnect() noexcept { form_ = nullptr; }
    STDMETHODIMP Click() override {
        if (const ComPtr<PrgFrm> form = form_) form->abort_clicked();
        return S_OK;
    }

  private:
    PrgFrm* form_;
};

class PrgFrm::BridgeFocus : public automation::Object<BridgeFocus, IKelosWpfBridgeEvents> {
  public:
    explicit BridgeFocus(PrgFrm* form) noexcept : form_(form) {}
    void disconnect() noexcept { form_ = nullptr; }
    STDMETHODIMP WPFGotFocus() override {
        if (const ComPtr<PrgFrm> form = form_) form->bridge_got_focus();
        return S_OK;
    }

  private:
    PrgFrm* form_;
};

// ---------------------------------------------------------------------------------------------
// Life of the form
// ---------------------------------------------------------------------------------------------

PrgFrm::PrgFrm() {
    const auto application = get(host_service(), &IKelosService::get_Application);
    trace(L"ZUL: Form_Initialize");
    if (!application) {
        trace(L"ZUL: AppI Is Nothing");
        return;
    }
    workset_ = get(application, &IKelosApplication::get_CurrentWorkset);
    if (!workset_) {
        trace(L"ZUL: WS Is Nothing");
        return;
    }
    trace(L"ZUL: getting the undo state");
    undo_state_ = get(workset_, &IKelosWorkset::get_CurrentUndoState);
    outer_undo_state_ = get(workset_, &IKelosWorkset::get_OuterUndoState);
}

PrgFrm::~PrgFrm() {
    close();
}

void PrgFrm::open(const Bstr& title) {
    window_.create(form_layout::client_area);
    create_controls();
    load();
    window_.set_title(title.empty() ? L"" : title.get());
}

void PrgFrm::create_controls() {
    using namespace form_layout;
    const auto controls =
        automation::create_object<IKelosStandardControls>(program_names::standard_controls);
    const Resolution screen = window_.resolution();
    const long window = HandleToLong(window_.handle());

    // The captions of the design, until the form is loaded.
    const Bstr text(L"run");
    const Bstr abort(L"Abort");
    const Place line = to_pixels(form_layout::text_line, screen);
    const Place bar = to_pixels(form_layout::progress_bar, screen);
    const Place button = to_pixels(form_layout::abort_button, screen);
    text_line_ = get(controls, &IKelosStandardControls::CreateLabel, window, line.left, line.top,
                     line.width, line.height, font_points, text.get());
    progress_bar_ = get(controls, &IKelosStandardControls::CreateProgressBar, window, bar.left,
                        bar.top, bar.width, bar.height);
    abort_button_ = get(controls, &IKelosStandardControls::CreateButton, window, button.left,
                        button.top, button.width, button.height, font_points, abort.get());

    abort_clicks_ = automation::make<AbortClicks>(this);
    call(abort_button_, &IKelosButton::putref_Events, abort_clicks_->main_interface());
}

void PrgFrm::load() noexcept {
    guarded(member(L"Private Sub 'Form_Load'"), [&] {
        initialize_wpf_controls();
        set_caption(text_line_, translate(L"~00811 Bitte warten..."));
        set_caption(abort_button_, translate(L"~001d4 Abbrechen"));
    });
}

void PrgFrm::initialize_wpf_controls() noexcept {
    guarded(member(L"Sub InitializeWpfControls"), [&] {
        const auto setting = get(ui_service(), &IKelosUIService::get_FormSetting);
        call(setting, &IKelosFormSetting::Apply, main_interface());
    });
}

void PrgFrm::unload() noexcept {
    if (bridge_focus_) bridge_focus_->disconnect();
    bridge_focus_.reset();
    const ComPtr<IKelosWpfBridge> bridge = std::move(bridge_);
    guarded(member(L"Sub Form_Unload"), [&] {
        if (bridge) call(bridge, &IKelosWpfBridge::Shutdown);
    });
}

void PrgFrm::drop_controls() noexcept {
    if (abort_clicks_) abort_clicks_->disconnect();
    abort_clicks_.reset();
    text_line_.reset();
    progress_bar_.reset();
    abort_button_.reset();
}

void PrgFrm::close() noexcept {
    controller_ = nullptr;
    unload();
    drop_controls();
    window_.destroy();
}

void PrgFrm::handle_pending_messages() noexcept {
    const ComPtr<PrgFrm> alive(this);
    window_.handle_pending_messages();
}

// ---------------------------------------------------------------------------------------------
// What the controller uses
// ---------------------------------------------------------------------------------------------

ComPtr<IKelosBar> PrgFrm::bar() const noexcept {
    return guarded_result<ComPtr<IKelosBar>>(get_bar, [&](auto& result) {
        if (is_open()) result = get(progress_bar_, &IKelosProgressBar::get_Bar);
    });
}

STDMETHODIMP PrgFrm::get_PBar(IKelosBar** Result) {
    return answer(Result, get_bar, [&] { return bar(); });
}

void PrgFrm::restore_undo_state() {
    if (!workset_) {
        trace(L"ZUL: WS Is Nothing");
        return;
    }
    call(workset_, &IKelosWorkset::putref_CurrentUndoState, undo_state_.get());
    call(workset_, &IKelosWorkset::putref_OuterUndoState, outer_undo_state_.get());
    trace(L"ZUL: CurrentUndoState was set back succesfull");
}

// Has no trap: what fails here is its caller's to report.
STDMETHODIMP PrgFrm::SetUndoState() {
    try {
        restore_undo_state();
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

// ---------------------------------------------------------------------------------------------
// Events
// ---------------------------------------------------------------------------------------------

void PrgFrm::window_activated() noexcept {
    guarded(member(L"Private Sub 'Form_Activate'"), [&] {
        const ComPtr<PrgFrm> alive(this);
        const auto button = automation::require(abort_button_).as<IDispatch>();
        const auto wrapper = get(host_service(), &IKelosService::get_ControlWrapper, button.get());
        call(wrapper, &IKelosControlWrapper::Activate);
    });
}

void PrgFrm::window_closed() noexcept {
    const ComPtr<PrgFrm> alive(this);
    was_closed_ = true;
    unload();
}

void PrgFrm::window_dying() noexcept {
    const ComPtr<PrgFrm> alive(this);
    was_closed_ = true;
    unload();
    drop_controls();
}

void PrgFrm::abort_clicked() noexcept {
    if (controller_) controller_->set_state(uccStateAbort);
}

void PrgFrm::bridge_got_focus() noexcept {
    guarded(member(L"Private Sub 'm_UC_WPFGotFocus'"), [&] { restore_undo_state(); });
}

// ---------------------------------------------------------------------------------------------
// Presentation inside the host's surface
// ---------------------------------------------------------------------------------------------

STDMETHODIMP PrgFrm::Version(long* Result) {
    return answer(Result, get_version, [] { return 1; });
}

void PrgFrm::update_layout() noexcept {
    guarded(member(L"Sub IKelosVBUsercontrol_UpdateLayout"), [&] {
        if (const ComPtr<IKelosWpfBridge> bridge = bridge_) {
            const form_layout::Place area = window_.client_area();
            call(bridge, &IKelosWpfBridge::Move, area.left, area.top, area.width, area.height);
        }
        call(ui_service(), &IKelosUIService::RefreshControls, main_interface());
    });
}

STDMETHODIMP PrgFrm::UpdateLayout() {
    update_layout();
    return S_OK;
}

ComPtr<IDispatch> PrgFrm::embedded_control() noexcept {
    return guarded_result<ComPtr<IDispatch>>(get_wpf_control, [&](auto& result) {
        if (!bridge_) embed();
        result = bridge_;
    });
}

STDMETHODIMP PrgFrm::get_WPFControl(IDispatch** Result) {
    return answer(Result, get_wpf_control, [&] { return embedded_control(); });
}

void PrgFrm::embed() {
    // Without a window nothing would ever shut the control down.
    if (!is_open()) automation::fail(E_UNEXPECTED, L"The progress form is not open");
    bridge_ = automation::create_object<IKelosWpfBridge>(program_names::wpf_bridge);
    bridge_focus_ = automation::make<BridgeFocus>(this);
    call(bridge_, &IKelosWpfBridge::putref_Events, bridge_focus_->main_interface());
    call(ui_service(), &IKelosUIService::ConnectControls, main_interface(), bridge_.get());
}

STDMETHODIMP PrgFrm::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = window_.handle();
    return *window ? S_OK : E_FAIL;
}

}  // namespace tessera
