// Queries, their columns, results and values as automation objects.
#pragma once

#include "automation/com_ptr.h"
#include "hostkit/objects/objects.h"
#include "hostkit/query/property_values.h"
#include "hostkit/query/query_run.h"

namespace hostkit {

// A query of the project file. All handles of it share what its last run found.
automation::ComPtr<IKelosQuery> make_query(const ModelRef& model, QueryDefinition& query);
// Holds the query as its late-bound TopQuery.
automation::ComPtr<IDispatch> make_query_container(const ModelRef& model, QueryDefinition& query);

// A definition of a query's column; what is set on it stays with the query.
automation::ComPtr<IKelosQColumnDef> make_column_definition(const ModelRef& model, Column& column);
// Appends <Column Name= Heading= Property= PropertyConstant= Parameter= Unit= LCID= Shown=/> to the
// node.
void write_column(IXMLDOMNode* owner, const ColumnSettings& column, const std::wstring& heading);

// The values that an evaluator delivers.
automation::ComPtr<IKelosValueList> make_value_list(PropertyValues values);

}  // namespace hostkit
