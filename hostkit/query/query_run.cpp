#include "hostkit/query/query_run.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>

#include "automation/conversion.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/query/property_values.h"

namespace hostkit {
namespace {

using automation::Variant;

bool is_within(long index, long count) noexcept {
    return index >= 1 && index <= count;
}

// What the file says about the row; nothing for a selected one.
const RowDefinition* definition_of(const QueryState& state, long row) {
    const QueryDefinition& query = *state.definition;
    switch (query.source) {
        case RowSource::listed:
            return &query.rows[static_cast<std::size_t>(row) - 1];
        case RowSource::generated:
            return &query.rows.front();
        case RowSource::selected:
            break;
    }
    return nullptr;
}

// The object that a row is about: its own, else that of the row above.
Element* object_of(const QueryState& state, long row) {
    if (state.definition->source == RowSource::selected)
        return state.found[static_cast<std::size_t>(row) - 1];
    Element* const own = definition_of(state, row)->object;
    return own ? own : state.context;
}

std::optional<CellContent> evaluated(Element& object, const ColumnSettings& settings) {
    const auto values = read_property(object, settings);
    if (!values) return {};
    CellContent content;
    content.object = &object;
    if (values->entries.empty()) return content;
    content.value = values->entries.front().value;
    content.text = automation::to_text(values->entries.front().display).str();
    return content;
}

std::optional<CellContent> evaluated_cell(Element* object, const Column& column) {
    if (object && !column.attribute.empty()) object = find_attribute(*object, column.attribute);
    if (!object) return {};
    return evaluated(*object, column.settings);
}

CellContent given_cell(const CellDefinition& cell, bool generated, long row) {
    CellContent content;
    content.object = cell.kind == CellKind::given ? cell.object : nullptr;
    content.text = generated ? with_row(cell.text, row) : cell.text;
    if (cell.kind == CellKind::translated)
        content.translated = &cell;
    else if (cell.kind == CellKind::referring)
        content.value_object = cell.object;
    else if (generated && cell.value.is_string())
        content.value = Variant(with_row(cell.value.text(), row));
    else
        content.value = cell.value;
    return content;
}

// What a selection looks below. A query that nests itself starts below the given object and goes on
// below its rows.
Element* top_of(const QueryDefinition& query, Element* context) {
    const ObjectSelection& selection = query.selection;
    return context && (selection.recursive || !selection.below) ? context : selection.below;
}

QueryDefinition* nested_definition(const QueryState& state, long row) {
    if (const RowDefinition* const definition = definition_of(state, row))
        return definition->nested.get();
    QueryDefinition& query = *state.definition;
    return query.selection.recursive ? &query : query.nested.get();
}

// Counts rows with those nested in them, up to what automation can hold. A nested result depends on
// nothing but its query and the object that it starts from, and is counted once: the rows of a
// query that nests itself double with every level of objects.
class RowCounter {
  public:
    std::int64_t count(const QueryState& state) {
        std::int64_t total = row_count(state);
        if (state.definition->source == RowSource::generated) {
            // Every row nests the same.
            if (total > 0) total *= 1 + nested_count(state, 1);
        } else {
            for (long row = 1, rows = row_count(state); row <= rows && total < most; ++row)
                total += nested_count(state, row);
        }
        return std::min(total, most);
    }

  private:
    static constexpr std::int64_t most = std::numeric_limits<long>::max();

    std::int64_t nested_count(const QueryState& state, long row) {
        QueryDefinition* const nested = nested_definition(state, row);
        if (!nested) return 0;
        Element* const context = object_of(state, row);
        const bool is_selected = nested->source == RowSource::selected;
        const std::pair key(nested, is_selected ? top_of(*nested, context) : context);
        if (const auto known = counts_.find(key); known != counts_.end()) return known->second;
        QueryState result(*nested, context);
        run_query(result);
        return counts_[key] = count(result);
    }

    std::map<std::pair<QueryDefinition*, Element*>, std::int64_t> counts_;
};

void select(const ObjectSelection& selection, Element& top, std::vector<Element*>& found) {
    const auto take = [&](Element& element) {
        const bool suits =
            selection.system_type == 0 || selection.system_type == element.system_type;
        if (suits) found.push_back(&element);
    };
    if (!selection.direct) return walk_below(top, take);
    for (const auto& child : top.children)
        take(*child);
}

}  // namespace

void run_query(QueryState& state) {
    QueryDefinition& query = *state.definition;
    if (query.source == RowSource::selected) {
        state.found.clear();
        if (Element* const top = top_of(query, state.context))
            select(query.selection, *top, state.found);
    }
    state.ran = true;
}

long row_count(const QueryState& state) noexcept {
    if (!state.ran) return 0;
    switch (state.definition->source) {
        case RowSource::listed:
            return static_cast<long>(state.definition->rows.size());
        case RowSource::selected:
            return static_cast<long>(state.found.size());
        case RowSource::generated:
            return state.definition->generated_count;
    }
    return 0;
}

long total_row_count(const QueryState& state) {
    return static_cast<long>(RowCounter().count(state));
}

std::optional<QueryState> nested_query(const QueryState& state, long row) {
    if (!is_within(row, row_count(state))) return {};
    QueryDefinition* const nested = nested_definition(state, row);
    if (!nested) return {};
    QueryState result(*nested, object_of(state, row));
    run_query(result);
    return result;
}

std::optional<CellContent> cell_at(const QueryState& state, long row, long column) {
    const QueryDefinition& query = *state.definition;
    const auto columns = static_cast<long>(query.columns.size());
    if (!is_within(row, row_count(state)) || !is_within(column, columns)) return {};
    const auto position = static_cast<std::size_t>(column) - 1;
    const RowDefinition* const definition = definition_of(state, row);
    const bool described = definition && position < definition->cells.size();
    const CellDefinition by_default;
    const CellDefinition& cell = described ? definition->cells[position] : by_default;
    switch (cell.kind) {
        case CellKind::missing:
            return {};
        case CellKind::given:
        case CellKind::translated:
        case CellKind::referring:
            return given_cell(cell, query.source == RowSource::generated, row);
        case CellKind::evaluated:
            break;
    }
    Element* const object = cell.object ? cell.object : object_of(state, row);
    return evaluated_cell(object, *query.columns[position]);
}

}  // namespace hostkit
