// Starts the program: what is told of content documents, and of two of them.

#include <sstream>

#include "automation/dom.h"
#include "cli/content_rows.h"
#include "cli/program.h"
#include "text/utf8.h"

using namespace test;

namespace {

// "rule row" for every place of a report.
std::vector<std::string> places(const std::string& report) {
    std::vector<std::string> result;
    for (const std::string& line : lines(report)) {
        std::istringstream words(line);
        std::string rule, row;
        words >> rule >> row;
        if (!row.empty() && row.find_first_not_of("0123456789") == row.npos)
            result.push_back(rule + " " + row);
    }
    return result;
}

const std::string numeric = item("AllValuesNumeric", "Boolean", "-1");
const std::string numeric_or_empty = numeric + item("EmptyNumericValueStayEmpty", "Boolean", "-1");

std::string expression_value(const std::string& text) {
    return item("KelosValue", "String", text);
}

}  // namespace

TEST_CASE("every rule is told of the rows that break it, and of no other") {
    const std::string two_texts = value_item("Long", "1", "on") + value_item("Long", "0", "on");
    const std::string one_text = value_item("Long", "1", "on") + value_item("Long", "0", "");
    const struct {
        const char* rules;  // that the row breaks
        ContentRow row;
    } cases[] = {
        {"", {.pointer = "S!A1"}},
        {"pointer", {.pointer = "S!1A"}},
        {"outside-sheet", {.pointer = "S!XFE1"}},
        {"", {.pointer = "S!XFD1048576"}},
        {"sheet-name", {.pointer = "a/b!A1"}},
        {"same-cell", {.pointer = "s!a1"}},
        {"", {.pointer = "S!B1", .property = "Parent.Name", .flags = expression_value("x")}},
        {"expression-failed",
         {.pointer = "S!B2",
          .property = "No.Such",
          .flags = expression_value("&lt;&lt; Error >>")}},
        {"", {.pointer = "S!B3", .property = "Name", .text = "&lt;&lt; Error >>"}},
        {"unreadable-value", {.pointer = "S!C1", .text = "x", .type = "Double"}},
        {"unreadable-value", {.pointer = "S!C2", .text = "Pump", .type = "IKelosObject"}},
        {"", {.pointer = "S!C3", .text = "12/31/2026", .type = "Date"}},
        {"", {.pointer = "S!D1", .text = "12.5", .flags = numeric}},
        {"not-numeric", {.pointer = "S!D2", .text = "12 m", .flags = numeric}},
        {"not-numeric", {.pointer = "S!D3", .text = "", .flags = numeric}},
        {"", {.pointer = "S!D4", .text = "", .flags = numeric_or_empty}},
        {"", {.pointer = "S!E1", .text = std::string(32767, 'x')}},
        {"long-text", {.pointer = "S!E2", .text = std::string(32768, 'x')}},
        {"", {.pointer = "S!F1", .property = "32"}},
        {"unknown-property", {.pointer = "S!F2", .property = "8"}},
        {"unknown-property", {.pointer = "S!F3", .property = "Descripton"}},
        {"", {.pointer = "S!F4", .property = "AttributeText", .parameter = "&quot;A&quot;"}},
        {"no-display-text", {.pointer = "S!G1", .list = one_text, .presentation = 1}},
        {"", {.pointer = "S!G2", .list = one_text}},
        {"same-display-text", {.pointer = "S!G3", .list = two_texts, .presentation = 1}},
        {"direction", {.pointer = "S!H1", .direction = "X"}},
        {"no-way-back", {.pointer = "S!H2", .property = "FULLNAME"}},
        {"", {.pointer = "S!H3", .property = "FullName", .direction = "O"}},
    };
    std::string contents;
    std::vector<std::string> expected;
    int number = 0;
    for (const auto& [rule, row] : cases) {
        contents += content(row);
        ++number;
        if (*rule) expected.push_back(std::string(rule) + " " + std::to_string(number));
    }
    const Workplace place;
    place.write(L"c.xml", document(contents));
    const Outcome outcome = place.run({L"check", L"c.xml"});
    CHECK(outcome.code == 1);
    auto found = places(outcome.out);
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    CHECK(found == expected);
    CHECK(contains(outcome.out, "28 rows: 10 errors, 5 warnings, 1 notice; "));
}

TEST_CASE("objects and units are looked up in the project") {
    const std::string head = "Pump|Process.Head";
    const std::string head_uid = "Plant|Pump|Process.Head";
    const Workplace place;
    place.write(L"p.xml", project_file(""));
    place.write(
        L"c.xml",
        document(content({.pointer = "S!A1"}) + content({.pointer = "S!A2", .path = "Old|Pump"}) +
                 content({.pointer = "S!A3", .uid = "P9"}) +
                 content({.pointer = "S!A4", .uid = "P9", .path = "Pomp"}) +
                 content({.pointer = "S!A5", .property = "", .uid = "", .path = ""}) +
                 content({.pointer = "S!B1",
                          .property = "Value",
                          .unit = "LENGTH.CM",
                          .uid = head_uid,
                          .path = head,
                          .system_type = 10}) +
                 content({.pointer = "S!B2",
                          .property = "Value",
                          .unit = "FLOW.LMIN",
                          .uid = head_uid,
                          .path = head,
                          .system_type = 10}) +
                 content({.pointer = "S!B3",
                          .property = "Value",
                          .unit = "FLOW.LMIN",
                          .parameter = "Process.Head"})));
    const Outcome outcome = place.run({L"check", L"c.xml", L"--project", L"p.xml"});
    CHECK(outcome.code == 1);
    CHECK(places(outcome.out) == std::vector<std::string>{"no-object 4", "wrong-unit 7",
                                                          "wrong-unit 8", "object-moved 2"});
    CHECK(place.run({L"check", L"c.xml", L"--quiet"}).out ==
          "8 rows: 0 errors, 0 warnings, 0 notices; objects and units are checked with "
          "\"--project\" only\n");
    CHECK(place.run({L"check", L"c.xml"}).code == 0);
}

TEST_CASE("a report tells some places of a rule, and all of them to a program") {
    std::string contents;
    for (int i = 0; i < 25; ++i)
        contents += content({.pointer = "nowhere"});
    const Workplace place;
    place.write(L"c.xml", document(contents));
    const std::string text = place.run({L"check", L"c.xml"}).out;
    CHECK(places(text).size() == 20);
    CHECK(contains(text, "and 5 more"));
    const std::string json = place.run({L"check", L"c.xml", L"--json"}).out;
    CHECK(contains(json, "\"row\": 25,"));
    CHECK(contains(json, "\"errors\": 25,"));
}

TEST_CASE("a difference is told of the cell that has it") {
    const std::string on = value_item("Long", "1", "on");
    const std::string off = value_item("Long", "0", "off");
    const auto listed = [](const std::string& list) {
        return content({.pointer = "S!E1", .list = list, .presentation = 1});
    };
    const struct {
        const char* what;  // the row's beginning
        std::string before;
        std::string after;
    } cases[] = {
        {"added   S!A1     Pump    Description  value       text", "", content({})},
        {"removed  S!A1     Pump    Description  value  text", content({}), ""},
        {"changed  S!A1     Pump    Description  value  text  other", content({}),
         content({.text = "other"})},
        {"changed  S!A1     Pump    Description  value  String 1  Double 1", content({.text = "1"}),
         content({.text = "1", .type = "Double"})},
        {"changed  S!A1     Pump    Description  unit  A.B  A.C", content({.unit = "A.B"}),
         content({.unit = "A.C"})},
        {"changed  S!A1     Pump    Name(2)   property  Description  Name(2)", content({}),
         content({.property = "Name", .parameter = "2"})},
        {"changed  S!A1     Pump    Description  direction  IO   O", content({}),
         content({.direction = "O"})},
        {"changed  S!A1     Pump    Description  flags       numbers only", content({}),
         content({.flags = numeric})},
        {"changed  S!A1     Pump2   Description  object  Pump (P1)  Pump2 (P1)", content({}),
         content({.path = "Pump2"})},
        {"changed  S!E1     Pump    Description  value  on   off", listed(on + off),
         listed(off + on)},
        {"changed  S!E1     Pump    Description  list  1=on  0=off; 1=on", listed(on),
         listed(on + off)},
        {"", content({.pointer = "S!A1"}) + content({.pointer = "S!A2"}),
         content({.pointer = "S!A2"}) + content({.pointer = "s!a1"})},
    };
    const Workplace place;
    for (const auto& [what, before, after] : cases) {
        place.write(L"old.xml", document(before));
        place.write(L"new.xml", document(after));
        const Outcome outcome = place.run({L"diff", L"old.xml", L"new.xml"});
        CAPTURE(outcome.out);
        CHECK(outcome.code == (*what ? 1 : 0));
        CHECK(lines(outcome.out).size() == (*what ? 5 : 1));
        if (*what) CHECK(lines(outcome.out)[2] == what);
    }
}

TEST_CASE("an export that is repeated differs in nothing") {
    const Workplace place;
    place.run({L"export", sample(L"plant.xml"), L"--out", L"one.xml"});
    place.run({L"export", sample(L"plant.xml"), L"--out", L"two.xml"});
    CHECK(place.run({L"diff", L"one.xml", L"two.xml"}).out ==
          "rows: 0 added, 0 removed, 0 changed, 109 unchanged\n");
    const Outcome outcome = place.run({L"diff", L"one.xml", L"two.xml", L"--json"});
    CHECK(contains(outcome.out, "\"unchanged\": 109,\n  \"changes\": []"));
    CHECK(place.run({L"check", L"one.xml", L"--project", sample(L"plant.xml")}).code == 0);
}

TEST_CASE("the sample's style sheet makes a page of a content document on the platform's parser") {
    const Workplace place;
    place.run({L"export", sample(L"plant.xml"), L"--out", L"c.xml"});
    const auto document = parsed(place.folder() / L"c.xml");
    const auto style = parsed(sample(L"content_page.xsl"));
    const std::string page =
        tessera::to_utf8(get(document, &IXMLDOMDocument::transformNode, style.get()).u16());
    for (const char* part : {"<caption>Pumpen</caption>", "<caption>Messstellen</caption>",
                             "<td>in Betrieb</td>", "<td>GetXValue(2)</td>"})
        CHECK_MESSAGE(contains(page, part), std::string(part));
    // A line for every row, and one of headings for each of the three sheets.
    std::size_t count = 0;
    for (std::size_t at = page.find("<tr>"); at != page.npos; at = page.find("<tr>", at + 1))
        ++count;
    CHECK(count == 109 + 3);
}

TEST_CASE("what is no content document is told as such, and nothing is written") {
    const struct {
        const char* bytes;
        const char* reason;
    } cases[] = {
        {"", "it is not well-formed XML"},
        {"<Contents Version=\"1\"><Content></Contents>", "it is not well-formed XML"},
        {"<Contents Version=\"2\"/>", "its root is no \"Contents\" of version 1"},
        {"<kelos-project-file/>", "its root is no \"Contents\" of version 1"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><Contents Version=\"1\"/>",
         "it has a document type declaration"},
    };
    const Workplace place;
    for (const auto& [bytes, reason] : cases) {
        place.write(L"c.xml", bytes);
        const Outcome outcome = place.run({L"preview", L"c.xml", L"--out", L"c.html"});
        CHECK(outcome.code == 2);
        CHECK(contains(outcome.error, std::string("\"c.xml\" is no content document: ") + reason));
        CHECK_FALSE(place.has(L"c.html"));
    }
    // The encoding that the component's own documents declare is one that parsers refuse.
    place.write(L"c.xml", "<?xml encoding=\"ISO-10646-UCS-2\"?>\r\n" + document(content({})));
    CHECK(place.run({L"check", L"c.xml"}).code == 0);
}
