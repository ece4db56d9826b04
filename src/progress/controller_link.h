// A progress controller as the form and the host's window service see it.
#pragma once

#include "automation/object.h"
#include "tessera.h"

namespace tessera {

class Progress;

// The window service keeps the controller that it is given as long as the form is registered. If
// that were the Progress itself, a client that lets go of it without ending the process would
// leave an open form behind for ever. So the service and the form get this object instead: it does
// everything that its Progress does, but does not keep it alive. When the client lets go, the
// Progress dies and takes its form down.
//
// Once the Progress is gone, properties read as those of a new one and everything else does
// nothing.
class ControllerLink : public automation::Object<ControllerLink, ITesseraProgress> {
  public:
    static constexpr CLSID class_id = __uuidof(::Progress);

    explicit ControllerLink(Progress* progress) noexcept : progress_(progress) {}
    // The Progress calls this when it dies.
    void sever() noexcept { progress_ = nullptr; }

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
    template <class... Parameters, class... Arguments>
    HRESULT forward(HRESULT (STDMETHODCALLTYPE ITesseraProgress::*member)(Parameters...),
                    Arguments... arguments) noexcept;

    Progress* progress_;
};

}  // namespace tessera
