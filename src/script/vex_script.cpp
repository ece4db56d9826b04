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

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.VexScript", label};
}

constexpr wchar_t global_module[] = L"Global";
constexpr wchar_t script_module[] = L"VexScriptRun";
constexpr wchar_t procedure[] = L"DoVex";
constexpr wchar_t message_title[] = L"ScriptError";
constexpr wchar_t key_unexpected_error[] = L"~006f2 Unerwarteter Fehler";

Bstr text_property(IDispatch* object, const wchar_t* name) {
    return automation::to_text(automation::get_property(object, name));
}

Bstr error_message(IDispatch* error, long line_number) {
    const Bstr description = text_property(error, L"Description");
    const Bstr item = text_property(error, L"Item");
    const Bstr source = text_property(error, L"Source");
    const Bstr number(std::to_wstring(line_number));
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

STDMETHODIMP VexScript::get_EditControl(IDispatch** Result) {
    return trapped(Result, member(L"Public Property Get 'EditControl'"),
                   [&](auto& result) { result = edit_control_; });
}

STDMETHODIMP VexScript::put_EditControl(IDispatch* NewValue) {
    return trapped(member(L"Public Property Let 'EditControl'"), [&] { edit_control_ = NewValue; });
}

STDMETHODIMP VexScript::putref_EditControl(IDispatch* NewValue) {
    return trapped(member(L"Public Property Set 'EditControl'"), [&] { edit_control_ = NewValue; });
}

STDMETHODIMP VexScript::OnScriptError(IDispatch* ScriptError) {
    return trapped(member(L"Public Sub OnScriptError"), [&] {
        const long line_number =
            automation::to_long(automation::get_property(ScriptError, L"LineNr"));
        const Bstr message = error_message(ScriptError, line_number);
        show_message(message.view(), style_ok, message_title);
        mark_failing_line(edit_control_.get(), line_number);
        last_error_text_ = message;
    });
}

STDMETHODIMP VexScript::Execute(BSTR ScrText, IXMLDOMDocument** Result) {
    return trapped(Result, member(L"Public Function 'Execute'"), [&](dom::Document& result) {
        std::wstring script(view_of(ScrText));
        if (script.empty() && edit_control_) script = script_in(edit_control_.get());
        script = trim_blanks(std::wstring_view(script));
        if (!script.empty()) result = run(script);
    });
}

ComPtr<IXMLDOMDocument> VexScript::run(const std::wstring& script) {
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

STDMETHODIMP VexScript::get_WorkSet(IKelosWorkset** Result) {
    return trapped(Result, member(L"Public Property Get 'WorkSet'"),
                   [&](auto& result) { result = workset_; });
}

STDMETHODIMP VexScript::put_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Public Property Let 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP VexScript::putref_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Public Property Set 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP VexScript::get_Document(IKelosDocument** Result) {
    return trapped(Result, member(L"Public Property Get 'Document'"),
                   [&](auto& result) { result = document_; });
}

STDMETHODIMP VexScript::put_Document(IKelosDocument* NewValue) {
    return trapped(member(L"Public Property Let 'Document'"), [&] { document_ = NewValue; });
}

STDMETHODIMP VexScript::putref_Document(IKelosDocument* NewValue) {
    return trapped(member(L"Public Property Set 'Document'"), [&] { document_ = NewValue; });
}

// `Create` is accepted and not read: the default script is stored whenever there is none.
STDMETHODIMP VexScript::GetVexScript(IKelosDocument* Document, VARIANT_BOOL, BSTR* Result) {
    return trapped(Result, member(L"GetVexScript"), [&](Bstr& result) {
        document_ = Document;
        if (IsVexScriptEmptyOrNothing(Document) && ISMappingTable(Document)) {
            const Bstr script(default_mapping_script());
            VARIANT_BOOL stored = VARIANT_FALSE;
            SetVexScript(Document, script.get(), &stored);
        }
        if (const auto attribute = script_attribute(Document)) result = read_script(attribute);
    });
}

STDMETHODIMP VexScript::SetVexScript(IKelosDocument* Document, BSTR Script, VARIANT_BOOL* Result) {
    return trapped(Result, member(L"SetVexScript"), [&](VARIANT_BOOL& result) {
        const auto attribute = script_attribute_created(Document);
        if (!attribute) return;
        write_script(attribute, view_of(Script));
        result = VARIANT_TRUE;
    });
}

}  // namespace tessera
