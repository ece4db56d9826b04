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

constexpr MemberName eval_expression = member(L"Public Function 'EvalExpression'");
constexpr MemberName set_value_by_expression = member(L"Public Function 'SetValueByExpression'");

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

Variant PropByName::evaluate(std::wstring_view expression) noexcept {
    return guarded_result<Variant>(eval_expression, [&](Variant& result) {
        expression = trim_blanks(expression);
        if (expression.empty() || !current_object_) return;
        result = Variant(error_marker);  // what stays when the rest fails
        result = engine_for(main_interface())
                     .evaluate(L"CurrentObject." + std::wstring(expression), global_module);
    });
}

Variant PropByName::set_value(std::wstring_view expression) noexcept {
    return guarded_result<Variant>(set_value_by_expression, [&](Variant& result) {
        expression = trim_blanks(expression);
        if (expression.empty() || !current_object_) return;
        result = Variant(error_marker);  // what stays when the rest fails
        ScriptEngine engine = engine_for(main_interface());
        engine.add_module(procedure_module, set_value_procedure(expression), main_interface(),
                          false);
        result = engine.run(procedure_module, procedure);
    });
}

STDMETHODIMP PropByName::get_CurrentObject(IDispatch** Result) {
    return give(Result, current_object_, member(L"Public Property Get 'CurrentObject'"));
}

STDMETHODIMP PropByName::put_CurrentObject(IDispatch* NewValue) {
    return keep(current_object_, NewValue);
}

STDMETHODIMP PropByName::putref_CurrentObject(IDispatch* NewValue) {
    return keep(current_object_, NewValue);
}

STDMETHODIMP PropByName::EvalExpression(BSTR Expression, VARIANT* Result) {
    return answer(Result, eval_expression, [&] { return evaluate(view_of(Expression)); });
}

STDMETHODIMP PropByName::SetValueByExpression(BSTR Expression, VARIANT* Result) {
    return answer(Result, set_value_by_expression, [&] { return set_value(view_of(Expression)); });
}

}  // namespace tessera
