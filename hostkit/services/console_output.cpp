#include "hostkit/services/console_output.h"

#include <string>

#include "automation/windows_headers.h"

namespace hostkit {
namespace {

std::string utf8(std::wstring_view text) {
    const auto units = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

}  // namespace

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
    const std::string bytes = utf8(line);
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace hostkit
