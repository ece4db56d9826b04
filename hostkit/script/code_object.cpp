#include "hostkit/script/code_object.h"

#include "automation/exception_info.h"
#include "hostkit/boundary.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;

class CodeObject : public automation::PlainObject<IDispatch> {
  public:
    CodeObject(ComPtr<ScriptEngine> engine, std::wstring_view module_name,
               ComPtr<IDispatch> procedures)
        : engine_(std::move(engine)),
          module_name_(module_name),
          procedures_(std::move(procedures)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        return procedures_->GetTypeInfoCount(count);
    }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return procedures_->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override {
        if (count == 0) return E_INVALIDARG;
        HRESULT code = S_OK;
        const HRESULT raised = run<Watched>(Given(*names), [&] {
            code = procedures_->GetIDsOfNames(id, names, count, locale, ids);
        });
        return FAILED(raised) ? raised : code;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override {
        // The procedure may release the last reference on this object.
        const ComPtr<CodeObject> keep(this);
        const ScriptSite::Watch watch(engine_->site(), module_name_);
        if (const HRESULT refused = run<Watched>(Given(*parameters), [] {}); FAILED(refused))
            return refused;
        automation::ExceptionInfo raised;
        const HRESULT code = procedures_->Invoke(member, id, locale, kind, parameters, result,
                                                 &raised, bad_argument);
        if (!watch.error()) {
            if (exception) *exception = raised.detach();
            return code;
        }
        try {
            engine_->report(*watch.error());
            return SUCCEEDED(code) ? code : raise(*watch.error(), exception);
        } catch (...) {
            return automation::current_error().code;
        }
    }

  private:
    static HRESULT raise(const ScriptErrorRecord& error, EXCEPINFO* exception) {
        if (!exception) return error.code;
        Bstr source(error.source);
        Bstr description(error.description);
        *exception = {};
        exception->scode = error.code;
        exception->bstrSource = source.detach();
        exception->bstrDescription = description.detach();
        return DISP_E_EXCEPTION;
    }

    const ComPtr<ScriptEngine> engine_;
    const std::wstring module_name_;
    const ComPtr<IDispatch> procedures_;
};

}  // namespace

ComPtr<IDispatch> make_code_object(ComPtr<ScriptEngine> engine, std::wstring_view module_name,
                                   ComPtr<IDispatch> procedures) {
    return automation::make_plain<CodeObject>(std::move(engine), module_name,
                                              std::move(procedures));
}

}  // namespace hostkit
