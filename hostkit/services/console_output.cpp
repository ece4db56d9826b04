#include "hostkit/services/console_output.h"

#include <string>

#include "automation/bstr.h"
#include "text/utf8.h"

namespace hostkit {

void write_line(StandardStream stream, std::wstring_view text) {
    const HANDLE handle =
        GetStdHandle(stream == StandardStream::output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    if (!handle || handle == INVALID_HANDLE_VALUE) return;

    const std::wstring line = std::wstring(text) + L"\n";
    DWORD written = 0;
    if (DWORD console_mode; GetConsoleMode(handle, &console_mode)) {
        WriteConsoleW(handle, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
        return;
    }
    const std::string bytes = tessera::to_utf8(automation::as_u16(line));
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace hostkit
