// The host side of a script: its modules, and what the engine says about errors.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "automation/plain_object.h"
#include "hostkit/services/script_error.h"

#include <activscp.h>

namespace hostkit {

struct ScriptModule {
    std::wstring name;
    automation::ComPtr<IDispatch> object;  // what the name means in scripts; may be nothing
    std::wstring code;                     // kept to quote its lines
};

class ScriptSite : public automation::PlainObject<IActiveScriptSite, IActiveScriptSiteWindow> {
  public:
    // Watches one call into the script. Calls nest: an error belongs to the innermost of them.
    class Watch {
      public:
        // The module, and the expression when the call evaluates one.
        Watch(ScriptSite& site, std::wstring_view item, std::wstring_view expression = {});
        ~Watch();
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

        // The last error that escaped from the script.
        const std::optional<ScriptErrorRecord>& error() const noexcept { return error_; }

      private:
        friend class ScriptSite;
        ScriptSite& site_;
        Watch* const outer_;
        const std::wstring_view item_;
        const std::wstring_view expression_;
        std::optional<ScriptErrorRecord> error_;
    };

    // Errors in an expression carry this cookie, those in a module's code the module's number.
    static constexpr DWORD expression_cookie = 0;

    // Answers the module's number, from 1.
    DWORD add_module(ScriptModule module);
    void remove_last_module() noexcept { modules_.pop_back(); }
    // Null when there is none; names are not case-sensitive, as in the language.
    const ScriptModule* find_module(std::wstring_view name) const noexcept;

    STDMETHODIMP GetLCID(LCID* result) override;
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** object,
                             ITypeInfo** info) override;
    STDMETHODIMP GetDocVersionString(BSTR* result) override;
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override;
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

    STDMETHODIMP GetWindow(HWND* result) override;
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

  private:
    ScriptErrorRecord describe(IActiveScriptError& error) const;

    std::vector<ScriptModule> modules_;
    Watch* watch_ = nullptr;
};

}  // namespace hostkit
