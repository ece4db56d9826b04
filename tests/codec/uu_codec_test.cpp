#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/sample_texts.h"
#include "codec/odd_code_pages.h"
#include "codec/uu_decode.h"
#include "codec/uu_encode.h"
#include "codec/uu_lanes.h"
#include "doctest/doctest.h"

using namespace tessera;

namespace {

const AnsiCodePage& page_1252 = AnsiCodePage::windows_1252();

using Faults = std::vector<std::pair<std::size_t, UuFault>>;

std::u16string decode(std::u16string_view text, Faults* faults = nullptr,
                      const AnsiCodePage& page = page_1252) {
    return UUDecode(text, page, [&](const UuMalformedLine& line) {
        REQUIRE(faults != nullptr);
        faults->emplace_back(line.position, line.fault);
    });
}

// One line, group by group, as the format is described.
std::optional<std::u16string> decode_line_literally(std::u16string_view line) {
    const int promised = page_1252.to_byte(line[0]) - 32;
    if (promised < 0 || line.size() % 4 != 1) return std::nullopt;
    std::u16string text;
    for (std::size_t at = 1; at < line.size(); at += 4) {
        int c[4];
        for (std::size_t i = 0; i < 4; ++i) {
            c[i] = page_1252.to_byte(line[at + i]) - 32;
            if (c[i] < 0) return std::nullopt;
            c[i] = c[i] == 64 ? 0 : c[i];
        }
        for (const int byte :
             {c[0] * 4 + c[1] / 16, c[1] % 16 * 16 + c[2] / 4, c[2] % 4 * 64 + c[3]}) {
            if (byte > 255) return std::nullopt;
            text += page_1252.to_char(static_cast<std::uint8_t>(byte));
        }
    }
    return text.substr(0, static_cast<std::size_t>(promised));
}

std::u16string all_characters() {
    std::u16string characters;
    for (unsigned byte = 0; byte < 256; ++byte)
        characters += page_1252.to_char(static_cast<std::uint8_t>(byte));
    return characters;
}

}  // namespace

TEST_CASE("texts have the known encoding and come back from it") {
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"", u""},
        {u"Cat", u"#0V%T"},
        {u"Ca", u"\"0V$`"},
        {u"C", u"!0P``"},
        {std::u16string(3, u'\0'), u"#````"},
        {u"ÿÿÿ", u"#____"},
        {u"€", u"!@```"},
        {std::u16string(45, u'\0'), u"M" + std::u16string(60, u'`')},
        {std::u16string(45, u'\0') + u"C", u"M" + std::u16string(60, u'`') + u"!0P``"},
    };
    for (const auto& [text, encoded] : cases) {
        CHECK(UUEncode(text, page_1252) == encoded);
        CHECK(decode(encoded) == text);
    }
    CHECK(UUEncode(u"Ж", page_1252) == UUEncode(u"?", page_1252));
}

TEST_CASE("any text of the code page comes back at every length") {
    samples::RandomTexts random(1);
    const std::u16string alphabets[] = {u"abc <>/=\"", u"aäöüß", all_characters()};
    for (const AnsiCodePage& page : {page_1252, shifted_page(), swapped_page()}) {
        for (std::size_t length = 0; length <= 400; ++length) {
            for (const std::u16string& alphabet : alphabets) {
                const std::u16string text = random.from(alphabet, length);
                CHECK(decode(UUEncode(text, page), nullptr, page) == text);
            }
        }
    }
    CHECK(UUEncode(u"ä", page_1252) == UUEncode(u"ö", swapped_page()));
    CHECK(UUEncode(u"Cat", page_1252) != UUEncode(u"Cat", shifted_page()));
}

TEST_CASE("codecs keep to the memory that they are given") {
    // One character needs converting, and nothing lies behind the last line.
    for (const std::size_t length : {1, 12, 45, 46, 90, 10'000}) {
        std::u16string text = samples::RandomTexts(1).query_rows(length);
        text[length / 2] = u'€';
        const std::vector<char16_t> exact(text.begin(), text.end());
        std::vector<char16_t> lines(uu_encoded_length(length));
        UUEncode({exact.data(), exact.size()}, page_1252, lines.data());
        std::vector<char16_t> room(uu_decoded_room(lines.size()));
        room.resize(UUDecode({lines.data(), lines.size()}, page_1252, {}, room.data()));
        CHECK(room == exact);
    }
}

TEST_CASE("a space reads as zero, in vectors as well as alone") {
    for (const std::size_t groups : {1, 15}) {
        std::u16string line(1 + 4 * groups, u' ');
        line[0] = static_cast<char16_t>(32 + 3 * groups);
        CHECK(decode(line) == std::u16string(3 * groups, u'\0'));
    }
}

TEST_CASE("the length character drops bytes but cannot add any") {
    CHECK(decode(u"!0V%T") == u"C");
    CHECK(decode(u" 0V%T") == u"");
    CHECK(decode(u"M0V%T") == u"Cat");
    CHECK(decode(u"`") == u"");
}

TEST_CASE("a malformed line is reported and left out, the other lines are kept") {
    const std::u16string good = UUEncode(std::u16string(45, u'x'), page_1252);
    std::u16string overflowing = good;
    overflowing[30] = u'\n';
    std::u16string without_length = good;
    without_length[0] = u'\x1F';
    Faults faults;
    // Of a line with two faults the incomplete group is the one that counts.
    const std::u16string text = overflowing + good + without_length + good + u"\x1F" + u"0V%";
    CHECK(decode(text, &faults) == std::u16string(90, u'x'));
    CHECK(faults == Faults{{0, UuFault::byte_overflow},
                           {122, UuFault::negative_length},
                           {244, UuFault::incomplete_group}});
    CHECK(UUDecode(text, page_1252, {}) == std::u16string(90, u'x'));
}

TEST_CASE("the input is cut every 61 characters, whatever its lines say") {
    // A short line in front shifts all others out of place.
    CHECK(decode(u"#0V%T" + UUEncode(std::u16string(45, u'x'), page_1252)) == u"Catxxx");
}

TEST_CASE("lines with odd characters decode as the group arithmetic says") {
    samples::RandomTexts random(2);
    const std::u16string odd = all_characters() + u"\u0141\u8020\u2161\uFFFF";
    const std::u16string alphabet = u" !#09AMZ_`";
    std::size_t malformed = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::u16string line = random.from(alphabet, 1 + random.number(61));
        for (std::uint32_t changes = random.number(4); changes > 0; --changes) {
            const auto at = random.number(static_cast<std::uint32_t>(line.size()));
            line[at] = odd[random.number(static_cast<std::uint32_t>(odd.size()))];
        }
        const auto expected = decode_line_literally(line);
        Faults faults;
        CHECK(decode(line, &faults) == expected.value_or(u""));
        CHECK(faults.size() == (expected ? 0 : 1));
        malformed += faults.size();
    }
    CHECK(malformed > 1'000);
}

TEST_CASE("vectors and single groups give the same result for any number of groups") {
    samples::RandomTexts random(3);
    for (std::size_t round = 0; round < 64; ++round) {
        const std::size_t groups = round / 4;
        std::u16string bytes;
        for (std::size_t i = 0; i < 3 * groups + uu::slack_lanes; ++i)
            bytes += static_cast<char16_t>(random.number(round % 2 == 0 ? 128 : 256));
        std::u16string codes(4 * groups, u'\0');
        std::u16string expected = codes;
        // The slack counts for the vectors, so that they may know less.
        const uu::LaneBytes known = uu::encode_groups(bytes.data(), groups, codes.data());
        CHECK((uu::encode_groups_portable(bytes.data(), groups, expected.data()) == known ||
               known == uu::LaneBytes::any));
        CHECK(codes == expected);

        std::u16string decoded(bytes.size(), u'\0');
        const uu::LaneBytes kind = uu::decode_groups(codes.data(), groups, decoded.data());
        CHECK(decoded.substr(0, 3 * groups) == bytes.substr(0, 3 * groups));
        CHECK(kind == uu::decode_groups_portable(codes.data(), groups, decoded.data()));
        for (char16_t& code : codes) {
            const char16_t kept = std::exchange(code, u'a');
            CHECK(uu::decode_groups(codes.data(), groups, decoded.data()) ==
                  uu::LaneBytes::invalid);
            code = kept;
        }
    }
}
