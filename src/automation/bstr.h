// An owning automation string, and the two views of its 16-bit text.
#pragma once

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
// A null BSTR is the empty text.
inline std::wstring_view view_of(BSTR text) noexcept {
    return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
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
    ~Bstr() { SysFreeString(text_); }
    Bstr& operator=(Bstr other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }

    static Bstr attach(BSTR text) noexcept {
        Bstr result;
        result.text_ = text;
        return result;
    }
    [[nodiscard]] BSTR detach() noexcept { return std::exchange(text_, nullptr); }
    BSTR* put() noexcept {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }

    // For parameters that are read and written: what stands there stays.
    BSTR* address() noexcept { return &text_; }

    // May be null, as automation allows for the empty text.
    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return view_of(text_); }
    std::u16string_view u16() const noexcept { return as_u16(view()); }
    std::wstring str() const { return std::wstring(view()); }
    bool empty() const noexcept { return SysStringLen(text_) == 0; }

  private:
    BSTR text_ = nullptr;
};

}  // namespace automation
