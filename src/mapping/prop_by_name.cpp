#include "mapping/prop_by_name.h"

#include <string>

#include "host/error_boundary.h"
#include "host/script_engine.h"
#include "text/trim.h"

namespace tessera {

using automation::Variant;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.PropByName", label};
}

constexpr wchar_t global_module[] = L"Glob";
constexpr wchar_t procedure_module[] = L"SetProp";
constexpr wchar_t procedure[] = L"SetValue";
constexpr wchar_t error_marker[] = L"<< Error >>";

// The statement comes as it is: what stands behind a line break in it becomes a line of its own.
std::wstring set_value_procedure(std::wstring_view statement) {
    return L"Sub SetValue()\r\nCurrentObject." + std::wstring(statement) + L"\r\nEnd Sub";
}

// An engine in which "CurrentObject" is the member of the given object, silent about errors.
ScriptEngine engine_for(IDispatch* object) {
    ScriptEngine engine;
    engine.set_reports_errors(false);
    engine.add_module(global_module, {}, object, true);
    return engine;
}

}  // namespace

STDMETHODIMP PropByName::get_CurrentObject(IDispatch** Result) {
    return trapped(Result, member(L"Public Property Get 'CurrentObject'"),
                   [&](auto& result) { result = current_object_; });
}

STDMETHODIMP PropByName::put_CurrentObject(IDispatch* NewValue) {
    return trapped(member(L"Public Property Let 'CurrentObject'"),
                   [&] { putref_CurrentObject(NewValue); });
}

STDMETHODIMP PropByName::putref_CurrentObject(IDispatch* NewValue) {
    return trapped(member(L"Public Property Set 'CurrentObject'"),
                   [&] { current_object_ = NewValue; });
}

STDMETHODIMP PropByName::EvalExpression(BSTR Expression, VARIANT* Result) {
    return trapped(Result, member(L"Public Function 'EvalExpression'"), [&](Variant& result) {
        const std::wstring_view expression = trim_blanks(view_of(Expression));
        if (expression.empty() || !current_object_) return;
        result = Variant(error_marker);  // what stays when the rest fails
        result = engine_for(main_interface())
                     .evaluate(L"CurrentObject." + std::wstring(expression), global_module);
    });
}

STDMETHODIMP PropByName::SetValueByExpression(BSTR Expression, VARIANT* Result) {
    return trapped(Result, member(L"Public Function 'SetValueByExpression'"), [&](Variant& result) {
        const std::wstring_view expression = trim_blanks(view_of(Expression));
        if (expression.empty() || !current_object_) return;
        result = Variant(error_marker);  // what stays when the rest fails
        ScriptEngine engine = engine_for(main_interface());
        engine.add_module(procedure_module, set_value_procedure(expression), main_interface(),
                          false);
        result = engine.run(procedure_module, procedure);
    });
}

}  // namespace tessera
