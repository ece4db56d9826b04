// Saves a changed model into the file that it came from.
#pragma once

#include "hostkit/model/model_data.h"

namespace hostkit::project_file {

// The file is replaced as a whole or stays as it is, and only what was changed differs in it. What
// was there before is kept at `backup_path`, unless that is empty. Throws when somebody else
// changed the file meanwhile, or when it would not hold all that was changed.
void save(Model& model, const std::wstring& backup_path);

}  // namespace hostkit::project_file
