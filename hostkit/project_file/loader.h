// Loads a project file into a model.
#pragma once

#include "hostkit/model/model_data.h"

namespace hostkit::project_file {

// Throws with one sentence that names the file and, where one is known, the line.
std::shared_ptr<Model> load(const std::wstring& path);

}  // namespace hostkit::project_file
