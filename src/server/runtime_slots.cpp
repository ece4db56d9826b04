// Gives back, when the module is unloaded, the thread slots that the compiler's run-time takes.
//
// The thread library that MinGW links statically takes a slot when the first exception is thrown or
// the first static variable is made, and never gives it back: a process that loads and unloads the
// DLL again and again has none left after some hundred times, and is aborted. The library calls
// through the import table's entry, which is therefore defined here.
#ifdef __MINGW32__

#include <array>
#include <atomic>

#include "automation/windows_headers.h"

#ifdef _WIN64
#define IMPORTED(name, decorated) asm("__imp_" name)
#else
#define IMPORTED(name, decorated) asm("__imp__" decorated)
#endif

namespace {

std::array<std::atomic<DWORD>, 8> slots_and_one{};  // 0: no slot

auto platform_function() noexcept {
    return reinterpret_cast<DWORD(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "TlsAlloc")));
}

DWORD WINAPI allocate() noexcept {
    const DWORD slot = platform_function()();
    if (slot == TLS_OUT_OF_INDEXES) return slot;
    for (auto& place : slots_and_one) {
        DWORD free = 0;
        if (place.compare_exchange_strong(free, slot + 1)) break;
    }
    return slot;
}

// After all other destructors of the module, which may still throw and catch.
[[gnu::destructor(101)]] void give_back() noexcept {
    for (auto& place : slots_and_one)
        if (const DWORD taken = place.exchange(0)) TlsFree(taken - 1);
}

}  // namespace

extern "C" {
extern DWORD(WINAPI* const imported_tls_alloc)() IMPORTED("TlsAlloc", "TlsAlloc@0");
DWORD(WINAPI* const imported_tls_alloc)() = allocate;
}

#endif
