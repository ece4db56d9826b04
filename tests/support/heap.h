// What the process has allocated.
#pragma once

#include <algorithm>
#include <cstddef>

#include "automation/windows_headers.h"

namespace test {

// The bytes that are busy in all heaps of the process.
inline std::size_t busy_bytes() {
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

}  // namespace test
