#include "bench/component/bare_script.h"

#include <activscp.h>

#include "automation/plain_object.h"

namespace bench {
namespace {

using automation::check;

constexpr DISPID id_add_module = 12;
constexpr DISPID id_code_object = 15;

void add_module(IDispatch* engine, const wchar_t* name, const std::wstring& code,
                IDispatch* object) {
    const Variant module_name(name);
    const Variant text(code);
    const Variant shown(object);
    const Variant global(object != nullptr);
    automation::invoke(engine, id_add_module, DISPATCH_METHOD, {module_name, text, shown, global});
}

class Site : public automation::PlainObject<IActiveScriptSite> {
  public:
    explicit Site(IDispatch* global) : global_(global) {}

    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD wanted, IUnknown** item, ITypeInfo**) override {
        if (!(wanted & SCRIPTINFO_IUNKNOWN)) return E_NOTIMPL;
        *item = ComPtr(global_).detach();
        return S_OK;
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError*) override { return S_OK; }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

  private:
    ComPtr<IDispatch> global_;
};

IClassFactory* engine_factory() {
    static IClassFactory* const factory = [] {
        CLSID id;
        check(CLSIDFromProgID(L"VBScript", &id));
        IClassFactory* found = nullptr;
        check(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                               reinterpret_cast<void**>(&found)));
        return found;
    }();
    return factory;
}

}  // namespace

void run_script(const std::wstring& text, IDispatch* global) {
    const auto engine = create<IDispatch>(L"KelosScript.Engine");
    add_module(engine.get(), L"Global", {}, global);
    add_module(engine.get(), L"Run", text, nullptr);
    const Variant name(L"Run");
    const Variant code = automation::invoke(engine.get(), id_code_object, DISPATCH_METHOD, {name});
    automation::call_method(automation::object_as<IDispatch>(code).get(), L"DoVex");
}

Variant evaluate(const wchar_t* expression, IDispatch* global) {
    constexpr wchar_t item[] = L"Glob";
    const auto site = automation::make_plain<Site>(global);
    ComPtr<IActiveScript> script;
    check(engine_factory()->CreateInstance(nullptr, __uuidof(IActiveScript),
                                           reinterpret_cast<void**>(script.put())));
    const auto parser = script.as<IActiveScriptParse>();
    check(parser->InitNew());
    check(script->SetScriptSite(site.get()));
    check(script->SetScriptState(SCRIPTSTATE_STARTED));
    check(script->AddNamedItem(item, SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS));
    Variant result;
    check(parser->ParseScriptText(expression, item, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISEXPRESSION,
                                  &result, nullptr));
    check(script->Close());
    return result;
}

}  // namespace bench
