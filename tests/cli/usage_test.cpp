// Starts the program: help, wrong arguments, files that cannot be read or written.

#include "cli/program.h"

using namespace test;

namespace {

// The program said in one line why it could not run.
void check_refused(const Outcome& outcome, std::string_view named) {
    CHECK(outcome.code == 2);
    CHECK(outcome.out.empty());
    CHECK(lines(outcome.error).size() == 1);
    CHECK(outcome.error.starts_with("tessera: "));
    CHECK(outcome.error.ends_with("\n"));
    CHECK_FALSE(contains(outcome.error, "\r"));
    CHECK_MESSAGE(contains(outcome.error, named), outcome.error);
}

}  // namespace

TEST_CASE("help and version are told on standard output") {
    const Workplace place;
    const Outcome help = place.run({L"--help"});
    CHECK(help.code == 0);
    CHECK(help.error.empty());
    CHECK(contains(help.out, "tessera export PROJECT"));
    CHECK_FALSE(contains(help.out, "\r"));

    const Outcome version = place.run({L"--version"});
    CHECK(version.code == 0);
    CHECK(version.out.starts_with("tessera 1."));
}

TEST_CASE("arguments that make no sense are refused in one line") {
    const Workplace place;
    check_refused(place.run({L"export", L"p.xml", L"--förmat"}), "\"--förmat\"");
    check_refused(place.run({L"export", L"p.xml", L"a\nb"}), "\"a␊b\"");
}

TEST_CASE(
    "a project file that is missing or not right is named, with the line where there is one") {
    const Workplace place;
    check_refused(place.run({L"export", L"missing.xml"}), "; check the name");
    check_refused(place.run({L"export", L"."}), ".");
    place.write(L"empty.xml", "");
    check_refused(place.run({L"export", L"empty.xml"}), "empty.xml");
    place.write(L"cut.xml", project_file(mapping_document("")).substr(0, 300));
    check_refused(place.run({L"export", L"cut.xml"}), "cut.xml, line ");
    place.write(L"other.xml", "<?xml version=\"1.0\"?>\n<plant/>\n");
    check_refused(place.run({L"query", L"other.xml", L"--query", L"q", L"--format", L"rows"}),
                  "other.xml, line 2");
}

TEST_CASE("an unknown document or query is told with those that there are") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document("") + scripted_document("Übersicht", "")));
    check_refused(place.run({L"export", L"p.xml", L"--document", L"Liste"}),
                  "\"Liste\"; it has \"List\", \"Übersicht\"");
    check_refused(place.run({L"query", L"p.xml", L"--query", L"Pumps", L"--format", L"rows"}),
                  "\"Pumps\"; it has none");
    place.write(L"bare.xml", project_file(scripted_document("Übersicht", "")));
    check_refused(place.run({L"export", L"bare.xml"}), "no document with a mapping table");
}

TEST_CASE("files that cannot be read or written are refused, and inputs are not overwritten") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document("")));
    place.write(L"half.vbs",
                "\xFF\xFE"
                "S");
    place.write(L"marked.vbs",
                "\xEF\xBB\xBF"
                "F\xF6rderpumpe");
    place.write(L"null.vbs", {"Sub DoVex()\n\0End Sub\n", 21});
    place.write(L"ok.vbs", "Sub DoVex()\nEnd Sub\n");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"none.vbs"}), "none.vbs");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"."}), "\".\"");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"half.vbs"}), "UTF-16");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"marked.vbs"}), "UTF-8");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"null.vbs"}), "line 2");
    check_refused(place.run({L"export", L"p.xml", L"--out", L"no\\such\\folder.xml"}),
                  "folder.xml");
    REQUIRE(CreateHardLinkW((place.folder() / L"link.xml").c_str(),
                            (place.folder() / L"p.xml").c_str(), nullptr));
    for (const std::wstring& same : {std::wstring(L".\\P.XML"), std::wstring(L"link.xml"),
                                     L"\\\\?\\" + (place.folder() / L"p.xml").wstring()})
        check_refused(place.run({L"export", L"p.xml", L"--out", same}), "is what is read");
    check_refused(place.run({L"export", L"p.xml", L"--script", L"ok.vbs", L"--out", L"ok.vbs"}),
                  "ok.vbs");
    check_refused(place.run({L"decode", L"none.txt"}), "none.txt");
    CHECK(place.read(L"p.xml").starts_with("<?xml"));
    CHECK(place.read(L"ok.vbs").starts_with("Sub"));
}
