#include "script/script_text.h"
#include "support/content_text.h"

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using test::create;
using test::data;
using test::ProjectFixture;

namespace {

constexpr wchar_t unexpected_error[] = L"ScriptError|0|Unerwarteter Fehler";

class RunnerFixture : public ProjectFixture {
  public:
    ComPtr<ITesseraVexScript> runner = create<ITesseraVexScript>(L"Tessera.VexScript");

    void use(const ComPtr<IKelosDocument>& chosen) {
        call(runner, &ITesseraVexScript::putref_WorkSet, workset.get());
        call(runner, &ITesseraVexScript::putref_Document, chosen.get());
    }
    dom::Document execute(const wchar_t* script) {
        return get(runner, &ITesseraVexScript::Execute, Bstr(script).get());
    }
    std::wstring stored(const ComPtr<IKelosDocument>& chosen) {
        return get(runner, &ITesseraVexScript::GetVexScript, chosen.get(),
                   VARIANT_BOOL{VARIANT_FALSE})
            .str();
    }
    bool store(const ComPtr<IKelosDocument>& chosen, const wchar_t* script) {
        return get(runner, &ITesseraVexScript::SetVexScript, chosen.get(), Bstr(script).get()) !=
               VARIANT_FALSE;
    }
    ComPtr<IKelosAttribute> script_of(const ComPtr<IKelosObject>& keeper) {
        const auto attributes = get(keeper, &IKelosObject::get_Attributes);
        return get(attributes, &IKelosAttributes::get_Item, static_cast<VARIANT>(Variant(L"Vex")));
    }
    std::wstring marker_of(const ComPtr<IKelosAttribute>& attribute) {
        return get(attribute, &IKelosAttribute::get_Marker).str();
    }
    void use_text_box(const ComPtr<IDispatch>& control) {
        call(runner, &ITesseraVexScript::putref_EditControl, control.get());
    }
    std::wstring default_script() {
        return std::wstring(automation::as_wide(tessera::default_mapping_script()));
    }
};

// The selected text of either kind of editor.
template <class Editor>
std::wstring selected(const ComPtr<Editor>& editor) {
    const std::wstring text = get(editor, &Editor::get_Text).str();
    const long start = get(editor, &Editor::get_SelStart);
    const long length = get(editor, &Editor::get_SelLength);
    return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

}  // namespace

TEST_CASE_FIXTURE(RunnerFixture, "the generated script maps the table's rows, options last") {
    const auto sheet = document(L"Datenblatt");
    use(sheet);
    const auto result = execute(stored(sheet).c_str());
    REQUIRE(result);
    std::wstring rows;
    for (const auto& node : test::contents_of(result))
        rows += data(node, L"Document", L"Pointer") + L" " + data(node, L"Property", L"GetName") +
                L" " + data(node, L"Value", L"IOMode") + L"\n";
    CHECK(rows == L"Blatt!A1 Name IO\nBlatt!A2 Description IO\nBlatt!A3 Value I\nBlatt!B1  O\n");
    const auto root = get(result, &IXMLDOMDocument::get_documentElement).as<IXMLDOMNode>();
    const auto last = get(root, &IXMLDOMNode::get_lastChild);
    CHECK(get(last, &IXMLDOMNode::get_nodeName).view() == L"Options");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "every run has a document of its own, with nothing of the run before") {
    use(document(L"Leer"));
    const wchar_t* const script = L"Sub DoVex()\r\nContentFix \"S!A1\", 1\r\nEnd Sub";
    const auto first = execute(script);
    const auto second = execute(script);
    CHECK(test::contents_of(first).size() == 1);
    CHECK(test::contents_of(second).size() == 1);
    CHECK(get(first, &IXMLDOMDocument::get_xml).view() ==
          get(second, &IXMLDOMDocument::get_xml).view());
}

TEST_CASE_FIXTURE(RunnerFixture, "an empty script is not run") {
    CHECK_FALSE(execute(L""));
    CHECK_FALSE(execute(L"   "));
    CHECK(message_count() == 0);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture, "scripts see the members of the global object without prefix") {
    use(document(L"Datenblatt"));
    const auto result = execute(
        L"Sub DoVex()\r\n"
        L"ContentFix \"S!\" & ExcelABC(28) & \"1\", Document.SystemUID & ReportObject.SystemUID & "
        L"Project.SystemUID & MappingTableExcel.GetCount\r\n"
        L"Content \"S!A2\", ReportObject, \"Name\", , \"\", \"\"\r\n"
        L"Content \"S!A3\", ReportObject, \"Name\", \"\", \"\", \"\"\r\n"
        L"End Sub");
    REQUIRE(result);
    const auto contents = test::contents_of(result);
    REQUIRE(contents.size() == 2);
    CHECK(data(contents[0], L"Document", L"Pointer") == L"S!AB1");
    CHECK(data(contents[0], L"Value", L"KelosValue") == L"D1P1W15");
    // An argument that was left out has no text: an error of its row only.
    CHECK(error(1) == L"Tessera.SCGlobal|Public Sub 'Content'");
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(RunnerFixture, "a failing script without an edit control ends in one message") {
    use(document(L"Leer"));
    const wchar_t* const scripts[] = {
        L"Sub DoVex(\r\nEnd Sub",
        L"Sub DoVex()\r\nContentFix \"S!A1\", 1\r\nx = 1 / 0\r\nEnd Sub",
        L"Sub Other()\r\nEnd Sub",
        L"Sub DoVex()\r\nNoSuchProcedure 1\r\nEnd Sub",
        L"Sub DoVex()\r\nx = Document.NoSuchMember\r\nEnd Sub",
    };
    for (const wchar_t* script : scripts) {
        call(service(), &IHostKitService::Clear);
        CHECK_FALSE(execute(script));
        CHECK(message_count() == 1);
        CHECK(message(1) == unexpected_error);
        CHECK(error_count() == 0);
    }
}

TEST_CASE_FIXTURE(RunnerFixture, "without a document or with a foreign one the script still runs") {
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture, "an engine that cannot be used is reported") {
    call(service(), &IHostKitService::FailService, static_cast<long>(E_FAIL));
    CHECK_FALSE(execute(L"Sub DoVex()\r\nEnd Sub"));  // not even the report arrives
    call(service(), &IHostKitService::FailService, 0L);
    CHECK(error_count() == 0);
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
}

TEST_CASE_FIXTURE(RunnerFixture, "an error in a plain text box's script marks its line") {
    use(document(L"Leer"));
    const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
    use_text_box(box);
    struct Row {
        const wchar_t* script;
        const wchar_t* line;
        int number;
    };
    constexpr Row rows[] = {
        {L"Sub DoVex(\r\nEnd Sub", L"Sub DoVex(\r\n", 1},
        {L"Sub DoVex()\r\na = 1\r\nx = 1 / 0\r\nEnd Sub", L"x = 1 / 0\r\n", 3},
        {L"Sub DoVex()\r\nEnd Sub\r\nIf Then", L"If Then", 3},
        {L"Sub DoVex()\r\nIf Then\r\nEnd Sub", L"If Then\r\n", 2},
        {L"Sub DoVex()\r\nx = Document.NoSuchMember\r\nEnd Sub", L"x = Document.NoSuchMember\r\n",
         2},
    };
    for (const Row& row : rows) {
        call(service(), &IHostKitService::Clear);
        call(box, &IKelosTextBox::put_Text, Bstr(row.script).get());
        CHECK_FALSE(execute(L""));
        CHECK(message_count() == 1);  // no second message
        CHECK(message(1).starts_with(L"ScriptError|0|Error: "));
        CHECK(message(1).find(L"\nItem: VexScriptRun\nSource: ") != std::wstring::npos);
        CHECK(message(1).find(L"\nLine " + std::to_wstring(row.number) + L": ") !=
              std::wstring::npos);
        CHECK(selected(box) == row.line);
        CHECK(error_count() == 0);
    }
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "an error in the rich editor's script marks its line and is traced") {
    use(document(L"Leer"));
    const auto control = create<IHostKitScriptControl>(L"Kelos.ScriptControl");
    const auto editor = get(control, &IHostKitScriptControl::get_Object);
    use_text_box(control);
    call(editor, &IKelosScriptEditor::put_Text,
         Bstr(L"Sub DoVex()\r\na = 1\r\nx = 1 / 0\r\nEnd Sub").get());
    CHECK_FALSE(execute(L""));
    CHECK(message_count() == 1);
    CHECK(error_count() == 0);
    const long position = get(editor, &IKelosScriptEditor::LinePosition, 3L);
    CHECK(get(editor, &IKelosScriptEditor::get_SelStart) == position);
    CHECK(get(editor, &IKelosScriptEditor::get_SelLength) == 9);
    const long traces =
        get(get(service(), &IHostKitService::get_Traces), &IHostKitTraces::get_Count);
    CHECK(trace(traces - 3) == L"LineNr: 3");
    CHECK(trace(traces - 2) == L"Pos: " + std::to_wstring(position));
    CHECK(trace(traces - 1) == L"RtfScript.SelStart: " + std::to_wstring(position));
    CHECK(trace(traces) == L"RtfScript.SelLength: 9");
}

TEST_CASE_FIXTURE(RunnerFixture, "what a host object raises arrives with its own words") {
    use(document(L"Datenblatt"));
    const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
    use_text_box(box);
    call(kit, &IHostKit::FailCall, 0L, 0L);
    const wchar_t* const script = L"Sub DoVex()\r\nx = ReportObject.Description\r\nEnd Sub";
    CHECK(execute(script));
    const long calls = get(kit, &IHostKit::get_CountedCalls);
    long raised_in_script = 0;
    for (long failing = 1; failing <= calls; ++failing) {
        call(service(), &IHostKitService::Clear);
        call(kit, &IHostKit::FailCall, failing, static_cast<long>(E_ACCESSDENIED));
        const auto result = execute(script);
        CHECK(message_count() <= 1);
        // A member of the global object reports for itself, and gives the script nothing.
        if (error_count() > 0 || message_count() == 0 || message(1) == unexpected_error) continue;
        ++raised_in_script;
        CHECK_FALSE(result);
        CHECK(message(1).starts_with(
            L"ScriptError|0|Error: Failed on request\nItem: VexScriptRun\n"));
        CHECK(message(1).ends_with(L"\nLine 2: x = ReportObject.Description"));
    }
    CHECK(raised_in_script > 0);
    call(kit, &IHostKit::FailCall, 0L, 0L);
}

TEST_CASE_FIXTURE(RunnerFixture, "a stored script is returned and marked as free text") {
    const auto saved = document(L"Gespeichert");
    const auto attribute = script_of(saved);
    CHECK(marker_of(attribute) == L"");
    CHECK(stored(saved) == L"Sub DoVex()\r\nContentFix \"S!A1\", \"stored\"\r\nEnd Sub");
    CHECK(marker_of(attribute) == L"~");
    CHECK(automation::same_object(get(runner, &ITesseraVexScript::get_Document).get(), nullptr) ==
          false);
    CHECK(stored(document(L"Leer")) == L"");  // no table, no script
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "a table's document without a script of its own gets the default one") {
    for (const wchar_t* name : {L"Datenblatt", L"Rahmen"}) {
        const auto chosen = document(name);
        CHECK(stored(chosen) == default_script());
        const auto attribute = script_of(chosen);
        REQUIRE(attribute);
        CHECK(marker_of(attribute) == L"~");
        CHECK(get(attribute, &IKelosAttribute::get_Value, 1L).text() == default_script());
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture, "a script is stored, created where it is missing") {
    const auto empty = document(L"Leer");
    CHECK(store(empty, L"Sub DoVex()\r\n' new\r\nEnd Sub"));
    CHECK(stored(empty) == L"Sub DoVex()\r\n' new\r\nEnd Sub");
    CHECK_FALSE(store({}, L"x"));
    CHECK(error(1) == L"Tessera.VexScript|SetVexScript");
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(RunnerFixture, "a delegate keeps the script for those who may write there") {
    const auto delegating = document(L"Delegiert");
    const auto delegate = object(L"Anlage");
    CHECK(stored(delegating) == default_script());
    CHECK_FALSE(script_of(delegating));
    REQUIRE(script_of(delegate));

    call(workset.as<IHostKitWorkset>(), &IHostKitWorkset::put_CurrentLogin, Bstr(L"ben").get());
    CHECK(stored(delegating) == L"");
    CHECK_FALSE(store(delegating, L"x"));
    CHECK(get(script_of(delegate), &IKelosAttribute::get_Value, 1L).text() == default_script());
    CHECK(error_count() == 0);
}
