// Tags that are found and changed in markup of others.

#include "cli/package/markup.h"

#include <doctest/doctest.h>

using namespace cli;

namespace {

// The tags of a text, parted by blanks: "<a" begins, "</a" ends, "<a/" is empty.
std::string tags_of(std::string_view text) {
    std::string tags;
    markup::Scanner scanner(text);
    while (const auto tag = scanner.next())
        tags.append(tag->is_end ? "</" : "<").append(tag->name).append(tag->is_empty ? "/ " : " ");
    return tags;
}

}  // namespace

TEST_CASE("tags are found wherever their signs stand, and only there") {
    const struct {
        std::string_view text;
        std::string_view tags;
    } cases[] = {
        {"<?xml version='1'?><!-- <x> --><a><b c='>' d=\"/>\"/>t</a>", "<a <b/ </a "},
        {"<x:a\n y:z = '1' ><![CDATA[<b>]]></x:a >", "<a </a "},
        {"<a", ""},
        {"<a b='", ""},
        {"<!-- <a>", ""},
        {"< ><", "< "},
        {"", ""},
    };
    for (const auto& [text, tags] : cases)
        CHECK(tags_of(text) == tags);
}

TEST_CASE("an element ends with its own end tag, and texts that end too early end it") {
    const std::string_view text = "<r><a><a/><a></a></a><b/></r>";
    const auto element = markup::find(text, "a");
    REQUIRE(element);
    CHECK(text.substr(markup::end_of(text, *element)) == "<b/></r>");
    const std::string_view broken = "<a><b>";
    CHECK(markup::end_of(broken, *markup::find(broken, "a")) == broken.size());
}

TEST_CASE("attributes are read, set and taken away, the others stay") {
    const std::string_view text = "<c x:id='7' r = \"A1\" n='12x' s=\"3\"/>";
    const auto tag = markup::find(text, "c");
    REQUIRE(tag);
    CHECK(markup::attribute(*tag, "id") == "7");
    CHECK(markup::attribute(*tag, "r") == "A1");
    CHECK(!markup::attribute(*tag, "t"));
    CHECK(markup::number(*tag, "s") == 3);
    CHECK(!markup::number(*tag, "n"));
    CHECK(markup::with_attribute(*tag, "s", "4") == "<c x:id='7' r = \"A1\" n='12x' s=\"4\"/>");
    CHECK(markup::with_attribute(*tag, "t", "b") ==
          "<c x:id='7' r = \"A1\" n='12x' s=\"3\" t=\"b\"/>");
    CHECK(markup::without_attribute(*tag, "n") == "<c x:id='7' r = \"A1\" s=\"3\"/>");
}

TEST_CASE("children go to the end of their parent, with its prefix, and are counted") {
    const std::string_view text = "<x:r><x:l count=\"1\"><x:i/></x:l><x:e/></x:r>";
    const std::string children = markup::prefixed("<i a=\"&lt;\">t</i>", "x:");
    CHECK(markup::with_children(text, *markup::find(text, "l"), children, 1) ==
          "<x:r><x:l count=\"2\"><x:i/><x:i a=\"&lt;\">t</x:i></x:l><x:e/></x:r>");
    CHECK(markup::with_children(text, *markup::find(text, "e"), children, 1) ==
          "<x:r><x:l count=\"1\"><x:i/></x:l><x:e><x:i a=\"&lt;\">t</x:i></x:e></x:r>");
}
