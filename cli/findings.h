// What was reported to the host while a command ran, and how the user is told.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "automation/com_ptr.h"
#include "cli/console.h"
#include "services.h"

namespace cli {

struct ScriptErrorFound {
    std::wstring description;
    std::wstring source;
    long line = 0;
    std::wstring line_text;
};

struct Findings {
    std::vector<std::wstring> messages;
    std::vector<std::wstring> errors;
    std::vector<ScriptErrorFound> script_errors;

    bool has_errors() const noexcept { return !errors.empty() || !script_errors.empty(); }
    // "62 rows, 1 message, 0 errors" without the rows.
    std::wstring counted() const;
};

// Says which row of a mapping table it is, for the line of what was reported there.
using RowName = std::function<std::wstring(long row)>;

// With `with_windows` false, that no progress form could be shown is what was wanted and no error.
Findings collect_findings(const automation::ComPtr<IHostKitService>& service, bool with_windows,
                          const RowName& row_name = {});

// Counts reported errors while a command runs, in time that does not grow with their number.
class ErrorCounter {
  public:
    ErrorCounter(const automation::ComPtr<IHostKitService>& service, bool with_windows);
    std::size_t count();

  private:
    automation::ComPtr<IHostKitErrors> errors_;
    bool with_windows_;
    long seen_ = 0;
    std::size_t count_ = 0;
};

// Each message in a line of its own.
void tell_messages(ConsoleStream& stream, const Findings& findings);
// Script errors as a compiler marks them, with `script` for the file; then the other errors.
void tell_errors(ConsoleStream& stream, const Findings& findings, const std::wstring& script);

// "1 row", "2 rows".
std::wstring count_of(std::size_t count, const wchar_t* noun);
// Says that so many characters were replaced.
std::wstring replaced_text(std::size_t count);

}  // namespace cli
