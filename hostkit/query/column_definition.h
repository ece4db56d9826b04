// Column definitions as automation objects: those of a query, and free ones that callers create.
#pragma once

#include "automation/com_ptr.h"
#include "hostkit/model/objects.h"
#include "hostkit/query/query_data.h"

namespace hostkit {

// A definition of a query's column; what is set on it stays with the query.
automation::ComPtr<IKelosQColumnDef> make_column_definition(const ModelRef& model, Column& column);

}  // namespace hostkit
