// Starts the program: what it lists of a project, its languages and users.

#include "cli/program.h"

using namespace test;

namespace {

constexpr const char* project = R"(<?xml version="1.0" encoding="UTF-8"?>
<kelos-project-file version="1" lcid="1033">
  <languages current="Deutsch">
    <language name="Deutsch" lcid="1031"/><language name="English" lcid="1033"/>
  </languages>
  <users current="me"><user login="me" rights="1"/><user login="guest" rights="0"/></users>
  <system-types>
    <system-type name="project" number="1"/><system-type name="pump" number="120"/>
    <system-type name="mapping table" number="300"/>
  </system-types>
  <project type="project" name="Plant" uid="P" current="yes">
    <object type="pump" name="Pump" uid="P1" description="Förderpumpe">
      <translation language="English" description="Feed pump"/>
    </object>
    <document name="List" uid="D1" type-text="L" sub-type-text="2" description="Pumpenliste">
      <object type="mapping table" name="Map" uid="M1"><mapping><rows sheet="Pumps">
        <row cell="A1" object="Pump" property="Description"/>
        <row cell="A2" value="1,5"/>
      </rows></mapping></object>
    </document>
    <document name="Übersicht" uid="D2" type-text="L" sub-type-text="2">
      <script><![CDATA[Sub DoVex()
        ContentFix "S!A1", WorkSet.CurrentUser.Login
      End Sub]]></script>
    </document>
    <object type="pump" name="Keeper">
      <rights user="me" mask="0"/>
      <script><![CDATA[Sub DoVex()
        ContentFix "S!A1", 1
      End Sub]]></script>
    </object>
    <document name="Kept" uid="D3" delegate="Keeper"/>
    <document name="Frame" uid="D4">
      <script><![CDATA[
        Sub DoVex()
        End Sub
      ]]></script>
      <object type="mapping table" name="Map" uid="M4"><mapping><rows sheet="Pumps">
        <row cell="A1" object="Pump" property="Description"/>
      </rows></mapping></object>
    </document>
  </project>
  <queries>
    <query name="Pumpenliste"><column name="N" property="Name"/></query>
  </queries>
</kelos-project-file>
)";

struct Plant : Workplace {
    Plant() { write(L"p.xml", project); }
};

}  // namespace

TEST_CASE("documents, queries and languages are listed as text and for programs") {
    const Plant place;
    const Outcome text = place.run({L"list", L"p.xml"});
    CHECK(text.code == 0);
    CHECK(text.error == "");
    CHECK(text.out ==
          "Document   Path       Rows  Script   Description\n"
          "---------  ---------  ----  -------  -----------\n"
          "List       List       2     default  Pumpenliste\n"
          "Übersicht  Übersicht        own\n"
          "Kept       Kept\n"
          "Frame      Frame      1     default\n"
          "\n"
          "Query\n-----------\nPumpenliste\n\n"
          "Language\n--------\nDeutsch\nEnglish\n\n"
          "language: Deutsch, user: me\n");
    const Outcome json = place.run({L"list", L"-", L"--json", L"--user=guest"}, project);
    CHECK(json.code == 0);
    for (const char* part :
         {"\"project\": \"standard input\"", "\"name\": \"Übersicht\"", "\"mappingRows\": 2",
          "\"mappingRows\": null", "\"script\": \"own\"", "\"user\": \"guest\""})
        CHECK_MESSAGE(contains(json.out, part), json.out);
    // The default script is stored before it runs, which the guest may not do.
    CHECK_MESSAGE(!contains(json.out, "\"default\""), json.out);
}

TEST_CASE("texts come in the language that is asked for, and scripts see the user") {
    const Plant place;
    const struct {
        const wchar_t* language;
        const char* description;
    } cases[] = {{L"english", "Feed pump"}, {L"1033", "Feed pump"}, {L"Deutsch", "Förderpumpe"}};
    for (const auto& asked : cases) {
        const Outcome outcome = place.run({L"export", L"p.xml", L"--language", asked.language});
        CHECK(outcome.code == 0);
        CHECK_MESSAGE(contains(outcome.out, asked.description), outcome.out);
    }
    const Outcome guest = place.run(
        {L"export", L"p.xml", L"--document", L"übersicht", L"--user", L"guest", L"--out", L"-"});
    CHECK(guest.code == 0);
    CHECK(guest.out.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<Contents"));
    CHECK(contains(guest.out, "Data=\"guest\""));
    CHECK(contains(guest.error, "\nwritten to standard output\n"));
}

TEST_CASE("what a project does not have is told with what it has and what may be meant") {
    const Plant place;
    const struct {
        std::vector<std::wstring> arguments;
        const char* sentence;
    } cases[] = {
        {{L"export", L"p.xml", L"--document", L"Lst"},
         R"("p.xml" has no document "Lst"; it has "List", "Übersicht", "Kept", "Frame"; did you mean "List"?)"},
        {{L"query", L"p.xml", L"--query", L"Pumpen", L"--format", L"rows"},
         R"("p.xml" has no query "Pumpen"; it has "Pumpenliste"; did you mean "Pumpenliste"?)"},
        {{L"list", L"p.xml", L"--language", L"French"},
         R"("p.xml" has no language "French"; it has "Deutsch", "English")"},
        {{L"list", L"p.xml", L"--user", L"Me"},
         R"("p.xml" has no user "Me"; its element "users" lists them)"},
        {{L"check", L"-", L"--project", L"-"},
         R"(check: only one file can be "-": standard input is read once)"},
        {{L"import", L"w.xlsx", L"--project", L"-", L"--apply"},
         R"(import: "--apply" needs a project file to write to; standard input is none)"},
        {{L"list", L"-"}, "standard input: the file is empty"},
    };
    for (const auto& wrong : cases) {
        const Outcome outcome = place.run(wrong.arguments, "");
        CHECK(outcome.code == 2);
        CHECK(outcome.out == "");
        CHECK(outcome.error == "tessera: " + std::string(wrong.sentence) + "\n");
    }
}
