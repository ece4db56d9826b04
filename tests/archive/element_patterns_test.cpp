// Tests of internals: what is cloned and filled in is what would have been made node by node.

#include "archive/element_patterns.h"
#include "content/tessera_content.h"
#include "support/com_fixture.h"
#include "support/heap.h"

using automation::Bstr;
using automation::get;
using automation::Variant;
using namespace automation::literals;
using tessera::ArchiveNode;

namespace {

// The way without a draft: every record makes its nodes as it is written.
ArchiveNode write_plainly(tessera::Tessera& content, ArchiveNode owner) {
    if (owner.is_document()) owner = tessera::Tessera::create_contents_root(std::move(owner));
    ArchiveNode node = tessera::XML_WriteTitle(owner, L"Content"_bstr, L"1"_bstr);
    content.kelos_object().write_below(node);
    content.property().write_below(node);
    content.value().write_below(node);
    content.document().write_below(node);
    content.value_items().write_below(node);
    return node;
}

// A content object of any kind of row: `kind` decides types and shape, `row` the texts.
automation::ComPtr<tessera::Tessera> content_of(int kind, int row) {
    auto content = automation::make<tessera::Tessera>();
    const std::wstring number = std::to_wstring(row);
    content->document().set_pointer(L"S!A" + number);
    content->property().set_get_name(kind % 2 ? L"Description" : L"Name & \"<\x00E4\n\t" + number);
    const Variant values[] = {Variant(),
                              Variant(L"x" + number),
                              Variant(2.5 * row),
                              Variant(static_cast<long>(-row)),
                              Variant(row % 2 == 0),
                              Variant(std::wstring_view(L"a\0b", 3)),
                              Variant(std::wstring(static_cast<std::size_t>(row) * 300, L'y'))};
    const auto& value = values[static_cast<std::size_t>(kind) % std::size(values)];
    content->value().set_kelos_value(uccVBString, value);
    for (int i = 0; i < kind; ++i) {
        const auto item = automation::make<tessera::ValueItem>();
        item->SetValue(uccVBString, values[static_cast<std::size_t>(i) % std::size(values)]);
        item->SetDisplayValue(uccVBString, Variant(number + L":" + std::to_wstring(i)));
        content->value_items().append(item);
    }
    return content;
}

// More kinds than shapes are kept, one of them with too many elements to be kept at all; each comes
// several times, and all of them again.
constexpr int kinds[] = {0, 1, 1, 1, 0, 2, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 0, 300, 300, 3, 3, 3, 1};

dom::Document document_of_class(const wchar_t* name) {
    return automation::create_object<IXMLDOMDocument>(name);
}

dom::Element element_of(const dom::Document& document) {
    return dom::create_element(document, L"Owner"_bstr);
}

// What stands below an owner that `make` answers, once it is written by `write`.
template <class Make, class Write>
std::wstring written(Make&& make, Write&& write) {
    const dom::Node owner = make();
    for (int row = 0; row < static_cast<int>(std::size(kinds)); ++row)
        write(*content_of(kinds[row], row), owner);
    return dom::xml(owner).str();
}

}  // namespace

TEST_CASE_FIXTURE(test::ComFixture, "cloned elements are what would have been made node by node") {
    const auto check = [](const auto& make_owner) {
        const std::wstring fast =
            written(make_owner, [](tessera::Tessera& content, const dom::Node& owner) {
                CHECK(dom::name(content.write_below(owner).node()).view() == L"Content");
            });
        CHECK(fast.size() > 20000);
        CHECK(fast == written(make_owner, [](tessera::Tessera& content, const dom::Node& owner) {
                  write_plainly(content, owner);
              }));
    };
    // A document, an element in one, a detached one and a fragment; of this parser's class and of
    // another's; one that has children already.
    for (const wchar_t* const name : {L"Msxml2.DOMDocument", L"Msxml2.DOMDocument.6.0"}) {
        const dom::Document document = document_of_class(name);
        CAPTURE(Bstr(name));
        check([&] { return dom::Node(document_of_class(name)); });
        check([&] {
            const dom::Document own = document_of_class(name);
            dom::append(own, element_of(own));
            return dom::root(own);
        });
        check([&] { return dom::Node(element_of(document)); });
        check([&] { return dom::Node(get(document, &IXMLDOMDocument::createDocumentFragment)); });
        check([&] {
            const dom::Element owner = element_of(document);
            dom::append(owner, dom::create_element(document, L"Content"_bstr));
            return dom::Node(owner);
        });
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(test::ComFixture, "shapes that come and go leave no pattern behind") {
    const auto write_all_shapes = [] {
        const dom::Document document = document_of_class(L"Msxml2.DOMDocument");
        const dom::Node owner = element_of(document);
        for (const int kind : kinds)
            content_of(kind, 1)->write_below(owner);
    };
    write_all_shapes();
    const std::size_t before = test::busy_bytes();
    for (int round = 0; round < 5; ++round)
        write_all_shapes();
    CHECK(test::busy_bytes() < before + 4096);
}

TEST_CASE_FIXTURE(test::ComFixture, "an owner that takes no elements stays as it is") {
    const dom::Document document = document_of_class(L"Msxml2.DOMDocument");
    const auto text = get(document, &IXMLDOMDocument::createTextNode, Bstr(L"x").get());
    const auto content = content_of(1, 1);
    for (int time = 1; time <= 3; ++time) {
        CHECK_FALSE(content->write_below(dom::Node(text.get())));
        CHECK(error_count() == time);
        CHECK(error(time) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
    }
}

TEST_CASE_FIXTURE(test::ComFixture,
                  "what the host changes while a row is drafted stays out of it") {
    tessera::Draft draft;
    const auto root = draft.append(tessera::Draft::none, L"Root"_bstr);
    std::wstring text = L"before";
    draft.set(root, L"Data"_bstr, text);
    text = L"behind";
    CHECK(draft.text(draft.attributes().front()).view() == L"before");
    // One of the name stands there already: it gets the text, and no second one comes.
    draft.set(root, L"Data"_bstr, L"again");
    REQUIRE(draft.attributes().size() == 1);
    CHECK(draft.text(draft.attributes().front()).view() == L"again");
}
