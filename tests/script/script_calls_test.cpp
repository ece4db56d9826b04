// Through the DLL: what the script runner calls on its host, in order.

#include "script/runner_fixture.h"

using namespace test;

namespace {

// A script that runs into an error while an edit control is set.
const std::wstring told =
    LR"(new Kelos.Service
Service.TranslateText "~006f2 Unerwarteter Fehler"
new KelosScript.Engine
ScriptEngine.put_ReportErrors False
ScriptEngine.put_ErrorSink ITesseraVexScript
Service.Trace "Set mDocument = vNewValue"
DocumentObject.get_Objects
ObjectList.get_Count
ScriptEngine.AddModule "Global", ITesseraSCGlobal, True
ScriptEngine.AddModule "VexScriptRun", ITesseraVexScript, False
ScriptEngine.CodeObject "VexScriptRun"
CodeObject.GetIDsOfNames "DoVex"
CodeObject.Invoke ()
ScriptError.get_Description
ScriptError.get_Item
ScriptError.get_Source
ScriptError.get_LineNr
ScriptError.get_LineText
Service.ShowMessage "Error: Division by zero\nItem: VexScriptRun\nSource: Microsoft VBScript runtime error\nLine 3: x = 1 / 0", 0, "ScriptError"
)";
// Who asks for a delegate asks whether the user may write there.
const std::wstring delegate =
    LR"(DocumentObject.get_Delegate
PlainObject.get_WorkSet "Anlage"
WorksetObject.get_CurrentUser
PlainObject.GetRights "Anlage", IKelosUser
UserObject.get_Login
)";

}  // namespace

TEST_CASE_FIXTURE(RunnerFixture, "a script that fails") {
    use(document(L"Leer"));
    const wchar_t script[] = L"Sub DoVex()\r\na = 1\r\nx = 1 / 0\r\nEnd Sub";
    // The messages that follow, and who reports the failing member of the control.
    const auto check_failing = [&](const wchar_t* failing, long messages, const wchar_t* reports) {
        fail(failing);
        call(service(), &IHostKitService::Clear);
        CHECK_FALSE(execute(L""));
        CHECK(message_count() == messages);
        CHECK(take_errors() == reports);
    };
    SUBCASE("without a control") {
        log_calls();
        CHECK_FALSE(execute(script));
        CHECK(calls({L"put_", L"ScriptError"}) ==
              LR"(
ScriptEngine.put_ReportErrors True
Service.ShowMessage "Unerwarteter Fehler", 0, "ScriptError"
)");
    }
    SUBCASE("in a text box") {
        const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
        call(box, &IKelosTextBox::put_Text, Bstr(script).get());
        use_text_box(box);
        log_calls();
        CHECK_FALSE(execute(L""));
        CHECK(calls() == L"\nTextBox.get_Text\n" + told +
                             LR"(TextBox.get_Text
TextBox.put_SelStart 20
TextBox.put_SelLength 11
Service.FocusControl IHostKitTextBox
)");
        check_failing(L"TextBox.get_Text", 0, L"Tessera.VexScript|Public Function 'Execute'\n");
        check_failing(L"TextBox.put_SelLength", 1,
                      L"Tessera.VexScript|Private Sub MarkScriptLine\n");
    }
    SUBCASE("in the rich editor") {
        const auto control = create<IHostKitScriptControl>(L"Kelos.ScriptControl");
        const auto editor = get(control, &IHostKitScriptControl::get_Object);
        call(editor, &IKelosScriptEditor::put_Text, Bstr(script).get());
        use_text_box(control);
        log_calls();
        CHECK_FALSE(execute(L""));
        CHECK(calls() == L"\nScriptControl.get_Object\nScriptEditor.get_Text\n" + told +
                             LR"(ScriptControl.get_Object
Service.Trace "LineNr: 3"
ScriptEditor.LinePosition 3
Service.Trace "Pos: 18"
ScriptEditor.put_SelStart 18
ScriptEditor.get_SelStart
Service.Trace "RtfScript.SelStart: 18"
ScriptEditor.LineLength 18
ScriptEditor.put_SelLength 9
ScriptEditor.get_SelLength
Service.Trace "RtfScript.SelLength: 9"
Service.FocusControl IKelosScriptEditor
)");
        check_failing(L"ScriptEditor.get_Text", 0, L"");
        // The message is not kept, so that another follows.
        check_failing(L"ScriptEditor.put_SelStart", 2,
                      L"Tessera.VexScript|Public Sub OnScriptError\n");
    }
}

TEST_CASE_FIXTURE(RunnerFixture, "a script that is looked for and stored") {
    const auto empty = document(L"Leer");
    log_calls();
    SUBCASE("nothing without a table") {
        CHECK(stored(empty) == L"");
        CHECK(calls() ==
              LR"(
DocumentObject.get_Delegate
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Objects
ObjectList.get_Count
)");
    }
    SUBCASE("stored") {
        CHECK(store(empty, L"new"));
        CHECK(calls() ==
              LR"(
DocumentObject.get_Delegate
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Attributes "Leer"
AttributeList.Add "Vex"
AttributeObject.put_Value "Vex", 1, "new"
AttributeObject.get_Marker "Vex"
AttributeObject.put_Marker "Vex", "~"
)");
        CHECK(stored(empty) == L"new");
        CHECK_FALSE(store({}, L"x"));
        CHECK(take_errors() == L"Tessera.VexScript|SetVexScript\n");
    }
}

TEST_CASE_FIXTURE(RunnerFixture, "a script that a delegate keeps") {
    const auto delegating = document(L"Delegiert");
    const auto login = [&](const wchar_t* name) {
        call(workset.as<IHostKitWorkset>(), &IHostKitWorkset::put_CurrentLogin, Bstr(name).get());
    };
    SUBCASE("neither for who may not write there") {
        login(L"ben");
        log_calls();
        CHECK(stored(delegating) == L"");
        CHECK(calls() == L"\n" + delegate +
                             LR"(DocumentObject.get_Attributes "Delegiert"
AttributeList.get_Item "Vex"
DocumentObject.get_Objects
ObjectList.get_Count
ObjectList.get_Item 1
MappingObject.get_XObj "Tabelle"
)" + delegate + delegate);
        CHECK_FALSE(store(delegating, L"x"));
        CHECK(calls() == L"\n" + delegate);
    }
}
