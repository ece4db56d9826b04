// KelosScript.Engine: the platform's VBScript engine behind the contract's dispatch ids.
#pragma once

#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/script/active_script.h"
#include "hostkit/script/script_site.h"

namespace hostkit {

// Owns its script; code objects that it handed out keep it alive. Every member that runs code
// holds a reference on the engine meanwhile, so that a script may well release its own engine.
class ScriptEngine : public automation::Object<ScriptEngine, IHostKitScriptEngine> {
  public:
    ScriptEngine();

    STDMETHODIMP get_ReportErrors(VARIANT_BOOL* result) override;
    STDMETHODIMP put_ReportErrors(VARIANT_BOOL value) override;
    STDMETHODIMP get_ErrorSink(IDispatch** result) override;
    STDMETHODIMP put_ErrorSink(IDispatch* value) override;
    STDMETHODIMP putref_ErrorSink(IDispatch* value) override;
    STDMETHODIMP Evaluate(BSTR expression, BSTR module_name, VARIANT* result) override;
    STDMETHODIMP AddModule(BSTR module_name, BSTR code, IDispatch* object,
                           VARIANT_BOOL add_members) override;
    STDMETHODIMP CodeObject(BSTR module_name, IDispatch** result) override;

    ScriptSite& site() noexcept { return *site_; }
    // Tells of an error the way that was chosen: once per error.
    void report(const ScriptErrorRecord& error);

  private:
    const ScriptModule& known_module(BSTR name) const;
    // Answers the number of the module.
    DWORD add_item(ScriptModule module, bool add_members);
    // Throw, after reporting it, what is wrong with code that is not to be run.
    void check_whole(std::wstring_view item, std::wstring_view code);
    void check_allowed(std::wstring_view item, std::wstring_view code);
    [[noreturn]] void refuse(std::wstring_view item, std::wstring_view code, std::size_t position,
                             HRESULT error, const wchar_t* problem);
    // Gives the module the host's message box when the code asks for one.
    void offer_message_box(const std::wstring& item, std::wstring_view code);
    // The code as it is run: its procedures end before they exhaust the stack.
    std::wstring with_stack_guard(const std::wstring& code);
    // Runs code; throws its error after reporting it.
    template <class Call>
    void run_watched(std::wstring_view item, std::wstring_view expression, Call&& call);

    automation::ComPtr<ScriptSite> site_;
    ActiveScript script_;
    automation::ComPtr<IDispatch> error_sink_;
    std::vector<std::wstring> items_with_message_box_;
    bool reports_errors_ = true;
};

}  // namespace hostkit
