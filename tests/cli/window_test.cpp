// Starts the program: the progress form of a long run.

#include "cli/program.h"

using namespace test;

namespace {

// The button on the program's progress form; null while there is none.
HWND abort_button(const RunningProgram& program) {
    HWND form = nullptr;
    while ((form = FindWindowExW(nullptr, form, L"KelosTessera.ProgressForm", nullptr))) {
        DWORD process = 0;
        GetWindowThreadProcessId(form, &process);
        if (process == program.id()) return FindWindowExW(form, nullptr, L"Button", nullptr);
    }
    return nullptr;
}

// Clicks once, as soon as there is a button.
Outcome click_abort(RunningProgram& program) {
    HWND button = nullptr;
    while (!program.has_ended() && !(button = abort_button(program)))
        Sleep(20);
    CHECK(PostMessageW(button, BM_CLICK, 0, 0));
    return program.wait();
}

}  // namespace

TEST_CASE("the progress form changes nothing in what is written and told") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document("<row cell=\"A1\" value=\"1\"/>")));
    const Outcome plain = place.run({L"export", L"p.xml", L"--out", L"o.xml"});
    const std::string bytes = place.read(L"o.xml");
    const Outcome with_form = place.run({L"export", L"p.xml", L"--out", L"o.xml", L"--window"});
    CHECK(with_form.code == 0);
    CHECK(with_form.out == plain.out);
    CHECK(with_form.error == "");
    CHECK(place.read(L"o.xml") == bytes);
}

TEST_CASE("the form's button ends an export while its script runs") {
    const Workplace place;
    place.write(L"p.xml", project_file(mapping_document("<row cell=\"A1\" value=\"1\"/>")));
    place.write(L"loop.vbs", "Sub DoVex()\nDo\nX = MappingTableExcel.Target(1)\nLoop\nEnd Sub\n");
    RunningProgram program(
        place.folder(),
        {L"export", L"p.xml", L"--script", L"loop.vbs", L"--out", L"o.xml", L"--window"}, 0);
    const Outcome outcome = click_abort(program);
    CHECK(outcome.code == 1);
    CHECK(outcome.out == "");
    CHECK(outcome.error == "tessera: stopped; nothing was written\n");
    CHECK_FALSE(place.has(L"o.xml"));
}

TEST_CASE("the form's button ends a query, which keeps its rows") {
    const Workplace place;
    place.write(L"p.xml", project_file("",
                                       "<queries><query name=\"Many\"><column name=\"N\" "
                                       "property=\"Name\"/><generate rows=\"100000\"><cell "
                                       "text=\"Signal {row}\"/></generate></query></queries>"));
    RunningProgram program(place.folder(),
                           {L"query", L"p.xml", L"--query", L"Many", L"--format", L"strings",
                            L"--encode", L"--out", L"o.txt", L"--window"},
                           0);
    const Outcome outcome = click_abort(program);
    CHECK(outcome.code == 1);
    const std::size_t count = lines(place.read(L"o.txt")).size();
    const std::string rows = std::to_string(count) + (count == 1 ? " row" : " rows");
    CHECK(outcome.error ==
          "tessera: broken off; " + rows + (count == 1 ? " was" : " were") + " written\n");
    CHECK(outcome.out == rows + ", 0 messages, 0 errors\nwritten: o.txt\n");
    CHECK(count < 100000);
}
