// The progress controller: long work tells it how far it is and asks it whether to stop.
#pragma once

#include "automation/object.h"
#include "progress/prg_frm.h"

namespace tessera {

// Lifetime. The Progress owns its form while that is open. The host's window service gets the
// Progress itself and may hold it: then the form stays open until somebody ends the process, so
// that owners of a Progress stop it when they let go. The form refers back without counting. A
// Progress that dies while its form is open closes it.
//
// The form's clicks are messages of the caller's thread. A caller that works without a message
// loop sees an abort all the same: reading State, and setting Percentage, handles what waits for
// the form's window.
class Progress : public automation::Object<Progress, ITesseraProgress> {
  public:
    static constexpr CLSID class_id = __uuidof(::Progress);

    ~Progress();

    void set_percentage(std::int16_t percentage) noexcept;
    // Stored; the next form that is opened shows it.
    void set_caption(std::wstring_view caption) noexcept;
    void set_where(uceWhere where) noexcept { where_ = where; }
    void set_state(uceProgressState state) noexcept { state_ = state; }
    // Handles a waiting click first.
    uceProgressState state() noexcept;
    // Opens the form if it is not open; one that the user closed is no longer open.
    void start_process() noexcept;
    // Closes the form if it is open.
    void stop_process() noexcept;

    STDMETHODIMP put_Percentage(short NewValue) override;
    STDMETHODIMP put_Caption(BSTR NewValue) override;
    STDMETHODIMP StartProcess() override;
    STDMETHODIMP StopProcess() override;
    STDMETHODIMP get_State(uceProgressState* Result) override;
    STDMETHODIMP put_State(uceProgressState NewValue) override;
    STDMETHODIMP get_Where(uceWhere* Result) override;
    STDMETHODIMP put_Where(uceWhere NewValue) override;
    STDMETHODIMP get_Picture(BSTR* Result) override;
    STDMETHODIMP put_Picture(BSTR NewValue) override;

  private:
    void stop() noexcept;
    void continue_process() noexcept;
    void ensure_open();
    void open_form();
    void close_form();
    void move_bar(std::int16_t percentage);
    void enter_state(std::int16_t percentage);
    void restore_undo_state();
    void handle_pending_messages() noexcept;

    automation::Bstr caption_;
    automation::Bstr picture_;
    uceProgressState state_ = uccStateClosed;
    uceWhere where_ = uccNothing;
    // Present while the form is open.
    automation::ComPtr<PrgFrm> form_;
    // The form could not be opened: the walk goes on without one, and not every step tries again.
    bool opening_failed_ = false;
    bool opening_ = false;
};

}  // namespace tessera
