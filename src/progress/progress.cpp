#include "progress/progress.h"

#include "host/error_boundary.h"
#include "host/service.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

constexpr MemberName member(const wchar_t* label) noexcept {
    return {L"Tessera.Progress", label};
}

ComPtr<IKelosWindowService> window_service() {
    const auto application = get(host_service(), &IKelosService::get_Application);
    return get(application, &IKelosApplication::get_WindowService);
}

constexpr bool is_running(short percentage) noexcept {
    return percentage >= 0 && percentage < 100;
}

}  // namespace

Progress::~Progress() {
    if (link_) link_->sever();
    stop();
    // The host refused to let the form go; its window goes all the same.
    if (form_) form_->close();
}

// ---------------------------------------------------------------------------------------------
// Course of the work
// ---------------------------------------------------------------------------------------------

STDMETHODIMP Progress::put_Percentage(short NewValue) {
    return trapped(member(L"Public Property Let 'Percentage'"), [&] {
        // A click that waits counts for this step already.
        handle_pending_messages();
        restore_undo_state();
        if (!is_running(NewValue)) {
            move_bar(NewValue);
            StopProcess();
        } else {
            // Work begins anew at 0: then the form gets another chance.
            if (NewValue == 0 || !opening_failed_) start();
            move_bar(NewValue);
        }
        enter_state(NewValue);
        // Lets the form show the bar's new position.
        handle_pending_messages();
    });
}

void Progress::enter_state(short percentage) {
    if (!is_running(percentage)) {
        state_ = uccStateClosed;
    } else if (percentage == 0) {
        state_ = uccStateOpen;
    } else if (state_ == uccStateAbort) {
        stop();
    } else {
        state_ = uccStateExecuting;
    }
}

STDMETHODIMP Progress::StartProcess() {
    start();
    return S_OK;
}

STDMETHODIMP Progress::StopProcess() {
    stop();
    opening_failed_ = false;
    return S_OK;
}

void Progress::start() noexcept {
    guarded(member(L"Private Sub 'StartProcess'"), [&] {
        if (!form_) open_form();
        restore_undo_state();
    });
}

void Progress::stop() noexcept {
    guarded(member(L"Private Sub 'StopProcess'"), [&] {
        if (form_) close_form();
    });
}

// Either the form is open afterwards and known to the host, or it is gone.
void Progress::open_form() {
    opening_failed_ = true;
    if (!link_) link_ = automation::make<ControllerLink>(this);
    const ComPtr<PrgFrm> form = automation::make<PrgFrm>();
    form_ = form;
    try {
        form->open(caption_);
        call(window_service(), &IKelosWindowService::RegisterForm, form->main_interface(), 0,
             nullptr, link_->main_interface());
        form->set_controller(link_->main_pointer());
    } catch (...) {
        form_.reset();
        form->close();
        throw;
    }
    opening_failed_ = false;
}

// When the host does not let go of the form, it stays open as it was.
void Progress::close_form() {
    const ComPtr<PrgFrm> form = form_;
    form->set_controller(nullptr);
    try {
        call(window_service(), &IKelosWindowService::UnregisterForm, form->main_interface());
    } catch (...) {
        form->set_controller(link_->main_pointer());
        throw;
    }
    form_.reset();
    form->close();
}

// ---------------------------------------------------------------------------------------------
// The form, if there is one
// ---------------------------------------------------------------------------------------------

void Progress::restore_undo_state() {
    if (const ComPtr<PrgFrm> form = form_) form->restore_undo_state();
}

void Progress::move_bar(short percentage) {
    const ComPtr<PrgFrm> form = form_;
    if (!form || !form->is_open()) return;
    ComPtr<IKelosBar> bar;
    form->get_PBar(bar.put());
    call(bar, &IKelosBar::put_Value, static_cast<double>(percentage));
}

void Progress::handle_pending_messages() noexcept {
    if (const ComPtr<PrgFrm> form = form_) form->handle_pending_messages();
}

// ---------------------------------------------------------------------------------------------
// Plain properties
// ---------------------------------------------------------------------------------------------

STDMETHODIMP Progress::put_Caption(BSTR NewValue) {
    return trapped(member(L"Public Property Let 'Caption'"),
                   [&] { caption_ = Bstr(automation::view_of(NewValue)); });
}

STDMETHODIMP Progress::get_State(uceProgressState* Result) {
    return trapped(Result, member(L"Public Property Get 'State'"), [&](auto& result) {
        handle_pending_messages();
        result = state_;
    });
}

STDMETHODIMP Progress::put_State(uceProgressState NewValue) {
    return trapped(member(L"Public Property Let 'State'"), [&] { state_ = NewValue; });
}

STDMETHODIMP Progress::get_Where(uceWhere* Result) {
    return trapped(Result, member(L"Public Property Get 'Where'"),
                   [&](auto& result) { result = where_; });
}

STDMETHODIMP Progress::put_Where(uceWhere NewValue) {
    return trapped(member(L"Public Property Let 'Where'"), [&] { where_ = NewValue; });
}

// Picture alone has no trap: what little can go wrong is its caller's.
STDMETHODIMP Progress::get_Picture(BSTR* Result) {
    if (!Result) return E_POINTER;
    *Result = nullptr;
    try {
        *Result = Bstr(picture_).detach();
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

STDMETHODIMP Progress::put_Picture(BSTR NewValue) {
    try {
        picture_ = Bstr(automation::view_of(NewValue));
        where_ = picture_.empty() ? uccNothing : uccUserDef;
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

}  // namespace tessera
