#include <algorithm>
#include <cstdint>
#include <limits>

#include "automation/text.h"
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
    bool generated = false;
};

// A whole number is a number, anything else a text.
Variant parameter_of(const Node& node) {
    const auto text = node.find(L"index");
    if (!text || text->empty()) return {};
    long number = 0;
    return read_number(*text, number) ? Variant(number) : Variant(*text);
}

// Column letters and the row's number.
bool is_cell(std::wstring_view cell) {
    const auto is_letter = [](wchar_t c) {
        return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
    };
    const auto is_digit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    const auto number = std::ranges::find_if_not(cell, is_letter);
    return number != cell.begin() && number != cell.end() &&
           std::all_of(number, cell.end(), is_digit);
}

std::wstring target_text(const Node& node, const RowsContext& context) {
    if (auto target = node.find(L"target")) return *std::move(target);
    const std::wstring cell = node.text(L"cell");
    if (!is_cell(context.generated ? with_row(cell, 1) : cell))
        node.fail(L"\"" + cell + L"\" is no cell");
    return context.sheet + L"!" + cell;
}

std::wstring direction_of(const Node& node) {
    const std::wstring direction = node.text(L"io", L"");
    for (const std::wstring_view known : {L"", L"I", L"O", L"IO"})
        if (direction == known) return direction;
    node.fail(L"\"" + direction + L"\" is no direction: \"I\", \"O\" and \"IO\" are");
}

bool has_label(const UnitGroup& group, std::wstring_view label) {
    return std::ranges::any_of(group.units, [&](const auto& unit) {
        return automation::equal_ignoring_case(unit->label, label);
    });
}

// The label of a unit that the source can be in; of a source without unit it says nothing.
std::wstring unit_label_of(const Node& node, const Element& source) {
    const std::wstring text = node.text(L"unit", L"");
    const std::wstring_view label = trimmed(text);
    if (label.empty() || source.kind != ElementKind::attribute) return text;
    const Unit* const own = static_cast<const Attribute&>(source).type.unit;
    if (own && !has_label(*own->group, label))
        node.fail(L"\"" + own->group->name + L"\" has no unit with the label \"" +
                  std::wstring(label) + L"\"");
    return text;
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
    row.direction = direction_of(node);
    if (const auto value = node.find(L"value")) {
        row.value = value_of(node, value_type(node, ValueType::text), *value);
    } else if ((row.source = source_of(node, context))) {
        row.property = node.text(L"property");
        row.index = parameter_of(node);
        row.unit = unit_label_of(node, *row.source);
    }
    return row;
}

// Rows are counted, and numbered, with 32 bits.
void check_countable(const Node& node, const MappingBlock& block, long rows_before) {
    constexpr std::int64_t most = std::numeric_limits<long>::max();
    const std::int64_t repeat = block.repeat;
    if (rows_before + repeat * std::ssize(block.rows) > most || block.first_number + repeat > most)
        node.fail(L"there are more rows than can be counted");
}

MappingBlock load_generated(const Node& node, const RowsContext& context, long rows_before) {
    RowsContext inner = context;
    inner.generated = true;
    MappingBlock block;
    block.generated = true;
    block.repeat = node.number(L"rows");
    block.first_number = node.number(L"from", 1);
    if (block.repeat < 0) node.fail(L"the number of rows is negative");
    node.children({{L"row", [&](const Node& row) { block.rows.push_back(load_row(row, inner)); }}});
    check_countable(node, block, rows_before);
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
    node.children({{L"row",
                    [&](const Node& row) {
                        plain.rows.push_back(load_row(row, context));
                        check_countable(row, plain, table.count());
                    }},
                   {L"generate", [&](const Node& generated) {
                        end_plain();
                        table.add(load_generated(generated, context, table.count()));
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
