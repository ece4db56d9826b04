// The code object of a module.
#pragma once

#include "hostkit/script/script_engine.h"

namespace hostkit {

// Passes calls on to the module's procedures and sees to it that their errors are reported as
// those of the engine's own members. Keeps the engine alive.
automation::ComPtr<IDispatch> make_code_object(automation::ComPtr<ScriptEngine> engine,
                                               std::wstring_view module_name,
                                               automation::ComPtr<IDispatch> procedures);

}  // namespace hostkit
