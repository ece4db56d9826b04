// A host that records the component's calls in their order and fails those that a test names. The
// test program itself is the server of its classes.
#pragma once

#include <string>
#include <vector>

#include "automation/com_ptr.h"
#include "kelos.h"

namespace fake_host {

// What a test sets and reads; one host per program.
struct Host {
    std::vector<std::string> calls;
    // Name of the call that fails; empty for none. The code says which host failed.
    std::string failing;
    bool offers_application = true;
    bool offers_workset = true;
    bool offers_classes = true;

    // What the window service was given and has not given back.
    automation::ComPtr<IDispatch> form;
    automation::ComPtr<IDispatch> controller;
    // What the controls were given.
    automation::ComPtr<IKelosButtonEvents> button_events;
    automation::ComPtr<IKelosWpfBridgeEvents> bridge_events;
    // The workset's undo states.
    automation::ComPtr<IDispatch> undo_state;
    automation::ComPtr<IDispatch> outer_undo_state;

    // The calls since the last time, one per line.
    std::string take_calls();
    // Number of calls of this name since then.
    int count(std::string_view name) const;
};

inline constexpr HRESULT failure = static_cast<HRESULT>(0x80041234L);

Host& host();

// Makes the programmatic names of the host known to the calling thread, and starts with an empty
// record; at its end nothing of the host is left.
class Session {
  public:
    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

  private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
};

}  // namespace fake_host
