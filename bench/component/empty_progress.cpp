#include "bench/component/empty_progress.h"

#include "automation/object.h"

namespace bench {
namespace {

class EmptyProgress : public automation::Object<EmptyProgress, ITesseraProgress> {
  public:
    STDMETHODIMP put_Percentage(short) override { return S_OK; }
    STDMETHODIMP put_Caption(BSTR) override { return S_OK; }
    STDMETHODIMP StartProcess() override { return S_OK; }
    STDMETHODIMP StopProcess() override { return S_OK; }
    STDMETHODIMP get_State(uceProgressState* Result) override {
        *Result = uccStateClosed;
        return S_OK;
    }
    STDMETHODIMP put_State(uceProgressState) override { return S_OK; }
    STDMETHODIMP get_Where(uceWhere* Result) override {
        *Result = uccNothing;
        return S_OK;
    }
    STDMETHODIMP put_Where(uceWhere) override { return S_OK; }
    STDMETHODIMP get_Picture(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Picture(BSTR) override { return S_OK; }
};

}  // namespace

automation::ComPtr<ITesseraProgress> make_empty_progress() {
    return automation::make<EmptyProgress>()->main_pointer();
}

}  // namespace bench
