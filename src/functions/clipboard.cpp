#include "functions/clipboard.h"

#include <algorithm>

#include "automation/error.h"

namespace tessera {
namespace {

constexpr UINT unicode_text_format = CF_UNICODETEXT;
constexpr UINT block_flags = GMEM_MOVEABLE | GMEM_ZEROINIT;

// The clipboard while it is open, without an owner window.
class OpenedClipboard {
  public:
    OpenedClipboard() noexcept : open_(OpenClipboard(nullptr) != FALSE) {}
    ~OpenedClipboard() {
        if (open_) CloseClipboard();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    explicit operator bool() const noexcept { return open_; }

  private:
    bool open_;
};

// Copies from an address that may not be readable. False when it is not.
bool copy_from(const void* address, std::wstring& text) {
    SIZE_T copied = 0;
    const SIZE_T size = text.size() * sizeof(wchar_t);
    return ReadProcessMemory(GetCurrentProcess(), address, text.data(), size, &copied) &&
           copied == size;
}

}  // namespace

void put_clipboard_text(std::wstring_view text) {
    // Zero-initialised: the terminator is there already.
    const HGLOBAL block = GlobalAlloc(block_flags, (text.size() + 1) * sizeof(wchar_t));
    if (!block) automation::fail(E_OUTOFMEMORY);
    auto* const target = static_cast<wchar_t*>(GlobalLock(block));
    if (!target) {
        GlobalFree(block);
        automation::fail(E_OUTOFMEMORY);
    }
    std::ranges::copy(text, target);
    if (GlobalUnlock(block) != 0) return;
    const OpenedClipboard clipboard;
    if (!clipboard) return;  // the block stays allocated; it may be on its way to nobody
    EmptyClipboard();
    SetClipboardData(unicode_text_format, block);
}

std::wstring clipboard_text() {
    std::wstring text;
    const OpenedClipboard clipboard;
    if (!clipboard) return text;
    const HANDLE block = GetClipboardData(unicode_text_format);
    if (!block) return text;
    const auto* const locked = static_cast<const wchar_t*>(GlobalLock(block));
    if (!locked) return text;
    text.resize(static_cast<std::size_t>(lstrlenW(locked)));
    // The text is taken from the address that the handle is, which for clipboard memory is the
    // block itself; where a handle is no address, the locked pointer is the only one there is.
    if (!text.empty() && !copy_from(block, text)) text.assign(locked, text.size());
    GlobalUnlock(block);
    return text;
}

}  // namespace tessera
