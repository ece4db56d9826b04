// Links the reader of packages, which no client reaches.
#include "cli/package/package_reader.h"

#include "cli/failure.h"
#include "package/zip_builder.h"
#include "support/com_fixture.h"

using namespace cli;

namespace {

constexpr auto types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string relationship(const std::string& type, const std::string& target,
                         const std::string& more = {}) {
    return "<r:Relationship Id=\"r1\" Type=\"" + std::string(types) + type + "\" Target=\"" +
           target + "\" " + more + "/>";
}

PackageReader package_with(const std::string& part, const std::string& bytes) {
    return {L"x.xlsx", test::zip_of({{part, bytes}})};
}

std::wstring target_of(const std::string& part, const std::string& target) {
    const std::size_t folder = part.rfind('/') + 1;
    const PackageReader package = package_with(
        part.substr(0, folder) + "_rels/" + part.substr(folder) + ".rels",
        "<r:Relationships xmlns:r=\"u\">" + relationship("styles", target) + "</r:Relationships>");
    const std::string found = package.relationships(part).front().target;
    return {found.begin(), found.end()};
}

class EventText : public XmlHandler {
  public:
    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        text_ += L"<" + std::wstring(name) + L" " + attributes.text(L"id") + L">";
    }
    void end(std::wstring_view) override { text_ += L"</>"; }
    void text(std::wstring_view piece) override { text_ += piece; }
    std::wstring text_;
};

std::wstring events(const std::string& xml) {
    EventText handler;
    try {
        read_xml(xml, handler, L"part");
    } catch (const Failure& failure) {
        return failure.text();
    }
    return handler.text_;
}

}  // namespace

TEST_CASE_FIXTURE(test::ComFixture, "relationships lead to parts, from wherever they are named") {
    CHECK(target_of("xl/workbook.xml", "styles.xml") == L"xl/styles.xml");
    CHECK(target_of("xl/workbook.xml", "/xl/Styles.xml") == L"xl/Styles.xml");
    CHECK(target_of("xl/worksheets/sheet1.xml", "../a/./b.xml") == L"xl/a/b.xml");
    CHECK(target_of("xl/workbook.xml", "../../../../etc/passwd") == L"etc/passwd");
    CHECK(target_of("", "xl/workbook.xml") == L"xl/workbook.xml");

    const PackageReader package = package_with(
        "_rels/.rels", "<Relationships>" +
                           relationship("hyperlink", "http://x/y", "TargetMode=\"External\"") +
                           relationship("officeDocument", "xl/workbook.xml") + "</Relationships>");
    const auto found = package.relationships("");
    CHECK(find_relationship(found, L"hyperlink") == nullptr);
    REQUIRE(find_relationship(found, L"officeDocument"));
    CHECK(find_relationship(found, L"styles") == nullptr);
    CHECK(package.relationships("xl/none.xml").empty());
}

TEST_CASE_FIXTURE(test::ComFixture, "a part that is missing or no XML is told by its name") {
    const PackageReader package = package_with("a.xml", "<a><b></a>");
    EventText handler;
    CHECK_THROWS_AS(package.read_part("a.xml", handler), Failure);
    try {
        package.read("xl/workbook.xml");
        FAIL("it was read");
    } catch (const Failure& failure) {
        CHECK(failure.text() ==
              L"\"x.xlsx\" cannot be read: its part \"xl/workbook.xml\" is missing");
    }
}

TEST_CASE_FIXTURE(test::ComFixture,
                  "XML comes as events, whatever the platform's parser makes of it") {
    const std::wstring broken = L"part is not well-formed XML; save the file anew";
    CHECK(events("<x:a xmlns:x='u' x:id='1&#10;2'> <b/>t</x:a>") == L"<a 1\n2> <b ></>t</>");
    CHECK(events("<a>1&#13;&#10;2&#9;&lt;&#x41;&#x1F600;&#228;<![CDATA[&#10;<]]></a>") ==
          L"<a >1\r\n2\t<A\xD83D\xDE00\xE4&#10;<</>");
    CHECK(events(std::string("\xFF\xFE<\0a\0/\0>\0", 10)) == L"<a ></>");
    for (const char* text : {"", " ", "<a>", "<a><b>", "<a><b></a>", "<a/><a/>", "text", "<a/>x<"})
        CHECK(events(text).starts_with(broken));
    CHECK(events("<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>") == broken);
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";
    CHECK(events(deep) == broken);
}

TEST_CASE_FIXTURE(test::ComFixture, "long texts come whole, wherever a block of them ends") {
    std::string text;
    std::wstring expected;
    for (int i = 0; i < 4000; ++i) {
        text += "F\xC3\xB6rder\xE2\x82\xAC\xF0\x9F\x98\x80";
        expected += L"F\xF6rder\x20AC\xD83D\xDE00";
    }
    for (int i = 0; i < 9000; ++i) {
        text += "\xE4\xB8\xAD";
        expected += L'\x4E2D';
    }
    for (std::size_t shift = 0; shift < 8; ++shift) {
        const bool is_whole = events("<a>" + std::string(shift, 'x') + text + "</a>") ==
                              L"<a >" + std::wstring(shift, L'x') + expected + L"</>";
        CHECK_MESSAGE(is_whole, shift);
    }
}
