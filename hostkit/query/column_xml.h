// The XML that a column definition writes about itself.
#pragma once

#include <string>

#include "hostkit/query/query_data.h"
#include "kelos.h"

namespace hostkit {

// Appends <Column Name= Heading= Property= PropertyConstant= Parameter= Unit= LCID= Shown=/> to the
// node.
void write_column(IXMLDOMNode* owner, const ColumnSettings& column, const std::wstring& heading);

}  // namespace hostkit
