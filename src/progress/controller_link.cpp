#include "progress/controller_link.h"

#include "progress/progress.h"

namespace tessera {

template <class... Parameters, class... Arguments>
HRESULT ControllerLink::forward(
    HRESULT (STDMETHODCALLTYPE ITesseraProgress::*member)(Parameters...),
    Arguments... arguments) noexcept {
    const automation::ComPtr<Progress> progress(progress_);
    return progress ? (progress.get()->*member)(arguments...) : S_OK;
}

STDMETHODIMP ControllerLink::put_Percentage(short NewValue) {
    return forward(&ITesseraProgress::put_Percentage, NewValue);
}

STDMETHODIMP ControllerLink::put_Caption(BSTR NewValue) {
    return forward(&ITesseraProgress::put_Caption, NewValue);
}

STDMETHODIMP ControllerLink::StartProcess() {
    return forward(&ITesseraProgress::StartProcess);
}

STDMETHODIMP ControllerLink::StopProcess() {
    return forward(&ITesseraProgress::StopProcess);
}

STDMETHODIMP ControllerLink::get_State(uceProgressState* Result) {
    if (Result) *Result = uccStateClosed;
    return forward(&ITesseraProgress::get_State, Result);
}

STDMETHODIMP ControllerLink::put_State(uceProgressState NewValue) {
    return forward(&ITesseraProgress::put_State, NewValue);
}

STDMETHODIMP ControllerLink::get_Where(uceWhere* Result) {
    if (Result) *Result = uccNothing;
    return forward(&ITesseraProgress::get_Where, Result);
}

STDMETHODIMP ControllerLink::put_Where(uceWhere NewValue) {
    return forward(&ITesseraProgress::put_Where, NewValue);
}

STDMETHODIMP ControllerLink::get_Picture(BSTR* Result) {
    if (Result) *Result = nullptr;
    return forward(&ITesseraProgress::get_Picture, Result);
}

STDMETHODIMP ControllerLink::put_Picture(BSTR NewValue) {
    return forward(&ITesseraProgress::put_Picture, NewValue);
}

}  // namespace tessera
