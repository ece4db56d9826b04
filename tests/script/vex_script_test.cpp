// Through the DLL: scripts that run, fail, are stored and found.

#include "script/runner_fixture.h"
#include "script/script_text.h"
#include "support/scripted_object.h"

using namespace test;

namespace {

constexpr wchar_t unexpected_error[] = L"ScriptError|0|Unerwarteter Fehler";

std::wstring default_script() {
    return std::wstring(automation::as_wide(tessera::default_mapping_script()));
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
    // Who cannot trace says so; without a document there are no options.
    fail(L"Service.Trace");
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
    CHECK(take_errors() ==
          L"Tessera.SCGlobal|Property Set 'Document'\n"
          L"XMLOptions|Friend Function 'CreateOptionsRoot'\n"
          L"XMLOptions|Friend Function 'XMLNode'\n"
          L"Tessera.SCGlobal|Friend Sub 'AddOptionsToXml'\n");
    fail(L"Service.Trace", 3);
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
    CHECK(take_errors() == L"OptionMappingTable|Friend Function 'XMLNode'\n");
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "every run has a document of its own, with nothing of the run before") {
    use(document(L"Leer"));
    const wchar_t* const script = L"Sub DoVex()\r\nContentFix \"S!A1\", 1\r\nEnd Sub";
    const auto first = execute(script);
    const auto second = execute(script);
    CHECK(test::contents_of(first).size() == 1);
    CHECK(get(first, &IXMLDOMDocument::get_xml).view() ==
          get(second, &IXMLDOMDocument::get_xml).view());
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

TEST_CASE_FIXTURE(RunnerFixture, "an empty script is not run, one without a document is") {
    CHECK_FALSE(execute(L""));
    CHECK_FALSE(execute(L"   "));
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
    CHECK(message_count() == 0);
    CHECK(error_count() == 0);
    // An error in a line that the editor has not is told once.
    use_text_box(create<IHostKitScriptControl>(L"Kelos.ScriptControl"));
    CHECK_FALSE(execute(L"Sub DoVex()\r\na = 1\r\nx = 1 / 0\r\nEnd Sub"));
    CHECK(message_count() == 1);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "an error ends in one message, and marks its line in a plain text box") {
    use(document(L"Leer"));
    const auto box = create<IKelosTextBox>(L"Kelos.TextBox");
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
        use_text_box({});
        CHECK_FALSE(execute(row.script));
        CHECK(message_count() == 1);
        CHECK(message(1) == unexpected_error);
        call(service(), &IHostKitService::Clear);
        use_text_box(box);
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
    use_text_box({});
    CHECK_FALSE(execute(L"Sub Other()\r\nEnd Sub"));
    CHECK(message(2) == unexpected_error);
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "a script that runs itself is stopped before it exhausts the stack") {
    const wchar_t script[] =
        L"Sub DoVex()\r\nVexScriptRun.Execute "
        L"VexScriptRun.Document.Attributes.Item(\"Vex\").Value(1)\r\nEnd Sub";
    use(document(L"Gespeichert"));
    store(document(L"Gespeichert"), script);
    CHECK(execute(script));
    CHECK(take_errors() == L"Tessera.VexScript|Public Function 'Execute'\n");
    CHECK(execute(L"Sub DoVex()\r\nEnd Sub"));
}

TEST_CASE_FIXTURE(RunnerFixture, "a stored script survives every failure of the host") {
    const auto sheet = document(L"Datenblatt");  // it shows a mapping table
    const wchar_t mine[] = L"Sub DoVex()\r\n'mine\r\nEnd Sub";
    REQUIRE(store(sheet, mine));
    call(kit, &IHostKit::FailCall, 0L, 0L);
    stored(sheet);
    const long calls = get(kit, &IHostKit::get_CountedCalls);
    REQUIRE(calls > 5);
    for (long failing = 1; failing <= calls; ++failing) {
        CAPTURE(failing);
        call(service(), &IHostKitService::Clear);
        call(kit, &IHostKit::FailCall, failing, static_cast<long>(E_ACCESSDENIED));
        stored(sheet);
        CHECK(error_count() == 1);
        CHECK(error_code(1) == E_ACCESSDENIED);
        CHECK(get(script_of(sheet), &IKelosAttribute::get_Value, 1L).text() == mine);
    }
    call(service(), &IHostKitService::Clear);
    CHECK(stored({}) == L"");
    fail(L"AttributeObject.get_Value");
    CHECK(stored(sheet) == L"");
    CHECK(take_errors() ==
          L"Tessera.VexScript|GetVexScript\n"
          L"Tessera.VexScript|Function IsVexScriptEmptyOrNothing\n"
          L"Tessera.VexScript|GetVexScript\n");
}

TEST_CASE_FIXTURE(RunnerFixture, "an error is told before its line is taken for a number") {
    std::map<std::wstring, Member> members;
    for (const wchar_t* const name : {L"Description", L"Item", L"Source", L"LineNr", L"LineText"})
        members[name] = [=](auto&) { return Variant(name); };
    runner->OnScriptError(make_object(members)->dispatch());
    CHECK(message(1) ==
          L"ScriptError|0|Error: Description\nItem: Item\nSource: Source\nLine LineNr: LineText");
    CHECK(take_errors() == L"Tessera.VexScript|Public Sub OnScriptError\n");
    // Lines of a text box have 16 bits.
    members[L"LineNr"] = [](auto&) { return Variant(40000L); };
    use_text_box(create<IKelosTextBox>(L"Kelos.TextBox"));
    runner->OnScriptError(make_object(members)->dispatch());
    CHECK(take_errors() == L"Tessera.VexScript|Public Sub OnScriptError\n");
}

TEST_CASE_FIXTURE(RunnerFixture, "what a host object raises arrives with its own words") {
    use(document(L"Datenblatt"));
    use_text_box(create<IKelosTextBox>(L"Kelos.TextBox"));
    fail(L"PlainObject.get_Description");
    CHECK_FALSE(execute(L"Sub DoVex()\r\nx = ReportObject.Description\r\nEnd Sub"));
    CHECK(message(1) ==
          L"ScriptError|0|Error: Failed on request\nItem: VexScriptRun\nSource: KelosHostKit\n"
          L"Line 2: x = ReportObject.Description");
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(RunnerFixture,
                  "a table's document without a script of its own gets the default one") {
    for (const wchar_t* name : {L"Datenblatt", L"Rahmen"}) {
        const auto chosen = document(name);
        // Whether it shall be created makes no difference.
        CHECK(stored(chosen, *name == L'D') == default_script());
        CHECK(get(runner, &ITesseraVexScript::get_Document) == chosen);
        const auto attribute = script_of(chosen);
        REQUIRE(attribute);
        CHECK(marker_of(attribute) == L"~");
        CHECK(get(attribute, &IKelosAttribute::get_Value, 1L).text() == default_script());
    }
    CHECK(error_count() == 0);
}
