#include "progress/progress.h"

#include "host/error_boundary.h"
#include "host/service.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

constexpr wchar_t source[] = L"Tessera.Progress";

constexpr MemberName let_percentage{source, L"Public Property Let 'Percentage'"};
constexpr MemberName let_caption{source, L"Public Property Let 'Caption'"};
constexpr MemberName open_process{source, L"Private Sub 'StartProcess'"};
constexpr MemberName close_process{source, L"Private Sub 'StopProcess'"};
constexpr MemberName get_process_state{source, L"Public Property Get 'State'"};
constexpr MemberName get_direction{source, L"Public Property Get 'Where'"};

ComPtr<IKelosWindowService> window_service() {
    const auto application = get(host_service(), &IKelosService::get_Application);
    return get(application, &IKelosApplication::get_WindowService);
}

constexpr bool is_running(std::int16_t percentage) noexcept {
    return percentage >= 0 && percentage < 100;
}

}  // namespace

Progress::~Progress() {
    stop();
    // The host refused to let the form go; its window goes all the same.
    if (form_) form_->close();
}

// ---------------------------------------------------------------------------------------------
// Course of the work
// ---------------------------------------------------------------------------------------------

void Progress::set_percentage(std::int16_t percentage) noexcept {
    guarded(let_percentage, [&] {
        // A click that waits counts for this step already; one that 0 would overwrite is left for
        // the end of the step.
        if (percentage > 0 && percentage < 100) handle_pending_messages();
        restore_undo_state();
        if (!is_running(percentage)) {
            move_bar(percentage);
            stop_process();
        } else {
            if (percentage == 0) {
                start_process();
            } else if (!opening_failed_) {
                continue_process();
            }
            move_bar(percentage);
        }
        enter_state(percentage);
        // Lets the form show the bar's new position.
        handle_pending_messages();
    });
}

void Progress::enter_state(std::int16_t percentage) {
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

// Work begins anew: a form that could not be opened or was closed gets another chance.
void Progress::start_process() noexcept {
    guarded(open_process, [&] {
        if (form_ && form_->was_closed()) close_form();
        ensure_open();
    });
}

// Who closed the form does not get it back while the same work goes on.
void Progress::continue_process() noexcept {
    guarded(open_process, [&] { ensure_open(); });
}

void Progress::ensure_open() {
    // A host that comes back from inside the opening gets no second form.
    if (!form_ && !opening_) open_form();
    restore_undo_state();
}

void Progress::stop_process() noexcept {
    stop();
    opening_failed_ = false;
}

void Progress::stop() noexcept {
    guarded(close_process, [&] {
        if (form_) close_form();
    });
}

// Either the form is open afterwards and known to the host, or it is gone.
void Progress::open_form() {
    opening_ = opening_failed_ = true;
    ComPtr<PrgFrm> form;
    try {
        form = automation::make<PrgFrm>();
        form_ = form;
        form->open(caption_);
        call(window_service(), &IKelosWindowService::RegisterForm, form->main_interface(), 0,
             nullptr, main_interface());
        form->set_controller(this);
    } catch (...) {
        opening_ = false;
        form_.reset();
        if (form) form->close();
        throw;
    }
    opening_ = opening_failed_ = false;
}

// When the host does not let go of the form, it stays open as it was.
void Progress::close_form() {
    const ComPtr<PrgFrm> form = form_;
    form->set_controller(nullptr);
    try {
        call(window_service(), &IKelosWindowService::UnregisterForm, form->main_interface());
    } catch (...) {
        form->set_controller(this);
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

void Progress::move_bar(std::int16_t percentage) {
    const ComPtr<PrgFrm> form = form_;
    if (!form || !form->is_open()) return;
    call(form->bar(), &IKelosBar::put_Value, static_cast<double>(percentage));
}

void Progress::handle_pending_messages() noexcept {
    if (const ComPtr<PrgFrm> form = form_) form->handle_pending_messages();
}

// ---------------------------------------------------------------------------------------------
// Properties
// ---------------------------------------------------------------------------------------------

void Progress::set_caption(std::wstring_view caption) noexcept {
    guarded(let_caption, [&] { caption_ = Bstr(caption); });
}

uceProgressState Progress::state() noexcept {
    handle_pending_messages();
    return state_;
}

// ---------------------------------------------------------------------------------------------
// Automation
// ---------------------------------------------------------------------------------------------

STDMETHODIMP Progress::put_Percentage(short NewValue) {
    set_percentage(NewValue);
    return S_OK;
}

STDMETHODIMP Progress::put_Caption(BSTR NewValue) {
    set_caption(automation::view_of(NewValue));
    return S_OK;
}

STDMETHODIMP Progress::StartProcess() {
    start_process();
    return S_OK;
}

STDMETHODIMP Progress::StopProcess() {
    stop_process();
    return S_OK;
}

STDMETHODIMP Progress::get_State(uceProgressState* Result) {
    return answer(Result, get_process_state, [&] { return state(); });
}

STDMETHODIMP Progress::put_State(uceProgressState NewValue) {
    return keep(state_, NewValue);
}

STDMETHODIMP Progress::get_Where(uceWhere* Result) {
    return give(Result, where_, get_direction);
}

STDMETHODIMP Progress::put_Where(uceWhere NewValue) {
    return keep(where_, NewValue);
}

// Picture alone has no trap: what little can go wrong is its caller's.
STDMETHODIMP Progress::get_Picture(BSTR* Result) {
    if (Result) *Result = nullptr;
    try {
        if (!Result) automation::fail(E_POINTER);
        *Result = Bstr(picture_).detach();
        return S_OK;
    } catch (...) {
        return automation::raise_current_error(source);
    }
}

STDMETHODIMP Progress::put_Picture(BSTR NewValue) {
    try {
        picture_ = Bstr(automation::view_of(NewValue));
        where_ = picture_.empty() ? uccNothing : uccUserDef;
        return S_OK;
    } catch (...) {
        return automation::raise_current_error(source);
    }
}

}  // namespace tessera
