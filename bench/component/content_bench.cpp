// Writing one content object, and reading it back.

#include "bench/component/blueprint.h"
#include "bench/component/measure.h"
#include "bench/component/project.h"

namespace bench {
namespace {

// Elements in one timed repetition, each repetition in a document of its own.
constexpr int elements = 200;
constexpr int rounds = 41;

dom::Node child(const dom::Node& node, const wchar_t* name) {
    return dom::child_named(node, name);
}

// The "Content" element of a property's row, with so many value items.
dom::Node sample_content(int items) {
    const Project project;
    const auto document = execute(project, {});
    const auto content = child(dom::root(document), L"Content");
    const auto list = child(content, L"ValueItems");
    const auto item = child(list, L"ValueItem");
    call(list, &IXMLDOMNode::removeChild, item.get(), nullptr);
    for (int i = 0; i < items; ++i) {
        const auto copy = get(item, &IXMLDOMNode::cloneNode, VARIANT_TRUE);
        call(list, &IXMLDOMNode::appendChild, copy.get(), nullptr);
    }
    return content;
}

ComPtr<ITessera> content_object(const dom::Node& content) {
    auto object = create<ITessera>(L"Tessera.Tessera");
    call(object, &ITessera::put_XMLNode, nullptr, content.get());
    return object;
}

Figures write(int items) {
    const dom::Node sample = sample_content(items);
    const auto object = content_object(sample);
    const Blueprint blueprint(sample);
    return compare(
        rounds, elements,
        [&] {
            const RootedDocument target(L"Contents");
            return seconds([&] {
                for (int i = 0; i < elements; ++i)
                    get(object, &ITessera::get_XMLNode, target.root.get());
            });
        },
        [&] {
            const RootedDocument target(L"Contents");
            return seconds([&] {
                for (int i = 0; i < elements; ++i)
                    blueprint.create(target.document.get(), target.root.get());
            });
        });
}

Figures read(int items) {
    const dom::Node sample = sample_content(items);
    const auto object = create<ITessera>(L"Tessera.Tessera");
    const std::vector<Bstr> paths = Blueprint(sample).item_paths();
    return compare(
        rounds, elements,
        [&] {
            return seconds([&] {
                for (int i = 0; i < elements; ++i)
                    call(object, &ITessera::put_XMLNode, nullptr, sample.get());
            });
        },
        [&] {
            return seconds([&] {
                for (int i = 0; i < elements; ++i)
                    read_items(sample.get(), paths);
            });
        });
}

}  // namespace

Benchmarks content_benchmarks() {
    constexpr char creation[] = "direct creation of the same element";
    return {
        {"write-0", "one content object written, no items", creation, 0.8, [] { return write(0); }},
        {"write-1", "one content object written, 1 item", creation, 0.8, [] { return write(1); }},
        {"write-20", "one content object written, 20 items", creation, 0.8,
         [] { return write(20); }},
        {"read", "one content element read back", "one path expression per item", 0.12,
         [] { return read(1); }},
    };
}

}  // namespace bench
