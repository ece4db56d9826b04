// What the service objects of one thread share: records of what the host was told, and settings.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "automation/com_ptr.h"
#include "hostkit/services/script_error.h"
#include "services.h"

namespace hostkit {

struct MessageRecord {
    std::wstring text;
    long style;
    std::wstring title;
    long answer;
    long row;  // of a mapping table; 0 when none was read before
};

struct ErrorRecord {
    long number;
    std::wstring description;
    std::wstring source;
    std::wstring label;
    long row;
};

struct RegisteredForm {
    automation::ComPtr<IDispatch> form;
    long number = 0;
    automation::ComPtr<IDispatch> reference;
    automation::ComPtr<IDispatch> controller;
};

// How often the window and presentation services were used.
struct UseCounts {
    long registered = 0;
    long unregistered = 0;
    long applied = 0;
    long connected = 0;
    long refreshed = 0;
};

// Service objects are thin handles on it: it outlives them, so that a script may read what a
// component reported that has long been released.
struct ServiceState {
    ServiceState() = default;
    ~ServiceState();
    ServiceState(const ServiceState&) = delete;
    ServiceState& operator=(const ServiceState&) = delete;

    void add_message(MessageRecord message);
    void add_error(ErrorRecord error);
    void add_trace(std::wstring text);
    void add_script_error(ScriptErrorRecord error);
    void set_trace_limit(long limit);
    void clear();

    std::deque<MessageRecord> messages;
    std::deque<ErrorRecord> errors;
    std::deque<std::wstring> traces;
    std::deque<ScriptErrorRecord> script_errors;
    std::vector<RegisteredForm> forms;
    UseCounts uses;

    HostKitLanguage language = hklGerman;
    HostKitMode mode = hkmRecording;
    long message_answer = IDOK;
    std::size_t trace_limit = 500;
    bool offers_application = true;
    HRESULT failure = S_OK;
    bool allows_scripts = true;
    std::wstring allowed_script;
};

// The calling thread's state.
ServiceState& service_state();

// Records a message box, shows it when the service is interactive, and answers its button.
long show_message(std::wstring text, long style, std::wstring title);

}  // namespace hostkit
