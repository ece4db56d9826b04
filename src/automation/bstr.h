// An owning automation string, and the two views of its 16-bit text.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "automation/windows_headers.h"

namespace automation {

// The platform's wide character and the char16_t of the portable code have the same 16 bits here.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline std::u16string_view as_u16(std::wstring_view text) noexcept {
    return {reinterpret_cast<const char16_t*>(text.data()), text.size()};
}
inline std::wstring_view as_wide(std::u16string_view text) noexcept {
    return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}
// A null BSTR is the empty text. The size in bytes stands before the characters.
inline std::wstring_view view_of(BSTR text) noexcept {
    if (!text) return {};
    std::uint32_t size;
    std::memcpy(&size, reinterpret_cast<const char*>(text) - sizeof size, sizeof size);
    return {text, size / sizeof(wchar_t)};
}

// Owns one BSTR; null stands for the empty text. Allocation failure throws std::bad_alloc.
class Bstr {
  public:
    Bstr() noexcept = default;
    explicit Bstr(std::wstring_view text);
    explicit Bstr(std::u16string_view text) : Bstr(as_wide(text)) {}
    explicit Bstr(const wchar_t* text) : Bstr(std::wstring_view(text)) {}
    Bstr(const Bstr& other) : Bstr(other.view()) {}
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~Bstr() { free(); }
    Bstr& operator=(Bstr other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }

    // The texts one after the other.
    static Bstr joined(std::initializer_list<std::wstring_view> texts);
    static Bstr attach(BSTR text) noexcept {
        Bstr result;
        result.text_ = text;
        return result;
    }
    [[nodiscard]] BSTR detach() noexcept { return std::exchange(text_, nullptr); }
    BSTR* put() noexcept {
        free();
        text_ = nullptr;
        return &text_;
    }

    // For parameters that are read and written: what stands there stays.
    BSTR* address() noexcept { return &text_; }

    // May be null, as automation allows for the empty text.
    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return view_of(text_); }
    std::u16string_view u16() const noexcept { return as_u16(view()); }
    std::wstring str() const { return std::wstring(view()); }
    bool empty() const noexcept { return view().empty(); }

  private:
    void free() const noexcept {
        if (text_) SysFreeString(text_);
    }

    BSTR text_ = nullptr;
};

}  // namespace automation
