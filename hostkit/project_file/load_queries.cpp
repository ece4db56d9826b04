#include "automation/text.h"
#include "host/known_properties.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/model/query_data.h"
#include "hostkit/project_file/loader_parts.h"

namespace hostkit::project_file {
namespace {

std::unique_ptr<QueryDefinition> load_query(LoadContext& context, const Node& node);

// ---- Columns ---------------------------------------------------------------------------------

// A number need not be one that is known: evaluating such a column gives nothing.
long load_constant(const Node& node) {
    const std::wstring name = node.text(L"property");
    long number = 0;
    if (read_number(name, number)) return number;
    const auto* const property = kelos::find_property_if([&](std::u16string_view known) {
        return automation::equal_ignoring_case(automation::as_wide(known), name);
    });
    if (property) return property->number;
    node.fail(L"there is no property \"" + name + L"\"");
}

void load_column(LoadContext& context, const Node& node, QueryDefinition& query) {
    query.columns.push_back(std::make_unique<Column>());
    Column& column = *query.columns.back();
    ColumnSettings& settings = column.settings;
    settings.name = node.text(L"name");
    settings.constant = load_constant(node);
    settings.parameter = node.text(L"parameter", L"");
    settings.unit = node.text(L"unit", L"");
    if (!settings.unit.empty()) unit_named(context.model, node, settings.unit);
    settings.lcid = node.number(L"lcid", 0);
    settings.shown = node.flag(L"shown", true);
    settings.relevant = node.flag(L"relevant", true);
    column.attribute = node.text(L"attribute", L"");
    settings.heading = LocalText(settings.name);
    const TextSlots slots{{L"heading", &settings.heading}};
    load_texts(node, slots);
    node.children({{L"translation", [&](const Node& translation) {
                        load_translation(context.model, translation, slots);
                    }}});
}

// ---- Rows ------------------------------------------------------------------------------------

Element* load_object_reference(LoadContext& context, const Node& node, std::wstring_view name) {
    const auto path = node.find(name);
    return path ? &element_at(context.model, node, *path, nullptr) : nullptr;
}

void load_translated(LoadContext& context, const Node& node, CellDefinition& cell) {
    cell.kind = CellKind::translated;
    cell.object = load_object_reference(context, node, L"translate");
    cell.property = node.text(L"property");
    cell.sub_type = node.number(L"sub-type", 0);
    cell.sub_key = node.text(L"sub-key", L"");
}

CellDefinition load_cell(LoadContext& context, const Node& node) {
    CellDefinition cell;
    const auto text = node.find(L"text");
    const auto value = node.find(L"value");
    cell.text = text ? *text : value.value_or(L"");
    if (node.flag(L"missing", false)) {
        cell.kind = CellKind::missing;
    } else if (node.find(L"translate")) {
        load_translated(context, node, cell);
    } else if (node.find(L"value-object")) {
        cell.kind = CellKind::referring;
        cell.object = load_object_reference(context, node, L"value-object");
    } else {
        cell.object = load_object_reference(context, node, L"object");
        if (!text && !value) return cell;
        cell.kind = CellKind::given;
        cell.value = value_of(node, value_type(node, ValueType::text), value.value_or(cell.text));
    }
    return cell;
}

RowDefinition load_row(LoadContext& context, const Node& node, const QueryDefinition& query) {
    RowDefinition row;
    row.object = load_object_reference(context, node, L"object");
    node.children(
        {{L"cell", [&](const Node& cell) { row.cells.push_back(load_cell(context, cell)); }},
         {L"query", [&](const Node& nested) {
              if (row.nested) nested.fail(L"a row nests one query only");
              row.nested = load_query(context, nested);
          }}});
    if (row.cells.size() > query.columns.size()) node.fail(L"there are more cells than columns");
    return row;
}

void load_generated(LoadContext& context, const Node& node, QueryDefinition& query) {
    query.source = RowSource::generated;
    query.generated_count = node.number(L"rows");
    if (query.generated_count < 0) node.fail(L"the number of rows is negative");
    query.rows.push_back(load_row(context, node, query));
}

void load_selection(LoadContext& context, const Node& node, QueryDefinition& query) {
    query.source = RowSource::selected;
    if (const auto type = node.find(L"type"))
        query.selection.system_type = system_type_named(context.model, node, *type);
    query.selection.below = load_object_reference(context, node, L"below");
    const std::wstring levels = node.text(L"levels", L"all");
    query.selection.direct = levels == L"direct";
    if (levels != L"all" && levels != L"direct")
        node.fail(L"\"levels\" is neither \"all\" nor \"direct\"");
    query.selection.recursive = node.flag(L"recursive", false);
    node.children({{L"query", [&](const Node& nested) {
                        if (query.nested || query.selection.recursive)
                            nested.fail(L"a selection nests one query only");
                        query.nested = load_query(context, nested);
                    }}});
}

// ---- Queries ---------------------------------------------------------------------------------

std::unique_ptr<QueryDefinition> load_query(LoadContext& context, const Node& node) {
    auto query = std::make_unique<QueryDefinition>(context.model);
    query->name = node.text(L"name", L"");
    const auto only_source = [&](const Node& child) {
        if (query->source != RowSource::listed || !query->rows.empty())
            child.fail(L"the rows of a query come from one source only");
    };
    node.children({{L"column", [&](const Node& column) { load_column(context, column, *query); }},
                   {L"row",
                    [&](const Node& row) {
                        if (query->source != RowSource::listed) only_source(row);
                        query->rows.push_back(load_row(context, row, *query));
                    }},
                   {L"select",
                    [&](const Node& selection) {
                        only_source(selection);
                        load_selection(context, selection, *query);
                    }},
                   {L"generate", [&](const Node& generated) {
                        only_source(generated);
                        load_generated(context, generated, *query);
                    }}});
    return query;
}

}  // namespace

void load_queries(LoadContext& context, const Node& node) {
    // Documents refer to queries by name, and queries to objects: all objects stand before them.
    node.children({{L"query", [&](const Node& child) {
                        auto query = load_query(context, child);
                        if (query->name.empty()) child.fail(L"the query has no name");
                        for (const auto& other : context.model.queries)
                            if (automation::equal_ignoring_case(other->name, query->name))
                                child.fail(L"there is a second query \"" + query->name + L"\"");
                        context.model.queries.push_back(std::move(query));
                    }}});
}

}  // namespace hostkit::project_file
