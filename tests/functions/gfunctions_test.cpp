// The general functions, through the DLL.

#include <process.h>
#include <filesystem>

#include "support/watched_host.h"

using namespace test;

namespace {

template <class Base>
class Functions : public Base {
  public:
    ComPtr<ITesseraGFunctions> functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");

    using Member = HRESULT (STDMETHODCALLTYPE ITesseraGFunctions::*)(BSTR, BSTR*);
    std::wstring text(Member member, std::wstring_view input) {
        const Bstr argument(input);
        return get(functions, member, argument.get()).str();
    }
    std::wstring clipboard() {
        return get(functions, &ITesseraGFunctions::UnicodeTextFromClipBoard).str();
    }
};
using FunctionsFixture = Functions<WatchedKit>;
using HostFunctionsFixture = Functions<WatchedProject>;

constexpr auto uu_encode = &ITesseraGFunctions::UUEncode;
constexpr auto uu_decode = &ITesseraGFunctions::UUDecode;
constexpr auto compress = &ITesseraGFunctions::LCSSCompress;
constexpr auto decompress = &ITesseraGFunctions::LCSSDecompress;
constexpr auto encode = &ITesseraGFunctions::Encode;
constexpr auto decode = &ITesseraGFunctions::Decode;

// Puts the text on the clipboard from another program.
int run_clipboard_writer(const std::wstring& text) {
    wchar_t here[MAX_PATH];
    GetModuleFileNameW(nullptr, here, MAX_PATH);
    const auto program = std::filesystem::path(here).replace_filename(L"clipboard_writer.exe");
    return static_cast<int>(
        _wspawnl(_P_WAIT, program.c_str(), program.c_str(), (L'"' + text + L'"').c_str(), nullptr));
}

}  // namespace

TEST_CASE_FIXTURE(FunctionsFixture, "line breaks are converted whatever the locale") {
    for (const long lcid : {0L, 1031L, -1L}) {
        CHECK(get(functions, &ITesseraGFunctions::GetVBString, Bstr(L"a\nb\r\n").get(), lcid)
                  .view() == L"a\r\nb\r\r\n");
        CHECK(get(functions, &ITesseraGFunctions::GetOfficeString, Bstr(L"a\r\n\rb\rc").get(), lcid)
                  .view() == L"a\nb\rc");
    }
}

TEST_CASE_FIXTURE(FunctionsFixture, "codecs use the system's code page") {
    CHECK(text(uu_encode, L"Cat") == L"#0V%T");
    CHECK(text(uu_decode, text(uu_encode, L"\x20AC \xE4\xF6\xFC")) == L"\x20AC \xE4\xF6\xFC");
    CHECK(text(uu_decode, text(uu_encode, L"\x4E00")) == L"?");    // not in the code page
    CHECK(text(uu_decode, text(uu_encode, L"\x0100 ")) == L"A ");  // the best fit
    const std::wstring repeated = L"abcdabcdabcd";
    CHECK(text(compress, repeated).size() == 20);
    CHECK(text(decompress, text(compress, repeated)) == repeated);
}

TEST_CASE_FIXTURE(FunctionsFixture,
                  "a malformed line is reported by the line's worker, the rest is kept") {
    const std::wstring full = text(uu_encode, std::wstring(45, L'x'));
    std::wstring broken = full;
    broken[10] = L'\x01';
    const std::pair<std::wstring, HRESULT> faults[] = {
        {broken + full, automation::error_overflow},
        {L"\x1F" + full.substr(1) + full, automation::error_invalid_procedure_call},
        {full + L"#abc", automation::error_subscript_out_of_range}};
    for (const auto& [lines, code] : faults) {
        CHECK(text(uu_decode, lines) == std::wstring(45, L'x'));
        CHECK(error_code(1) == code);
        CHECK(take_errors() == L"Tessera.GFunctions|Private Function 'UUDecodePrv'\n");
    }
    // A legacy text goes the same way.
    CHECK(text(decode, L"@@UU@@#abc") == L"");
    CHECK(take_errors() == L"Tessera.GFunctions|Private Function 'UUDecodePrv'\n");
}

TEST_CASE_FIXTURE(
    FunctionsFixture,
    "a reference that leads out of the text is reported, the text before it is kept") {
    std::wstring compressed = text(compress, L"abcdabcdabcd");
    compressed[17] = L'\xF0';  // the distance of the second reference
    CHECK(text(decompress, compressed) == L"abcdabcd");
    CHECK(error(1) == L"Tessera.GFunctions|Public Function 'LCSSDecompress'");
    CHECK(error_code(1) == automation::error_invalid_procedure_call);
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(FunctionsFixture,
                  "any text survives encoding, and only encoded texts are decoded") {
    CHECK(get(functions, &ITesseraGFunctions::get_EncodePrefix).view() == L"@@UU@@");
    for (const std::wstring& plain :
         {std::wstring(), std::wstring(L"abc"), std::wstring(L"\x4E00\xD83D\xDE00\xE4"),
          std::wstring(L"a\0b", 3), std::wstring(100000, L'z')}) {
        const std::wstring encoded = text(encode, plain);
        CHECK(encoded.starts_with(L"@@UU@@C@@"));
        CHECK(text(decode, encoded) == plain);
    }
    const std::wstring legacy = L"@@UU@@" + text(uu_encode, text(compress, L"abcdabcdabcdxyz"));
    CHECK(text(decode, legacy) == L"abcdabcdabcdxyz");
    for (const wchar_t* other : {L"", L"abc", L"@@uu@@C@@", L"@@UU@@"})
        CHECK(text(decode, other) == L"");
    CHECK(error_count() == 0);
    CHECK(text(decode, L"@@UU@@C@@not encoded by anyone") == L"");
    CHECK(error(1) == L"Tessera.GFunctions|Public Function 'Decode'");
}

TEST_CASE_FIXTURE(FunctionsFixture, "the clipboard takes text and gives back another program's") {
    // All of a text is put there, what stands before its first null character is read.
    call(functions, &ITesseraGFunctions::UnicodeTextToClipBoard, Bstr({L"a\0b", 3}).get());
    CHECK(clipboard() == L"a");
    OpenClipboard(nullptr);
    CHECK(static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT)))[2] == L'b');
    SetClipboardData(CF_PRIVATEFIRST, GlobalAlloc(GMEM_MOVEABLE, 1));
    CloseClipboard();
    for (const wchar_t* shown : {L"", L"\x4E00 \xE4\r\n\xD83D\xDE00"}) {
        call(functions, &ITesseraGFunctions::UnicodeTextToClipBoard, Bstr(shown).get());
        CHECK(clipboard() == shown);
        CHECK_FALSE(IsClipboardFormatAvailable(CF_PRIVATEFIRST));  // nothing else is left
    }
    REQUIRE(run_clipboard_writer(L"from elsewhere \x00E4") == 0);
    // While somebody holds the clipboard, there is nothing to read or write.
    OpenClipboard(GetDesktopWindow());
    CHECK(clipboard() == L"");
    call(functions, &ITesseraGFunctions::UnicodeTextToClipBoard, Bstr(L"lost").get());
    CloseClipboard();
    CHECK(clipboard() == L"from elsewhere \x00E4");
    OpenClipboard(nullptr);
    EmptyClipboard();
    CloseClipboard();
    CHECK(clipboard() == L"");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(HostFunctionsFixture, "units are found on attributes only") {
    const auto pump = object(L"Anlage|Pumpe");
    const auto attribute =
        get(pump, &IKelosObject::AttributeByFullName, Bstr(L"Process.Pressure").get());
    const auto unit = [&](IKelosObject* of, const wchar_t* label) {
        return get(functions, &ITesseraGFunctions::GetKelosPhysUnit, of, Bstr(label).get()).str();
    };
    CHECK(unit(attribute.get(), L"  ") == L"PRESSURE.BAR");
    CHECK(unit(attribute.get(), L" Pa ") == L"PRESSURE.PA");
    CHECK(unit(attribute.get(), L"PA") == L"PRESSURE.PAUPPER");
    CHECK(unit(attribute.get(), L"pA") == L"PRESSURE.PA");  // the first of two
    CHECK(unit(attribute.get(), L"\tPa") == L"");           // only blanks are trimmed
    CHECK(unit(attribute.get(), L"psi") == L"");
    CHECK(unit(pump.get(), L"bar") == L"");
    call(kit, &IHostKit::FailCall, 9L, long{S_FALSE});  // the first match has no text: no other
    CHECK(unit(attribute.get(), L"pA") == L"");
    CHECK(error_count() == 0);
    CHECK(unit(nullptr, L"bar") == L"");
    // What was found counts although a later one fails.
    fail(L"UnitObject.get_Label", 2);
    CHECK(unit(attribute.get(), L"BAR") == L"PRESSURE.BAR");
    const std::wstring report = L"Tessera.GFunctions|Public Function 'GetKelosPhysUnit'\n";
    CHECK(take_errors() == report + report);
}

TEST_CASE_FIXTURE(HostFunctionsFixture,
                  "a document has a mapping table when one of its objects does") {
    const auto is_mapping_table = [&](const wchar_t* name) {
        return get(functions, &ITesseraGFunctions::ISMappingTable, document(name).get()) !=
               VARIANT_FALSE;
    };
    CHECK(is_mapping_table(L"Datenblatt"));
    CHECK_FALSE(is_mapping_table(L"Leer"));
    for (const wchar_t* const skipped : {L"ObjectList.get_Item", L"PlainObject.get_XObj"}) {
        fail(skipped, 1);  // the object before the table
        CHECK(is_mapping_table(L"Datenblatt"));
    }
    CHECK(error_count() == 0);
    CHECK_FALSE(is_mapping_table(L"no such document"));
    CHECK(error(1) == L"Tessera.GFunctions|Private sub 'SetMappingTable'");
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(HostFunctionsFixture, "encoding asks the host's compressor and encoder") {
    log_calls();
    const std::wstring encoded = text(encode, L"text");
    CHECK(calls() ==
          LR"(
new Kelos.ByteCompressor
ByteCompressor.Compress
new Kelos.ByteTextEncoder
ByteTextEncoder.EncodeBytes
)");
    CHECK(text(decode, encoded) == L"text");
    CHECK(calls() ==
          LR"(
new Kelos.ByteTextEncoder
ByteTextEncoder.DecodeText "S0JDMQgAAAB4nCthSGWoYChhAAAIzgHG"
new Kelos.ByteCompressor
ByteCompressor.Expand
)");
}
