#pragma once

namespace bench {

// The baseline's process: opens the project, executes the script of its document "Liste", saves the
// content document. Answers the exit code; throws.
int execute_and_save(const wchar_t* project_path, const wchar_t* target_path);

}  // namespace bench
