// Loads a project file into a model.
#pragma once

#include "hostkit/model/model_data.h"

namespace hostkit::project_file {

// Throws with one sentence that names the file and, where one is known, the line.
std::shared_ptr<Model> load(const std::wstring& path);
// The same for the bytes of a file that is there, or shall be.
std::shared_ptr<Model> load(ProjectSource source);

}  // namespace hostkit::project_file
