// One script of the platform's Active Scripting engine for VBScript.
#pragma once

#include "automation/com_ptr.h"

#include <activscp.h>

namespace hostkit {

// Lives from construction to destruction, which closes it: the engine lets go of its site and of
// every object that the script held. Must not be destroyed while its code is running.
//
// The functions that run code answer the engine's code; what went wrong reaches the site.
class ActiveScript {
  public:
    explicit ActiveScript(IActiveScriptSite* site);
    ~ActiveScript();
    ActiveScript(const ActiveScript&) = delete;
    ActiveScript& operator=(const ActiveScript&) = delete;

    // Every item is a module: it has variables and procedures of its own.
    void add_item(const wchar_t* name, DWORD flags);
    // The cookie names the code in the positions of its errors.
    HRESULT run(const wchar_t* code, const wchar_t* item, DWORD cookie);
    HRESULT evaluate(const wchar_t* expression, const wchar_t* item, DWORD cookie, VARIANT* result);
    // The procedures of an item.
    automation::ComPtr<IDispatch> procedures(const wchar_t* item);

  private:
    automation::ComPtr<IActiveScript> script_;
    automation::ComPtr<IActiveScriptParse> parser_;
};

}  // namespace hostkit
