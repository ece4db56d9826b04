// Queries, their results and their containers as automation objects.
#pragma once

#include "automation/com_ptr.h"
#include "hostkit/model/objects.h"
#include "hostkit/query/query_run.h"

namespace hostkit {

// A query of the project file. All handles of it share what its last run found.
automation::ComPtr<IKelosQuery> make_query(const ModelRef& model, QueryDefinition& query);
// Holds the query as its late-bound TopQuery.
automation::ComPtr<IDispatch> make_query_container(const ModelRef& model, QueryDefinition& query);

}  // namespace hostkit
