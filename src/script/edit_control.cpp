#include "script/edit_control.h"

#include "automation/conversion.h"
#include "host/service.h"
#include "script/line_marking.h"
#include "script/stored_script.h"

namespace tessera {

using automation::call;
using automation::ComPtr;
using automation::get;
using automation::get_property;
using automation::Variant;

namespace {

std::wstring text_property(IDispatch* object) {
    return automation::to_text(get_property(object, L"Text")).str();
}

ComPtr<IDispatch> inner_editor(IDispatch* control) {
    return automation::object_as<IDispatch>(get_property(control, L"Object"));
}

void focus(IDispatch* control) {
    call(host_service(), &IKelosService::FocusControl, control);
}

void trace_number(const wchar_t* name, long number) {
    trace(std::wstring(name) + std::to_wstring(number));
}

// Selects the line that follows `line_feeds` line feeds.
void MarkScriptLine(IDispatch* text_box, std::int16_t line_feeds) noexcept {
    guarded(vex_script_member(L"Private Sub MarkScriptLine"), [&] {
        const std::wstring text = text_property(text_box);
        const auto selection = line_selection(automation::as_u16(text), line_feeds);
        if (!selection) return;
        automation::put_property(text_box, L"SelStart", Variant(selection->start));
        automation::put_property(text_box, L"SelLength", Variant(selection->length));
        focus(text_box);
    });
}

void mark_editor_line(IDispatch* control, long line_number) {
    const auto editor = inner_editor(control).as<IKelosScriptEditor>();
    trace_number(L"LineNr: ", line_number);
    const long position = get(editor, &IKelosScriptEditor::LinePosition, line_number);
    trace_number(L"Pos: ", position);
    if (position < 0) return;  // the editor has no such line
    call(editor, &IKelosScriptEditor::put_SelStart, position);
    trace_number(L"RtfScript.SelStart: ", get(editor, &IKelosScriptEditor::get_SelStart));
    const long length = get(editor, &IKelosScriptEditor::LineLength, position);
    call(editor, &IKelosScriptEditor::put_SelLength, length);
    trace_number(L"RtfScript.SelLength: ", get(editor, &IKelosScriptEditor::get_SelLength));
    focus(editor.get());
}

}  // namespace

bool is_text_box(IDispatch* control) noexcept {
    return static_cast<bool>(ComPtr<IDispatch>(control).try_as<IKelosTextBox>());
}

std::wstring script_in(IDispatch* control) {
    if (is_text_box(control)) return text_property(control);
    try {
        return text_property(inner_editor(control).get());
    } catch (...) {
        return {};
    }
}

// The two kinds count their lines differently, so that they are told different numbers.
void mark_failing_line(IDispatch* control, const Variant& line_number) {
    const long line = automation::to_long(line_number);
    if (is_text_box(control))
        MarkScriptLine(control, automation::to_short(Variant(line - 1)));
    else
        mark_editor_line(control, line);
}

}  // namespace tessera
