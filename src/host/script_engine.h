// The host script engine, which is addressed by dispatch id.
#pragma once

#include <memory>

#include "automation/dispatch.h"

namespace tessera {

// One engine of its own; dropped with this object. Every member throws what the engine reports.
class ScriptEngine {
  public:
    // Throws when the thread has too many engines already: a script that runs scripts, or whose
    // expressions do, would exhaust the stack.
    ScriptEngine();

    // Whether the engine shows script errors itself; otherwise its sink gets them, if it has one.
    void set_reports_errors(bool reports);
    // The object whose `OnScriptError` is called with a script error.
    void set_error_sink(IDispatch* sink);
    // Adds a named module. With `add_members` the object's members need no prefix.
    void add_module(const wchar_t* name, std::wstring_view code, IDispatch* object,
                    bool add_members);
    automation::Variant evaluate(std::wstring_view expression, const wchar_t* module_name);
    // Calls a procedure of a module, by name and without arguments.
    automation::Variant run(const wchar_t* module_name, const wchar_t* procedure);

  private:
    struct Leave {
        void operator()(int* engines) const noexcept { --*engines; }
    };

    // The thread's number of engines, this one among them.
    std::unique_ptr<int, Leave> engines_;
    automation::ComPtr<IDispatch> engine_;
};

}  // namespace tessera
