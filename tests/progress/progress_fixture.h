// A controller with a recording host.
#pragma once

#include <doctest/doctest.h>

#include <memory>

#include "progress/fake_host.h"
#include "progress/progress.h"

namespace tessera {

// Every test begins with a fresh host and ends with no object alive: neither the component's nor
// one of the host's that the component should have let go.
class ProgressFixture {
  public:
    ~ProgressFixture() {
        progress.reset();
        session.reset();
        CHECK(automation::live_count() == 0);
    }

    uceProgressState state() const {
        uceProgressState result = static_cast<uceProgressState>(-1);
        CHECK(progress->get_State(&result) == S_OK);
        return result;
    }
    void percentage(short value) const { CHECK(progress->put_Percentage(value) == S_OK); }
    bool form_is_open() const { return fake_host::host().form.get() != nullptr; }
    void click_abort() const { CHECK(fake_host::host().button_events->Click() == S_OK); }
    HWND window() const {
        HWND result = nullptr;
        if (const auto form = fake_host::host().form.try_as<IOleWindow>()) form->GetWindow(&result);
        return result;
    }

    std::unique_ptr<fake_host::Session> session = std::make_unique<fake_host::Session>();
    automation::ComPtr<Progress> progress = automation::make<Progress>();
};

// What a restored undo state looks like to the host.
inline constexpr char undo_restored[] =
    "set CurrentUndoState\n"
    "set OuterUndoState\n"
    "Trace ZUL: CurrentUndoState was set back succesfull\n";

}  // namespace tessera
