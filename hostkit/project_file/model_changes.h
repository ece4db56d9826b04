// What was changed in a model since its file was read, as changes of that file.
#pragma once

#include "hostkit/model/model_data.h"
#include "hostkit/project_file/markup_edits.h"
#include "hostkit/project_file/xml_tree.h"

namespace hostkit::project_file {

// `original` is what the file holds, and `root` its elements. Throws when something was changed
// that a project file does not keep.
MarkupEdits changes_between(const Model& original, const Model& changed, const XmlElement& root);

}  // namespace hostkit::project_file
