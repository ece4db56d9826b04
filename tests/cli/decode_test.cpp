// Starts the program: decoded texts and files.

#include "cli/program.h"

using namespace test;

namespace {

// Made by Encode; the text is "Größe".
std::string encoded(const wchar_t* text) {
    const auto functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");
    const Bstr result = get(functions, &ITesseraGFunctions::Encode, Bstr(text).get());
    std::string bytes;
    for (const wchar_t character : result.view())
        bytes += static_cast<char>(character);
    return bytes;
}

}  // namespace

TEST_CASE("every line is decoded, those that cannot be are told with their number") {
    const Workplace place;
    const std::string good = encoded(L"Größe 日本");
    place.write(L"e.txt", good + "\r\n\r\nplain\n@@UU@@C@@!!!!\n" + good);
    const Outcome outcome = place.run({L"decode", L"e.txt"});
    CHECK(outcome.code == 1);
    CHECK(outcome.out == "Größe 日本\nGröße 日本\n");
    CHECK(outcome.error ==
          "e.txt:3: this is not an encoded string\n"
          "e.txt:4: this encoded string is damaged\n");
}

TEST_CASE("decoded strings go to a file as UTF-8") {
    const Workplace place;
    place.write(L"e.txt", encoded(L"Größe") + "\n" + encoded(L"") + "\n");
    const Outcome outcome = place.run({L"decode", L"e.txt", L"--out", L"d.txt"});
    CHECK(outcome.code == 0);
    CHECK(outcome.out == "2 strings, 0 errors\nwritten: d.txt\n");
    CHECK(place.read(L"d.txt") == "Größe\n\n");
    CHECK(place.run({L"decode", L"e.txt", L"--out", L"NUL"}).code == 0);
}
