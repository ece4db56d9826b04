// Starts the program: queries in each of their formats.

#include "cli/program.h"

using namespace test;

namespace {

constexpr const char* queries = R"(
  <queries>
    <query name="Texte">
      <column name="Text" property="Name"/>
      <column name="Rest" property="Name"/>
      <row><cell text="Größe &lt; 5"/><cell text="eins &amp; zwei"/></row>
      <row><cell missing="yes"/><cell missing="yes"/></row>
      <row><cell text="日本"/><cell missing="yes"/></row>
    </query>
    <query name="Many"><column name="N" property="Name"/>
      <generate rows="3000"><cell text="Signal {row}"/></generate>
    </query>
    <query name="Empty"><column name="N" property="Name"/></query>
  </queries>)";

struct TextQuery : Workplace {
    TextQuery() { write(L"p.xml", project_file("", queries)); }

    Outcome query(const wchar_t* name, const wchar_t* format,
                  std::vector<std::wstring> more = {}) const {
        std::vector<std::wstring> arguments{L"query", L"p.xml",    L"--query",
                                            name,     L"--format", format};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
};

}  // namespace

TEST_CASE("rows are gathered in one document, rows without cells are left out") {
    const TextQuery place;
    const Outcome outcome = place.query(L"texte", L"rows");
    CHECK(outcome.code == 0);
    CHECK(outcome.error == "");
    CHECK(outcome.out ==
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
          "<Rows>\r\n"
          "\t<Row Version=\"1\">\r\n"
          "\t\t<Cell>\r\n"
          "\t\t\t<Value Data=\"Größe &lt; 5\"/>\r\n"
          "\t\t\t<Column Name=\"Text\"/>\r\n"
          "\t\t</Cell>\r\n"
          "\t\t<Cell>\r\n"
          "\t\t\t<Value Data=\"eins &amp; zwei\"/>\r\n"
          "\t\t\t<Column Name=\"Rest\"/>\r\n"
          "\t\t</Cell>\r\n"
          "\t</Row>\r\n"
          "\t<Row Version=\"1\">\r\n"
          "\t\t<Cell>\r\n"
          "\t\t\t<Value Data=\"日本\"/>\r\n"
          "\t\t\t<Column Name=\"Text\"/>\r\n"
          "\t\t</Cell>\r\n"
          "\t</Row>\r\n"
          "</Rows>\r\n");

    const Outcome to_file = place.query(L"Texte", L"rows", {L"--out", L"o.xml"});
    CHECK(to_file.code == 0);
    CHECK(to_file.out == "2 rows, 0 messages, 0 errors\nwritten: o.xml\n");
    std::string text = utf16_text(place.read(L"o.xml"));
    text.replace(text.find("UTF-16"), 6, "UTF-8");
    CHECK(text == outcome.out);
    parsed(place.folder() / L"o.xml");
}

TEST_CASE("columns and the complete document are documents of their own") {
    const TextQuery place;
    const Outcome columns = place.query(L"Texte", L"columns", {L"--out", L"c.xml", L"--quiet"});
    CHECK(columns.code == 0);
    CHECK(columns.out == "c.xml\n");
    CHECK(contains(utf16_text(place.read(L"c.xml")), "<ColumnsRelation F1=\"Text\" F2=\"Rest\"/>"));

    const Outcome complete = place.query(L"Texte", L"complete", {L"--out", L"d.xml"});
    CHECK(complete.code == 0);
    // Two headings and three cells.
    CHECK(contains(complete.out, "5 content elements"));
    CHECK(contains(utf16_text(place.read(L"d.xml")), "Data=\"3;1\""));
    parsed(place.folder() / L"d.xml");
}

TEST_CASE("encoded strings are lines that decode to the strings") {
    const TextQuery place;
    const Outcome plain = place.query(L"Texte", L"strings");
    CHECK(plain.code == 0);
    CHECK(plain.out.starts_with("<?xml version=\"1.0\" encoding=\"ISO-10646-UCS-2\"?><Row"));
    CHECK(contains(plain.out, "日本"));

    const Outcome encoded = place.query(L"Texte", L"strings", {L"--encode"});
    CHECK(encoded.code == 0);
    const auto strings = lines(encoded.out);
    REQUIRE(strings.size() == 2);
    for (const std::string& string : strings)
        CHECK(string.starts_with("@@UU@@C@@"));

    place.write(L"e.txt", encoded.out);
    const Outcome decoded = place.run({L"decode", L"e.txt"});
    CHECK(decoded.code == 0);
    CHECK(decoded.out == plain.out);
}

TEST_CASE("queries of many rows and of none come to their end") {
    const TextQuery place;
    const Outcome many = place.query(L"Many", L"strings", {L"--encode", L"--out", L"m.txt"});
    CHECK(many.code == 0);
    CHECK(many.out == "3000 rows, 0 messages, 0 errors\nwritten: m.txt\n");
    CHECK(lines(place.read(L"m.txt")).size() == 3000);

    const Outcome none = place.query(L"Empty", L"rows");
    CHECK(none.code == 0);
    CHECK(none.out == "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<Rows/>\r\n");
    CHECK(place.query(L"Empty", L"strings").out == "");
}
