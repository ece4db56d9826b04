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

// The text in a block of memory, which stays locked as long as this object lives.
class LockedText {
  public:
    explicit LockedText(HGLOBAL block) noexcept
        : block_(block), text_(static_cast<const wchar_t*>(GlobalLock(block))) {}
    ~LockedText() {
        if (text_) GlobalUnlock(block_);
    }
    LockedText(const LockedText&) = delete;
    LockedText& operator=(const LockedText&) = delete;
    const wchar_t* get() const noexcept { return text_; }

  private:
    const HGLOBAL block_;
    const wchar_t* const text_;
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
    const LockedText locked(block);
    if (!locked.get()) return text;
    text.resize(static_cast<std::size_t>(lstrlenW(locked.get())));
    // The text is taken from the address that the handle is, which for clipboard memory is the
    // block itself; where a handle is no address, the locked pointer is the only one there is.
    if (!text.empty() && !copy_from(block, text)) text.assign(locked.get(), text.size());
    return text;
}

}  // namespace tessera
