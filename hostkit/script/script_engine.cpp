#include "hostkit/script/script_engine.h"

#include <algorithm>

#include "automation/dispatch.h"
#include "automation/text.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"
#include "hostkit/script/code_object.h"
#include "hostkit/script/message_box.h"
#include "hostkit/script/script_error_text.h"
#include "hostkit/script/stack_guard.h"
#include "hostkit/services/service_state.h"

namespace hostkit {

using automation::Bstr;
using automation::ComPtr;
using automation::Variant;
using automation::view_of;

namespace {

constexpr wchar_t source[] = L"KelosScript.Engine";
constexpr wchar_t message_box_name[] = L"KelosMessageBox";
// A variable hides the language's function of its name; calling it calls its object's default
// member.
constexpr wchar_t message_box_code[] = L"Dim MsgBox\nSet MsgBox = KelosMessageBox";

// Also when it only stands in a comment or a text: the variable does no harm.
bool asks_for_message_box(std::wstring_view code) {
    constexpr std::wstring_view name = L"MsgBox";
    constexpr std::wstring_view first = L"mM";
    for (std::size_t i = code.find_first_of(first); i != code.npos;
         i = code.find_first_of(first, i + 1))
        if (automation::equal_ignoring_case(code.substr(i, name.size()), name)) return true;
    return false;
}

// The engine wants terminated texts; a null BSTR is the empty one.
const wchar_t* terminated(BSTR text) noexcept {
    return text ? text : L"";
}

// The platform's engine counts line feeds only: a lone carriage return gets one.
std::wstring with_line_feeds(std::wstring_view code) {
    std::wstring result;
    for (std::size_t i = 0; i < code.size(); ++i) {
        result += code[i];
        if (code[i] == L'\r' && code.substr(i + 1, 1) != L"\n") result += L'\n';
    }
    return result;
}

DWORD item_flags(IDispatch* object, bool add_members) noexcept {
    if (!object) return SCRIPTITEM_CODEONLY;
    return SCRIPTITEM_ISVISIBLE | (add_members ? SCRIPTITEM_GLOBALMEMBERS : 0);
}

// The sink is the caller's for the whole call: what it is told may have the engine drop it.
void tell_sink(const ComPtr<IDispatch>& sink, const ScriptErrorRecord& error) noexcept {
    try {
        const Variant argument(make_script_error(error).get());
        automation::call_method(sink.get(), L"OnScriptError", {argument});
    } catch (...) {
        // A sink that fails must not hide the error that it was to be told of.
    }
}

}  // namespace

ScriptEngine::ScriptEngine() : site_(automation::make_plain<ScriptSite>()), script_(site_.get()) {}

template <class Call>
void ScriptEngine::run_watched(std::wstring_view item, std::wstring_view expression, Call&& call) {
    const ScriptSite::Watch watch(*site_, item, expression);
    const HRESULT code = call();
    if (watch.error()) report(*watch.error());
    if (SUCCEEDED(code)) return;
    if (!watch.error()) automation::fail(code);
    throw automation::Error(watch.error()->code, Bstr(watch.error()->description),
                            Bstr(watch.error()->source));
}

void ScriptEngine::report(const ScriptErrorRecord& error) {
    if (reports_errors_)
        service_state().add_script_error(error);
    else if (error_sink_)
        tell_sink(ComPtr<IDispatch>(error_sink_), error);
}

const ScriptModule& ScriptEngine::known_module(BSTR name) const {
    const ScriptModule* const module = site_->find_module(view_of(name));
    if (!module)
        automation::fail(E_INVALIDARG,
                         L"There is no module '" + std::wstring(view_of(name)) + L"'");
    return *module;
}

DWORD ScriptEngine::add_item(ScriptModule module, bool add_members) {
    const std::wstring name = module.name;
    const DWORD flags = item_flags(module.object.get(), add_members);
    // The engine asks for the object while the item is being added.
    const DWORD number = site_->add_module(std::move(module));
    try {
        script_.add_item(name.c_str(), flags);
    } catch (...) {
        site_->remove_last_module();
        throw;
    }
    return number;
}

void ScriptEngine::offer_message_box(const std::wstring& item, std::wstring_view code) {
    if (!asks_for_message_box(code)) return;
    auto& offered = items_with_message_box_;
    if (std::ranges::find(offered, item) != offered.end()) return;
    if (offered.empty()) add_item({message_box_name, make_message_box(), {}}, false);
    offered.push_back(item);
    automation::check(script_.run(message_box_code, item.c_str(), ScriptSite::expression_cookie));
}

std::wstring ScriptEngine::with_stack_guard(const std::wstring& code) {
    std::wstring result = guarded(code);
    if (result.size() == code.size()) return result;
    if (!site_->find_module(stack_guard_name))
        add_item({stack_guard_name, make_stack_guard(), {}}, false);
    return result;
}

// The platform's engine takes a null character for the end and would pass over the rest.
void ScriptEngine::check_whole(std::wstring_view item, std::wstring_view code) {
    const std::size_t null = code.find(L'\0');
    if (null != code.npos) refuse(item, code, null, E_INVALIDARG, L"There is a null character");
}

void ScriptEngine::check_allowed(std::wstring_view item, std::wstring_view code) {
    const ServiceState& service = service_state();
    if (!service.allows_scripts && code != service.allowed_script)
        refuse(item, code, 0, E_ACCESSDENIED, L"Scripts and expressions are not allowed to run");
}

void ScriptEngine::refuse(std::wstring_view item, std::wstring_view code, std::size_t position,
                          HRESULT error, const wchar_t* problem) {
    const auto line = std::ranges::count(code.substr(0, position), L'\n') + 1;
    const SourceLine found = source_line(code, static_cast<long>(line));
    const ScriptErrorRecord record{error,  problem,      std::wstring(item),
                                   source, found.number, std::wstring(found.text)};
    report(record);
    throw automation::Error(record.code, Bstr(record.description), Bstr(record.source));
}

STDMETHODIMP ScriptEngine::get_ReportErrors(VARIANT_BOOL* result) {
    return answer(result, [&] { return as_variant_bool(reports_errors_); });
}

STDMETHODIMP ScriptEngine::put_ReportErrors(VARIANT_BOOL value) {
    return run(Given(value), [&] { reports_errors_ = value != VARIANT_FALSE; });
}

STDMETHODIMP ScriptEngine::get_ErrorSink(IDispatch** result) {
    return answer(result, [&] { return error_sink_; });
}

STDMETHODIMP ScriptEngine::put_ErrorSink(IDispatch* value) {
    return run(Given(value), [&] { error_sink_ = value; });
}

STDMETHODIMP ScriptEngine::putref_ErrorSink(IDispatch* value) {
    return put_ErrorSink(value);
}

STDMETHODIMP ScriptEngine::Evaluate(BSTR expression, BSTR module_name, VARIANT* result) {
    return answer(result, Given(expression, module_name), [&] {
        const ComPtr<ScriptEngine> keep(this);
        const std::wstring item = known_module(module_name).name;
        check_whole(item, view_of(expression));
        check_allowed(item, view_of(expression));
        offer_message_box(item, view_of(expression));
        Variant value;
        run_watched(item, view_of(expression), [&] {
            return script_.evaluate(terminated(expression), item.c_str(),
                                    ScriptSite::expression_cookie, value.put());
        });
        return value;
    });
}

STDMETHODIMP ScriptEngine::AddModule(BSTR module_name, BSTR code, IDispatch* object,
                                     VARIANT_BOOL add_members) {
    return run(Given(module_name, object, add_members), [&] {
        const ComPtr<ScriptEngine> keep(this);
        const std::wstring item(view_of(module_name));
        if (item.empty()) automation::fail(E_INVALIDARG, L"A module needs a name");
        if (site_->find_module(item))
            automation::fail(E_INVALIDARG, L"There is a module '" + item + L"' already");
        const std::wstring text = with_line_feeds(view_of(code));
        check_whole(item, text);
        if (!text.empty()) check_allowed(item, view_of(code));
        const DWORD cookie = add_item({item, object, text}, add_members != VARIANT_FALSE);
        if (text.empty()) return;
        offer_message_box(item, text);
        const std::wstring run = with_stack_guard(text);
        run_watched(item, {}, [&] { return script_.run(run.c_str(), item.c_str(), cookie); });
    });
}

STDMETHODIMP ScriptEngine::CodeObject(BSTR module_name, IDispatch** result) {
    return answer(result, Given(module_name), [&] {
        const std::wstring& item = known_module(module_name).name;
        return make_code_object(this, item, script_.procedures(item.c_str()));
    });
}

ComPtr<IUnknown> create_script_engine() {
    return automation::make<ScriptEngine>()->main_interface();
}

}  // namespace hostkit
