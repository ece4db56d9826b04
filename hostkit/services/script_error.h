// A script error as the engine reports it.
#pragma once

#include <string>

#include "automation/com_ptr.h"
#include "kelos.h"

namespace hostkit {

struct ScriptErrorRecord {
    HRESULT code = E_FAIL;
    std::wstring description;
    std::wstring item;    // the module's name
    std::wstring source;  // who raised it
    long line = 0;        // from 1, in the module's code
    std::wstring line_text;
};

automation::ComPtr<IKelosScriptError> make_script_error(const ScriptErrorRecord& record);

}  // namespace hostkit
