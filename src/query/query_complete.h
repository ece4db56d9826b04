// A whole query result as one content document.
#pragma once

#include "archive/archive_node.h"
#include "query/hquery.h"

namespace tessera {

// Appends one "Content" element for every column heading and one for every cell from the cursor's
// row on to the contents root. Positions are "row;column"; row 0 holds the headings. An abort ends
// the walk.
void write_query(HQuery& cursor, const ArchiveNode& contents_root);

}  // namespace tessera
