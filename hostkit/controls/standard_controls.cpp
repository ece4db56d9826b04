// Kelos.StandardControls: label, progress bar and button on the platform's controls.

#include <algorithm>
#include <cmath>

#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"
#include "hostkit/controls/control_window.h"
#include "hostkit/services/ole_window.h"

#include <commctrl.h>

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::make;
using automation::view_of;
using SharedControl = std::shared_ptr<ControlWindow>;

constexpr int bar_maximum = 100;
constexpr double own_font = 0;

// What all controls share: their window, and the question for it.
template <class Self, class Interface>
class Control : public automation::Object<Self, Interface, IOleWindow> {
  public:
    explicit Control(SharedControl control) : control_(std::move(control)) {}

    STDMETHODIMP GetWindow(HWND* result) override {
        if (!result) return E_POINTER;
        *result = control_->find_window();
        return *result ? S_OK : E_FAIL;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  protected:
    const SharedControl control_;
};

class Label : public Control<Label, IKelosLabel> {
  public:
    using Control::Control;

    STDMETHODIMP get_Caption(BSTR* result) override {
        return answer<Watched>(result, [&] { return control_->caption(); });
    }
    STDMETHODIMP put_Caption(BSTR value) override {
        return run<Watched>(Given(value), [&] { control_->set_caption(view_of(value)); });
    }
};

class Bar : public automation::Object<Bar, IKelosBar> {
  public:
    explicit Bar(SharedControl control) : control_(std::move(control)) {}

    STDMETHODIMP get_Value(double* result) override {
        return answer<Watched>(result, [&] { return value_; });
    }
    // The value is kept as it was given; the bar is drawn at the nearest place that it has.
    STDMETHODIMP put_Value(double value) override {
        return run<Watched>(Given(value), [&] {
            if (std::isnan(value)) automation::fail(E_INVALIDARG, L"A bar's value is a number");
            const auto position = std::lround(std::clamp(value, 0.0, double{bar_maximum}));
            SendMessageW(control_->window(), PBM_SETPOS, static_cast<WPARAM>(position), 0);
            value_ = value;
        });
    }

  private:
    const SharedControl control_;
    double value_ = 0;
};

class ProgressBar : public Control<ProgressBar, IKelosProgressBar> {
  public:
    explicit ProgressBar(SharedControl control)
        : Control(control), bar_(make<Bar>(std::move(control))) {
        SendMessageW(control_->window(), PBM_SETRANGE32, 0, bar_maximum);
    }

    STDMETHODIMP get_Bar(IKelosBar** result) override {
        return answer<Watched>(result, [&] { return ComPtr<IKelosBar>(bar_); });
    }

  private:
    const ComPtr<Bar> bar_;
};

// Labels end a text that is too long by themselves; a button has to be given one that fits.
class Button : public Control<Button, IKelosButton> {
  public:
    Button(SharedControl control, std::wstring_view caption) : Control(std::move(control)) {
        set_caption(caption);
    }

    STDMETHODIMP get_Caption(BSTR* result) override {
        return answer<Watched>(result, [&] {
            control_->window();
            return automation::Bstr(caption_);
        });
    }
    STDMETHODIMP put_Caption(BSTR value) override {
        return run<Watched>(Given(value), [&] { set_caption(view_of(value)); });
    }
    // The window keeps the receiver, until nothing is set or the window is destroyed.
    STDMETHODIMP putref_Events(IKelosButtonEvents* value) override {
        return run<Watched>(Given(value), [&] {
            if (!value) return control_->on_click({});
            control_->window();
            control_->on_click([events = ComPtr<IKelosButtonEvents>(value)] { events->Click(); });
        });
    }

  private:
    void set_caption(std::wstring_view caption) {
        control_->set_caption(control_->fitting(caption));
        caption_ = caption;
    }

    std::wstring caption_;
};

class StandardControls
    : public automation::Object<
          StandardControls, automation::Extends<IHostKitStandardControls, IKelosStandardControls>> {
  public:
    STDMETHODIMP CreateLabel(long window, long left, long top, long width, long height,
                             double font_size, BSTR caption, IKelosLabel** result) override {
        return answer(result, Given(font_size, caption), [&] {
            return make<Label>(
                       ControlWindow::create(WC_STATICW, SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS,
                                             {window_from(window), left, top, width, height},
                                             font_size, view_of(caption)))
                ->main_pointer();
        });
    }
    STDMETHODIMP CreateProgressBar(long window, long left, long top, long width, long height,
                                   IKelosProgressBar** result) override {
        return answer(result, [&] {
            const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
            InitCommonControlsEx(&classes);
            return make<ProgressBar>(
                       ControlWindow::create(PROGRESS_CLASSW, PBS_SMOOTH,
                                             {window_from(window), left, top, width, height},
                                             own_font, {}))
                ->main_pointer();
        });
    }
    STDMETHODIMP CreateButton(long window, long left, long top, long width, long height,
                              double font_size, BSTR caption, IKelosButton** result) override {
        return answer(result, Given(font_size, caption), [&] {
            return make<Button>(ControlWindow::create(
                                    WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON,
                                    {window_from(window), left, top, width, height}, font_size, {}),
                                view_of(caption))
                ->main_pointer();
        });
    }
};

}  // namespace

ComPtr<IUnknown> create_standard_controls() {
    return make<StandardControls>()->main_interface();
}

}  // namespace hostkit
