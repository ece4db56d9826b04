// Starts the program: exports, the table that they print and the file that they write.

#include "cli/program.h"

using namespace test;

namespace {

constexpr const char* four_rows = R"(
    <row cell="A1" value="Pump list"/>
    <row cell="A2" object="Pump" property="Description"/>
    <row cell="B2" object="Pump" attribute="Process.Head" property="Value" unit="cm" io="O"/>
    <row cell="C2" object="Pump" property="Name" io="I"/>)";

// A project with the four rows, opened by the file name "p.xml".
struct PumpList : Workplace {
    PumpList() { write(L"p.xml", project_file(mapping_document(four_rows))); }
};

// Exports with this script into o.xml.
Outcome run_script(const Workplace& place, std::string_view script) {
    place.write(L"s.vbs", script);
    return place.run({L"export", L"p.xml", L"--script", L"s.vbs", L"--out", L"o.xml"});
}

// A script that puts this expression into the cell A1 of the sheet S.
std::string fix(std::string_view expression) {
    return "Sub DoVex()\r\nContentFix \"S!A1\", " + std::string(expression) + "\r\nEnd Sub\r\n";
}

}  // namespace

TEST_CASE("an export writes the content document and tells what was mapped where") {
    const PumpList place;
    const Outcome outcome = place.run({L"export", L"p.xml"});
    CHECK(outcome.code == 0);
    CHECK(outcome.error == "");
    CHECK(outcome.out ==
          "document: List (the first that has a mapping table)\n"
          "script:   the default one for mapping tables\n"
          "\n"
          "Sheet  Cell  Object             Property     Value        Unit       Direction\n"
          "-----  ----  -----------------  -----------  -----------  ---------  ---------\n"
          "Pumps  A1                                    Pump list               O\n"
          "Pumps  A2    Pump               Description  Förderpumpe             IO\n"
          "Pumps  B2    Pump|Process.Head  Value        1250         LENGTH.CM  O\n"
          "Pumps  C2    Pump               Name         Pump                    I\n"
          "\n"
          "4 rows, 0 messages, 0 errors\n"
          "written: p.List.content.xml\n");
    CHECK(place.has(L"p.List.content.xml"));
}

TEST_CASE(
    "the file is UTF-16 with a mark and one complete declaration, and every parser opens it") {
    const PumpList place;
    REQUIRE(place.run({L"export", L"p.xml", L"--out", L"out.xml"}).code == 0);
    const std::string text = utf16_text(place.read(L"out.xml"));
    CHECK(text.starts_with(
        "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<Contents Version=\"1\">"));
    CHECK(text.find("<?", 2) == text.npos);
    CHECK(text.ends_with("</Contents>\r\n"));
    CHECK(contains(text, "<PathFullName Type=\"String\" Data=\"Pump|Process.Head\"/>"));
    CHECK(contains(text, "<Options Version=\"1\""));

    const auto document = parsed(place.folder() / L"out.xml");
    ComPtr<IXMLDOMNodeList> contents;
    REQUIRE(document->getElementsByTagName(Bstr(L"Content").get(), contents.put()) == S_OK);
    long count = 0;
    contents->get_length(&count);
    CHECK(count == 4);
}

TEST_CASE("a quiet export tells the path only and writes the same, whatever stood in the file") {
    const PumpList place;
    place.write(L"Größe 1.xml", std::string(100000, 'x'));
    const Outcome outcome =
        place.run({L"export", L"p.xml", L"--document=LIST", L"--quiet", L"--out", L"Größe 1.xml"});
    CHECK(outcome.code == 0);
    CHECK(outcome.out == "Größe 1.xml\n");
    CHECK(outcome.error == "");
    REQUIRE(place.run({L"export", L"p.xml"}).code == 0);
    CHECK(place.read(L"Größe 1.xml") == place.read(L"p.List.content.xml"));
}

TEST_CASE("the file's name is made of names that may hold what file names may not") {
    const Workplace place;
    place.write(L"p.q.xml", project_file(scripted_document("1/2 % Größe?", fix("1"))));
    const Outcome outcome = place.run({L"export", L"p.q.xml", L"--document", L"1/2 % Größe?"});
    CHECK(outcome.code == 0);
    CHECK(lines(outcome.out).front() == "document: 1/2 % Größe?");
    CHECK(place.has(L"p.q.1%2F2 %25 Größe%3F.content.xml"));
}

TEST_CASE("a script is read in whatever encoding it is") {
    const PumpList place;
    const std::string utf8 = fix("\"Größe\"");
    std::string ansi, little = "\xFF\xFE", big = "\xFE\xFF";
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        // Both letters follow the same lead byte.
        const bool is_letter = utf8[i] == '\xC3';
        ansi += is_letter ? static_cast<char>(utf8[++i] + 0x40) : utf8[i];
        little.append({ansi.back(), '\0'});
        big.append({'\0', ansi.back()});
    }
    place.write(L"ansi.vbs", ansi);
    place.write(L"utf-8.vbs", utf8);
    place.write(L"marked.vbs", "\xEF\xBB\xBF" + utf8);
    place.write(L"little.vbs", little);
    place.write(L"big.vbs", big);
    for (const wchar_t* name :
         {L"ansi.vbs", L"utf-8.vbs", L"marked.vbs", L"little.vbs", L"big.vbs"}) {
        const Outcome outcome = place.run({L"export", L"p.xml", L"--script", name});
        CHECK(outcome.code == 0);
        CHECK_MESSAGE(contains(outcome.out, "S      A1                      Größe        O\n"),
                      outcome.out);
    }
}

TEST_CASE("characters that XML does not allow are replaced, counted, and visible in the table") {
    const PumpList place;
    const Outcome outcome =
        run_script(place, fix("\"a\" & Chr(1) & \"b\xEF\xBF\xBF\" & vbCrLf & \"<\""));
    CHECK(outcome.code == 0);
    CHECK(contains(outcome.out, "a␁b<U+FFFF>␊<"));
    CHECK(contains(outcome.out, "\n2 characters that XML does not allow, replaced by U+FFFD\n"));
    CHECK(contains(utf16_text(place.read(L"o.xml")), "Data=\"a\uFFFDb\uFFFD&#10;&lt;\""));
    parsed(place.folder() / L"o.xml");
}

TEST_CASE("a script error is marked as a compiler marks it, and nothing is written") {
    const PumpList place;
    const struct {
        const char* script;
        const char* mark;
        const char* line;
    } cases[] = {
        {"Sub DoVex(\r\nEnd Sub\r\n", "s.vbs:1: ", "    Sub DoVex("},
        {"Sub DoVex()\r\n\tContentFix \"S!A1\", 1\r\n\tx = 1 / 0\r\nEnd Sub\r\n",
         "s.vbs:3: ", "        x = 1 / 0"},
        {"Sub DoVex()\n\n  NoSuchThing 1\nEnd Sub", "s.vbs:3: ", "      NoSuchThing 1"},
        {"Sub DoVex()\r\nErr.Raise 1234, \"Werk\", \"Größe fehlt\"\r\nEnd Sub\r\n",
         "s.vbs:2: Werk: Größe fehlt", "    Err.Raise 1234, \"Werk\", \"Größe fehlt\""},
    };
    for (const auto& wrong : cases) {
        CAPTURE(wrong.script);
        const Outcome outcome = run_script(place, wrong.script);
        CHECK(outcome.code == 1);
        const auto told = lines(outcome.error);
        REQUIRE(told.size() == 3);
        CHECK_MESSAGE(told[0].starts_with(wrong.mark), told[0]);
        CHECK(told[1] == wrong.line);
        CHECK(told[2] == "tessera: no content document came back; nothing was written");
        CHECK_FALSE(place.has(L"o.xml"));
    }
}

TEST_CASE(
    "an error in a stored script is told of its document, a quiet export tells nothing else") {
    const Workplace place;
    place.write(L"p.xml",
                project_file(scripted_document("Übersicht", "Sub DoVex()\nx = 1 / 0\nEnd Sub")));
    const Outcome outcome =
        place.run({L"export", L"p.xml", L"--document", L"Übersicht", L"--quiet"});
    CHECK(outcome.code == 1);
    CHECK(outcome.out == "");
    CHECK(lines(outcome.error).front().starts_with("Übersicht:2: "));
}

TEST_CASE("an error that the component reports is listed; what came back is written all the same") {
    const PumpList place;
    const Outcome outcome = run_script(
        place, "Sub DoVex()\nContentFix \"S!A1\", Null\nContentFix \"S!A2\", 7\nEnd Sub");
    CHECK(outcome.code == 1);
    CHECK(contains(outcome.error, "error: Tessera.XMLPublics, "));
    CHECK(contains(outcome.out, "A2"));
    CHECK(lines(outcome.out).back() == "written: o.xml");
    parsed(place.folder() / L"o.xml");
}

TEST_CASE("a failing row of the mapping table is named with its cell and its property") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document(R"(
    <row cell="A2" object="Pump" property="Name"/>
    <row cell="B2" object="Pump" property="@Object.NoSuch"/>)")));
    const Outcome outcome = place.run({L"export", L"p.xml"});
    CHECK(outcome.code == 1);
    CHECK_MESSAGE(lines(outcome.error)
                      .front()
                      .starts_with("error: row 2, Pumps!B2, @Object.NoSuch: Tessera.PropByName, "),
                  outcome.error);
}

TEST_CASE(
    "without scripts a mapping table is mapped but for its expressions, and no stored script "
    "runs") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document(R"(
    <row cell="A2" object="Pump" property="Name"/>
    <row cell="B2" object="Pump" property="Description &amp; 1"/>)") +
                                       scripted_document("Own", fix("1"))));
    const Outcome table = place.run({L"export", L"p.xml", L"--no-scripts"});
    CHECK(table.code == 1);
    CHECK_MESSAGE(contains(table.error, "row 2, Pumps!B2, Description & 1: Tessera.PropByName, "),
                  table.error);
    CHECK(contains(table.error, "not allowed to run"));
    CHECK(contains(table.out, "Pumps  A2    Pump    Name "));
    CHECK_FALSE(contains(table.out, "Förderpumpe"));
    const Outcome own = place.run({L"export", L"p.xml", L"--document", L"Own", L"--no-scripts"});
    CHECK(own.code == 2);
    CHECK(contains(own.error, "\"Own\" has a script of its own"));
}

TEST_CASE("a message to the user is listed in one line and is no error") {
    const PumpList place;
    const Outcome outcome = run_script(
        place,
        "Sub DoVex()\n"
        "MsgBox \"Go\" & vbCrLf & \"on\"\n"
        "Content \"S!A1\", MappingTableExcel.SourceObject(2), \"WorkSet\", \"\", \"\", \"\"\n"
        "End Sub");
    CHECK(outcome.code == 0);
    CHECK(outcome.error == "");
    CHECK_MESSAGE(contains(outcome.out,
                           "\nmessage: VBScript: Go on\n"
                           "message: XML processing  (GetString): The variable cannot be stored "
                           "in the archive. VarType = 9\n1 row, 2 messages, 0 errors\n"),
                  outcome.out);
}

TEST_CASE("a script that calls itself without end fails as others do") {
    const PumpList place;
    const Outcome outcome = run_script(place, "Sub DoVex()\nDoVex\nEnd Sub");
    CHECK(outcome.code == 1);
    CHECK(outcome.error ==
          "s.vbs:1: Microsoft VBScript runtime error: Out of stack space\n    Sub DoVex()\n"
          "tessera: no content document came back; nothing was written\n");
    CHECK_FALSE(place.has(L"o.xml"));
}

TEST_CASE("without a script or its procedure nothing is written, and the reason is told") {
    const Workplace place;
    place.write(L"p.xml", project_file(scripted_document("Bare", "")));
    place.write(L"empty.vbs", "  ");
    const Outcome stored = place.run({L"export", L"p.xml", L"--document", L"Bare"});
    CHECK(stored.code == 1);
    CHECK(stored.error ==
          "tessera: the document \"Bare\" has no mapping script, and \"--script\" names none; "
          "nothing was written\n");
    const Outcome given =
        place.run({L"export", L"p.xml", L"--document", L"Bare", L"--script", L"empty.vbs"});
    CHECK(given.code == 1);
    CHECK(contains(given.error, "\"empty.vbs\" is empty"));
    place.write(L"other.vbs", "Sub Other()\nEnd Sub");
    const Outcome other =
        place.run({L"export", L"p.xml", L"--document", L"Bare", L"--script", L"other.vbs"});
    CHECK(other.code == 1);
    CHECK(contains(other.error, "the script has no procedure \"DoVex\"; nothing was written"));
    CHECK_FALSE(place.has(L"p.Bare.content.xml"));
}
