// The progress form: a text line, a progress bar and an abort button in a window that the host's
// window service shows.
#pragma once

#include "automation/object.h"
#include "kelos.h"
#include "progress/form_window.h"
#include "tessera.h"

namespace tessera {

class Progress;

// Lifetime. A Progress creates the form, opens it and closes it; closing destroys the window even
// if the host still holds the form. The controls and the embedded control hold no reference to the
// form: they are told of sinks that only point to it. The form points to its controller, which
// takes the pointer back before it dies.
//
// Closing by the user hides the window and ends the embedded control; the controls stay, so that
// whoever moves the bar need not know.
class PrgFrm : public automation::Object<PrgFrm, ITesseraPrgFrm, IKelosVBUsercontrol, IOleWindow>,
               private FormWindow::Events {
  public:
    // Remembers the undo states of the host's workset. Throws what the host fails with.
    PrgFrm();
    ~PrgFrm();

    // Creates the window with its controls and gives it the title. Throws when that is impossible,
    // for example without a display.
    void open(const automation::Bstr& title);
    void close() noexcept;
    bool is_open() const noexcept { return window_.handle() != nullptr; }
    // By the user, or by somebody who destroyed the window: nobody sees the form any more.
    bool was_closed() const noexcept { return was_closed_; }
    // The bar inside the progress bar; nothing while the form has no window.
    automation::ComPtr<IKelosBar> bar() const noexcept;
    void set_controller(Progress* controller) noexcept { controller_ = controller; }
    // Throws what the host fails with.
    void restore_undo_state();
    // Fits the embedded control to the window.
    void update_layout() noexcept;
    // Created on first request.
    automation::ComPtr<IDispatch> embedded_control() noexcept;
    void handle_pending_messages() noexcept;

    STDMETHODIMP get_PBar(IKelosBar** Result) override;
    STDMETHODIMP SetUndoState() override;

    STDMETHODIMP Version(long* Result) override;
    STDMETHODIMP UpdateLayout() override;
    STDMETHODIMP get_WPFControl(IDispatch** Result) override;

    // How the host's window service gets at the window that it is to show.
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    class AbortClicks;
    class BridgeFocus;

    void window_activated() noexcept override;
    void window_closed() noexcept override;
    void window_dying() noexcept override;

    void create_controls();
    void load() noexcept;
    void initialize_wpf_controls() noexcept;
    void unload() noexcept;
    void drop_controls() noexcept;
    void abort_clicked() noexcept;
    void bridge_got_focus() noexcept;
    void embed();

    FormWindow window_{*this};
    bool was_closed_ = false;
    Progress* controller_ = nullptr;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IDispatch> undo_state_;
    automation::ComPtr<IDispatch> outer_undo_state_;
    automation::ComPtr<IKelosLabel> text_line_;
    automation::ComPtr<IKelosProgressBar> progress_bar_;
    automation::ComPtr<IKelosButton> abort_button_;
    automation::ComPtr<AbortClicks> abort_clicks_;
    automation::ComPtr<IKelosWpfBridge> bridge_;
    automation::ComPtr<BridgeFocus> bridge_focus_;
};

}  // namespace tessera
