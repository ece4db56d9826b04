#include "cli/exhausted_stack.h"

#include <string_view>

#include "automation/windows_headers.h"
#include "cli/failure.h"

namespace cli {
namespace {

// What is left to the handler.
constexpr ULONG reserved_bytes = 65536;

LONG CALLBACK handle(EXCEPTION_POINTERS* exception) noexcept {
    if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_STACK_OVERFLOW)
        return EXCEPTION_CONTINUE_SEARCH;
    constexpr std::string_view line =
        "tessera: the script calls itself too deeply; nothing was written\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()),
              &written, nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exit_with_errors));
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void report_exhausted_stack() noexcept {
    ULONG bytes = reserved_bytes;
    SetThreadStackGuarantee(&bytes);
    AddVectoredExceptionHandler(1, handle);
}

}  // namespace cli
