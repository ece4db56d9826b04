// Puts its argument on the clipboard and ends, as another program would.

#include <cstring>
#include <cwchar>

#include "automation/windows_headers.h"

extern "C" int wmain(int count, wchar_t** arguments) {
    if (count != 2 || !OpenClipboard(nullptr)) return 1;
    EmptyClipboard();
    const std::size_t size = (std::wcslen(arguments[1]) + 1) * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(GlobalLock(block), arguments[1], size);
    GlobalUnlock(block);
    const bool put = SetClipboardData(CF_UNICODETEXT, block) != nullptr;
    CloseClipboard();
    return put ? 0 : 1;
}
