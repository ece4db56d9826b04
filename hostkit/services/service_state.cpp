#include "hostkit/services/service_state.h"

#include "automation/error.h"
#include "automation/thread_slot.h"
#include "hostkit/boundary.h"
#include "hostkit/services/console_output.h"

namespace hostkit {
namespace {

void trim(std::deque<std::wstring>& texts, std::size_t limit) {
    while (texts.size() > limit)
        texts.pop_front();
}

// A box that cannot be shown, as without a display, is answered like one that is only recorded.
long show_box(const std::wstring& text, long style, const std::wstring& title) {
    const int button =
        MessageBoxW(GetActiveWindow(), text.c_str(), title.c_str(), static_cast<UINT>(style));
    return button > 0 ? button : service_state().message_answer;
}

std::wstring hexadecimal(long number) {
    wchar_t text[16];
    swprintf(text, std::size(text), L"&H%08lX", static_cast<unsigned long>(number));
    return text;
}

}  // namespace

ServiceState::~ServiceState() {
    // At thread exit COM may be gone: forms that nobody unregistered are left to the system.
    for (RegisteredForm& entry : forms) {
        static_cast<void>(entry.form.detach());
        static_cast<void>(entry.reference.detach());
        static_cast<void>(entry.controller.detach());
    }
}

void ServiceState::add_message(MessageRecord message) {
    if (mode == hkmConsole)
        write_line(StandardStream::output, message.title + L": " + message.text);
    messages.push_back(std::move(message));
}

void ServiceState::add_error(ErrorRecord error) {
    if (mode == hkmConsole)
        write_line(StandardStream::error, L"error " + hexadecimal(error.number) + L" in " +
                                              error.source + L", " + error.label + L": " +
                                              error.description);
    errors.push_back(std::move(error));
}

void ServiceState::add_trace(std::wstring text) {
    if (trace_limit == 0) return;
    if (mode == hkmConsole) write_line(StandardStream::output, text);
    traces.push_back(std::move(text));
    trim(traces, trace_limit);
}

void ServiceState::add_script_error(ScriptErrorRecord error) {
    if (mode == hkmConsole)
        write_line(StandardStream::error, error.item + L":" + std::to_wstring(error.line) + L": " +
                                              error.description + L"\n    " + error.line_text);
    script_errors.push_back(std::move(error));
}

void ServiceState::set_trace_limit(long limit) {
    if (limit < 0) automation::fail(E_INVALIDARG, L"A trace limit is not negative");
    trace_limit = static_cast<std::size_t>(limit);
    trim(traces, trace_limit);
}

void ServiceState::clear() {
    messages.clear();
    errors.clear();
    traces.clear();
    script_errors.clear();
    uses = {};
}

ServiceState& service_state() {
    return automation::ThreadOwn<ServiceState>::get();
}

long show_message(std::wstring text, long style, std::wstring title) {
    ServiceState& state = service_state();
    const long button =
        state.mode == hkmInteractive ? show_box(text, style, title) : state.message_answer;
    state.add_message({std::move(text), style, std::move(title), button, noted_row()});
    return button;
}

}  // namespace hostkit
