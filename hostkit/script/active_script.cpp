#include "hostkit/script/active_script.h"

#include "automation/error.h"
#include "automation/exception_info.h"

namespace hostkit {
namespace {

using automation::check;
using automation::ComPtr;

// The engine's DLL stays loaded, so that its class factory outlives COM's own idea of its use.
void pin_module_of(IUnknown* object) {
    HMODULE module = nullptr;
    const void* const vtable = *reinterpret_cast<void**>(object);
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       static_cast<LPCWSTR>(vtable), &module);
}

IClassFactory* find_factory() {
    CLSID class_id;
    check(CLSIDFromProgID(L"VBScript", &class_id));
    ComPtr<IClassFactory> factory;
    check(CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                           reinterpret_cast<void**>(factory.put())));
    pin_module_of(factory.get());
    return factory.detach();
}

// An engine is made per evaluated expression, and looking the class up costs a hundred times what
// making one does. The class is free-threaded; its factory is kept for the life of the process.
IClassFactory* engine_factory() {
    static IClassFactory* const factory = find_factory();
    return factory;
}

}  // namespace

ActiveScript::ActiveScript(IActiveScriptSite* site) {
    check(engine_factory()->CreateInstance(nullptr, __uuidof(IActiveScript),
                                           reinterpret_cast<void**>(script_.put())));
    parser_ = script_.as<IActiveScriptParse>();
    check(parser_->InitNew());
    check(script_->SetScriptSite(site));
    // Only started scripts run what they are given; before that they keep it waiting.
    check(script_->SetScriptState(SCRIPTSTATE_STARTED));
}

ActiveScript::~ActiveScript() {
    script_->Close();
}

void ActiveScript::add_item(const wchar_t* name, DWORD flags) {
    check(script_->AddNamedItem(name, flags));
}

HRESULT ActiveScript::run(const wchar_t* code, const wchar_t* item, DWORD cookie) {
    automation::ExceptionInfo exception;
    return parser_->ParseScriptText(code, item, nullptr, nullptr, cookie, 0, SCRIPTTEXT_ISVISIBLE,
                                    nullptr, &exception);
}

HRESULT ActiveScript::evaluate(const wchar_t* expression, const wchar_t* item, DWORD cookie,
                               VARIANT* result) {
    automation::ExceptionInfo exception;
    return parser_->ParseScriptText(expression, item, nullptr, nullptr, cookie, 0,
                                    SCRIPTTEXT_ISEXPRESSION, result, &exception);
}

ComPtr<IDispatch> ActiveScript::procedures(const wchar_t* item) {
    ComPtr<IDispatch> result;
    check(script_->GetScriptDispatch(item, result.put()));
    return result;
}

}  // namespace hostkit
