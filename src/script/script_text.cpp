#include "script/script_text.h"

namespace tessera {
namespace {

constexpr std::u16string_view line_end = u"\r\n";
constexpr std::u16string_view empty_script = u"Sub DoVex()\r\nEnd Sub";

std::u16string build_default_script() {
    // The length is part of the text.
    const std::u16string rule = u"'" + std::u16string(77, u'*');
    std::u16string script;
    const auto line = [&](std::u16string_view text) { script.append(text).append(line_end); };
    line(u"Sub DoVex()");
    line(rule);
    // Without a line end: stored scripts have the rule on the same line.
    script += u"'Automatically generated Vex-Script for IMappingTableEx";
    line(rule);
    line(u"If Not MappingTableExcel Is Nothing Then");
    line(u"    Set MT = MappingTableExcel");
    line(u"    For I = 1 To MT.GetCount");
    line(u"       if Not MT.SourceObject(I) Is Nothing Then ");
    line(
        u"          Content MT.Target(I), MT.SourceObject(I), MT.SourceProperty(I), "
        u"MT.SourceIndex(I), MT.UNIT(I),MT.IO(I)");
    line(u"       ElseIf Not MT.IO(I)=\"I\" Then");
    line(u"          ContentFix MT.Target(I), MT.Value(I)");
    line(u"       End If");
    line(u"    Next 'I");
    line(u"End If");
    line(rule);
    script += u"End Sub";
    return script;
}

}  // namespace

const std::u16string& default_mapping_script() {
    static const std::u16string script = build_default_script();
    return script;
}

bool is_empty_script(std::u16string_view script) noexcept {
    return script.empty() || script == empty_script;
}

std::u16string script_error_message(const ScriptErrorText& error) {
    std::u16string message = u"Error: ";
    message.append(error.description).append(u"\nItem: ").append(error.item);
    message.append(u"\nSource: ").append(error.source);
    message.append(u"\nLine ").append(error.line_number).append(u": ").append(error.line_text);
    return message;
}

}  // namespace tessera
