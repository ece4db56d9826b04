// Loads a project file into a model.
#pragma once

#include "hostkit/model/model_data.h"
#include "hostkit/project_file/xml_tree.h"

namespace hostkit::project_file {

// Throws with one sentence that names the file and, where one is known, the line.
std::shared_ptr<Model> load(const std::wstring& path);
// The same for a file whose elements have been read.
std::shared_ptr<Model> load(ProjectSource source, const XmlElement& root);

}  // namespace hostkit::project_file
