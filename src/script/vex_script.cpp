#include "script/vex_script.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "automation/dom.h"
#include "host/error_boundary.h"
#include "host/host_helpers.h"
#include "host/script_engine.h"
#include "host/service.h"
#include "mapping/sc_global.h"
#include "script/edit_control.h"
#include "script/script_text.h"
#include "script/stored_script.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using automation::view_of;

namespace {

constexpr MemberName get_edit_control = vex_script_member(L"Public Property Get 'EditControl'");
constexpr MemberName script_error = vex_script_member(L"Public Sub OnScriptError");
constexpr MemberName execute_script = vex_script_member(L"Public Function 'Execute'");
constexpr MemberName get_workset = vex_script_member(L"Public Property Get 'WorkSet'");
constexpr MemberName get_document = vex_script_member(L"Public Property Get 'Document'");
constexpr MemberName get_vex_script = vex_script_member(L"GetVexScript");
constexpr MemberName set_vex_script_text = vex_script_member(L"SetVexScript");

constexpr wchar_t global_module[] = L"Global";
constexpr wchar_t script_module[] = L"VexScriptRun";
constexpr wchar_t procedure[] = L"DoVex";
constexpr wchar_t message_title[] = L"ScriptError";
constexpr wchar_t key_unexpected_error[] = L"~006f2 Unerwarteter Fehler";

Bstr text_property(IDispatch* object, const wchar_t* name) {
    return automation::to_text(automation::get_property(object, name));
}

// Answers the line number, too, as the error gave it.
Bstr error_message(IDispatch* error, Variant& line_number) {
    const Bstr description = text_property(error, L"Description");
    const Bstr item = text_property(error, L"Item");
    const Bstr source = text_property(error, L"Source");
    line_number = automation::get_property(error, L"LineNr");
    const Bstr number = automation::to_text(line_number);
    const Bstr line = text_property(error, L"LineText");
    return Bstr(script_error_message(
        {description.u16(), item.u16(), source.u16(), number.u16(), line.u16()}));
}

// Compiles and runs the script. False when that failed; the engine has told who it was told to.
bool run_script(ScriptEngine& engine, std::wstring_view script, IDispatch* object) noexcept {
    try {
        engine.add_module(script_module, script, object, false);
        engine.run(script_module, procedure);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

// The user sees the message before the line number is taken as a number.
void VexScript::on_script_error(IDispatch* error) noexcept {
    guarded(script_error, [&] {
        const ComPtr<IDispatch> control = edit_control_;  // the host may set another one meanwhile
        Variant line_number;
        const Bstr message = error_message(error, line_number);
        show_message(message.view(), style_ok, message_title);
        mark_failing_line(control.get(), line_number);
        last_error_text_ = message;
    });
}

dom::Document VexScript::execute(std::wstring_view text) noexcept {
    return guarded_result<dom::Document>(execute_script, [&](dom::Document& result) {
        std::wstring script(text);
        if (const ComPtr<IDispatch> control = edit_control_; script.empty() && control)
            script = script_in(control.get());
        script = trim_blanks(std::wstring_view(script));
        if (!script.empty()) result = run(script);
    });
}

dom::Document VexScript::run(const std::wstring& script) {
    last_error_text_ = Bstr();
    const Bstr unexpected_error = translate(key_unexpected_error);
    ScriptEngine engine;
    engine.set_reports_errors(!edit_control_);
    if (edit_control_) engine.set_error_sink(main_interface());

    const auto global = automation::make<SCGlobal>();
    global->set_workset(workset_);
    global->set_document(document_);
    engine.add_module(global_module, {}, global->main_interface(), true);

    if (!run_script(engine, script, main_interface())) {
        if (last_error_text_.empty())
            show_message(unexpected_error.view(), style_ok, message_title);
        return {};
    }
    global->AddOptionsToXml();
    return get(global->contents_root().node(), &IXMLDOMNode::get_ownerDocument);
}

Bstr VexScript::vex_script(IKelosDocument* document) noexcept {
    return guarded_result<Bstr>(get_vex_script, [&](Bstr& result) {
        document_ = document;
        // First: when it cannot be looked up, nothing is stored.
        auto attribute = script_attribute(document);
        if (IsVexScriptEmptyOrNothing(document) && ISMappingTable(document)) {
            set_vex_script(document, automation::as_wide(default_mapping_script()));
            attribute = script_attribute(document);
        }
        if (attribute) result = read_script(attribute);
    });
}

bool VexScript::set_vex_script(IKelosDocument* document, std::wstring_view script) noexcept {
    return guarded_result<bool>(set_vex_script_text, [&](bool& stored) {
        const auto attribute = script_attribute_created(document);
        if (!attribute) return;
        write_script(attribute, script);
        stored = true;
    });
}

// ---------------------------------------------------------------------------------------------
// Automation
// ---------------------------------------------------------------------------------------------

STDMETHODIMP VexScript::get_EditControl(IDispatch** Result) {
    return give(Result, edit_control_, get_edit_control);
}

STDMETHODIMP VexScript::put_EditControl(IDispatch* NewValue) {
    return keep(edit_control_, NewValue);
}

STDMETHODIMP VexScript::putref_EditControl(IDispatch* NewValue) {
    return keep(edit_control_, NewValue);
}

STDMETHODIMP VexScript::OnScriptError(IDispatch* ScriptError) {
    on_script_error(ScriptError);
    return S_OK;
}

STDMETHODIMP VexScript::Execute(BSTR ScrText, IXMLDOMDocument** Result) {
    return answer(Result, execute_script, [&] { return execute(view_of(ScrText)); });
}

STDMETHODIMP VexScript::get_WorkSet(IKelosWorkset** Result) {
    return give(Result, workset_, get_workset);
}

STDMETHODIMP VexScript::put_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP VexScript::putref_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP VexScript::get_Document(IKelosDocument** Result) {
    return give(Result, document_, get_document);
}

STDMETHODIMP VexScript::put_Document(IKelosDocument* NewValue) {
    return keep(document_, NewValue);
}

STDMETHODIMP VexScript::putref_Document(IKelosDocument* NewValue) {
    return keep(document_, NewValue);
}

// `Create` is accepted and not read: the default script is stored whenever there is none.
STDMETHODIMP VexScript::GetVexScript(IKelosDocument* Document, VARIANT_BOOL, BSTR* Result) {
    return answer(Result, get_vex_script, [&] { return vex_script(Document); });
}

STDMETHODIMP VexScript::SetVexScript(IKelosDocument* Document, BSTR Script, VARIANT_BOOL* Result) {
    return answer(Result, set_vex_script_text,
                  [&] { return set_vex_script(Document, view_of(Script)); });
}

}  // namespace tessera
