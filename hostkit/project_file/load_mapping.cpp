#include "hostkit/model/model_functions.h"
#include "hostkit/project_file/loader_parts.h"

namespace hostkit::project_file {
namespace {

using automation::Variant;

// What the rows of one <rows> element share.
struct RowsContext {
    Model& model;
    Project* project;
    std::wstring sheet;
    Element* object = nullptr;
};

// A whole number is a number, anything else a text.
Variant parameter_of(const Node& node) {
    const auto text = node.find(L"index");
    if (!text || text->empty()) return {};
    long number = 0;
    return read_number(*text, number) ? Variant(number) : Variant(*text);
}

std::wstring target_text(const Node& node, const RowsContext& context) {
    if (auto target = node.find(L"target")) return *std::move(target);
    return context.sheet + L"!" + node.text(L"cell");
}

Element* source_of(const Node& node, const RowsContext& context) {
    Element* source = context.object;
    if (const auto path = node.find(L"object"))
        source = &element_at(context.model, node, *path, context.project);
    const auto name = node.find(L"attribute");
    if (!name) return source;
    if (!source) node.fail(L"\"attribute\" needs an object");
    if (Attribute* const attribute = find_attribute(*source, *name)) return attribute;
    node.fail(L"\"" + path_of(*source) + L"\" has no attribute \"" + *name + L"\"");
}

MappingRow load_row(const Node& node, const RowsContext& context) {
    MappingRow row;
    row.target = target_text(node, context);
    row.direction = node.text(L"io", L"");
    if (const auto value = node.find(L"value")) {
        row.value = value_of(node, value_type(node, ValueType::text), *value);
    } else if ((row.source = source_of(node, context))) {
        row.property = node.text(L"property");
        row.index = parameter_of(node);
        row.unit = node.text(L"unit", L"");
    }
    return row;
}

MappingBlock load_generated(const Node& node, const RowsContext& context) {
    MappingBlock block;
    block.generated = true;
    block.repeat = node.number(L"rows");
    block.first_number = node.number(L"from", 1);
    if (block.repeat < 0) node.fail(L"the number of rows is negative");
    node.children(
        {{L"row", [&](const Node& row) { block.rows.push_back(load_row(row, context)); }}});
    return block;
}

void load_rows(const Node& node, MappingTable& table, RowsContext context) {
    context.sheet = node.text(L"sheet", L"");
    if (const auto path = node.find(L"object"))
        context.object = &element_at(context.model, node, *path, context.project);
    MappingBlock plain;
    const auto end_plain = [&] {
        if (!plain.rows.empty()) table.add(std::move(plain));
        plain = {};
    };
    node.children({{L"row", [&](const Node& row) { plain.rows.push_back(load_row(row, context)); }},
                   {L"generate", [&](const Node& generated) {
                        end_plain();
                        table.add(load_generated(generated, context));
                    }}});
    end_plain();
}

}  // namespace

void load_mapping(LoadContext& context, const Node& node, Element& owner) {
    if (owner.kind != ElementKind::object) node.fail(L"<mapping> may stand inside <object> only");
    if (owner.mapping) node.fail(L"the object has a second <mapping>");
    owner.mapping = std::make_unique<MappingTable>();
    context.later.push_back(
        [&model = context.model, &owner, source = Node(node.element(), node.path())] {
            const RowsContext rows{model, owner.project, {}, nullptr};
            source.children(
                {{L"rows", [&](const Node& child) { load_rows(child, *owner.mapping, rows); }}});
        });
}

}  // namespace hostkit::project_file
