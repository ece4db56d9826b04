#include "cli/interrupt.h"

#include <atomic>

#include "cli/console.h"
#include "cli/failure.h"

namespace cli {
namespace {

std::atomic<int> interrupts = 0;

void say(std::wstring_view text) noexcept {
    try {
        ConsoleStream(STD_ERROR_HANDLE).write_line(text);
    } catch (...) {
        // Nobody can be told; stopping matters more.
    }
}

// Runs on a thread of the system's.
BOOL WINAPI handle(DWORD event) noexcept {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    if (++interrupts == 1) {
        say(L"tessera: stopping; a second Ctrl-C ends at once");
        return TRUE;
    }
    say(L"tessera: ended before it was done");
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exit_with_errors));
    return TRUE;
}

}  // namespace

void catch_interrupts() noexcept {
    SetConsoleCtrlHandler(handle, TRUE);
}

bool is_interrupted() noexcept {
    return interrupts > 0;
}

}  // namespace cli
