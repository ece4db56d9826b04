// Queries as plain data: what the project file describes, and what a run found.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hostkit/model/model_data.h"

namespace hostkit {

// What a column definition is set to.
struct ColumnSettings {
    std::wstring name;
    LocalText heading;
    long constant = 0;
    std::wstring parameter;
    std::wstring unit;
    long lcid = 0;
    bool shown = true;
    bool relevant = true;
};

// A column of a query. With an attribute's full name the cells show that attribute of the row's
// object, else the object itself.
struct Column {
    ColumnSettings settings;
    std::wstring attribute;
};

enum class CellKind { evaluated, missing, given, translated, referring };

// What the project file says about one cell.
struct CellDefinition {
    CellKind kind = CellKind::evaluated;
    Element* object = nullptr;  // shown by the cell, or what its value refers to
    std::wstring text;
    automation::Variant value;
    std::wstring property;
    long sub_type = 0;
    std::wstring sub_key;
};

struct QueryDefinition;

struct RowDefinition {
    Element* object = nullptr;
    std::vector<CellDefinition> cells;
    std::unique_ptr<QueryDefinition> nested;
};

// Where the rows come from.
enum class RowSource {
    listed,    // the rows are in the file
    selected,  // objects of a type below an object
    generated  // one row, many times
};

struct ObjectSelection {
    long system_type = 0;      // 0: any
    Element* below = nullptr;  // nothing: below the object of the row that the query is nested in
    bool direct = false;       // only objects directly below
    bool recursive = false;    // each row nests this query, on its own object
};

// What a run found.
struct QueryState {
    QueryState(QueryDefinition& query_definition, Element* query_context)
        : definition(&query_definition), context(query_context) {}

    QueryDefinition* definition;
    Element* context;  // the object of the row that the query is nested in
    bool ran = false;
    std::vector<Element*> found;  // of a selection
};

struct QueryDefinition {
    explicit QueryDefinition(Model& owning_model) : model(owning_model) {}
    QueryDefinition(const QueryDefinition&) = delete;
    QueryDefinition& operator=(const QueryDefinition&) = delete;

    Model& model;
    std::wstring name;
    std::vector<std::unique_ptr<Column>> columns;
    RowSource source = RowSource::listed;
    std::vector<RowDefinition> rows;  // listed: all of them; generated: the one
    long generated_count = 0;
    ObjectSelection selection;
    std::unique_ptr<QueryDefinition> nested;  // of every selected row
    QueryState state{*this, nullptr};         // of a query that is nested in none
};

}  // namespace hostkit
