#include "host/script_engine.h"

#include <string>

#include "automation/thread_slot.h"
#include "host/kept_class.h"
#include "host/program_names.h"

namespace tessera {

using automation::ComPtr;
using automation::invoke;
using automation::Variant;

namespace {

// The engine's members. Their names are the host's own; the ids are the contract.
constexpr DISPID id_reports_errors = 4;
constexpr DISPID id_error_sink = 6;
constexpr DISPID id_evaluate = 9;
constexpr DISPID id_add_module = 12;
constexpr DISPID id_code_object = 15;

// Engines live as long as their scripts run: those of a thread are inside each other.
constexpr int max_engines = 32;

struct EngineCount {
    int engines = 0;
};

int* enter() {
    int& engines = automation::ThreadOwn<EngineCount>::get().engines;
    if (engines == max_engines)
        automation::fail(
            automation::error_out_of_stack_space,
            L"Scripts run more than " + std::to_wstring(max_engines) + L" deep inside each other");
    ++engines;
    return &engines;
}

}  // namespace

ScriptEngine::ScriptEngine()
    : engines_(enter()), engine_(KeptClass<program_names::script_engine>::create<IDispatch>()) {}

void ScriptEngine::set_reports_errors(bool reports) {
    const Variant value(reports);
    invoke(engine_.get(), id_reports_errors, DISPATCH_PROPERTYPUT, {value});
}

void ScriptEngine::set_error_sink(IDispatch* sink) {
    const Variant value(sink);
    invoke(engine_.get(), id_error_sink, DISPATCH_PROPERTYPUTREF, {value});
}

void ScriptEngine::add_module(const wchar_t* name, std::wstring_view code, IDispatch* object,
                              bool add_members) {
    const Variant module_name(name);
    const Variant text(code);
    const Variant shown(object);
    const Variant global(add_members);
    invoke(engine_.get(), id_add_module, DISPATCH_METHOD, {module_name, text, shown, global});
}

Variant ScriptEngine::evaluate(std::wstring_view expression, const wchar_t* module_name) {
    const Variant text(expression);
    const Variant name(module_name);
    return invoke(engine_.get(), id_evaluate, DISPATCH_METHOD, {text, name});
}

Variant ScriptEngine::run(const wchar_t* module_name, const wchar_t* procedure) {
    const Variant name(module_name);
    const Variant code = invoke(engine_.get(), id_code_object, DISPATCH_METHOD, {name});
    const auto object = automation::object_as<IDispatch>(code);
    return automation::call_method(object.get(), procedure);
}

}  // namespace tessera
