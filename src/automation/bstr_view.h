// Automation strings that are lent: of a text that somebody owns, or of one that is known when the
// program is compiled.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "automation/bstr.h"

namespace automation {

// A text that is known when the program is compiled, in the layout of an automation string: its
// size in bytes stands before its characters.
template <std::size_t count>
struct BstrConstant {
    consteval BstrConstant(const wchar_t (&literal)[count]) {
        std::copy_n(literal, count, characters);
    }
    std::uint32_t size = (count - 1) * sizeof(wchar_t);
    wchar_t characters[count]{};
};

// A text that is lent as an argument: of a Bstr, which must outlive it, or of a constant
// (`L"Name"_bstr`). Callees neither change nor free what they get as [in].
class BstrView {
  public:
    constexpr BstrView() noexcept = default;
    constexpr explicit BstrView(BSTR text) noexcept : text_(text) {}
    // Of characters that are laid out as an automation string: their size stands before them.
    static constexpr BstrView laid_out(const wchar_t* characters) noexcept {
        return BstrView(const_cast<BSTR>(characters));
    }
    BstrView(const Bstr& text) noexcept : text_(text.get()) {}

    BSTR get() const noexcept { return text_; }
    std::wstring_view view() const noexcept { return view_of(text_); }
    bool empty() const noexcept { return view().empty(); }

  private:
    BSTR text_ = nullptr;
};

inline namespace literals {

template <BstrConstant constant>
constexpr BstrView operator""_bstr() noexcept {
    return BstrView::laid_out(constant.characters);
}

}  // namespace literals

// The digits of a whole number, in the layout of an automation string.
class NumberText {
  public:
    NumberText() noexcept = default;
    explicit NumberText(long number) noexcept;

    bool empty() const noexcept { return size_ == 0; }
    operator BstrView() const noexcept { return BstrView::laid_out(characters_); }

  private:
    std::uint32_t size_ = 0;  // in bytes
    wchar_t characters_[12]{};
};

// What there is already is lent, what had to be made is owned.
class BstrOrView {
  public:
    BstrOrView() noexcept = default;
    BstrOrView(BstrView lent) noexcept : lent_(lent) {}
    BstrOrView(Bstr made) noexcept : made_(std::move(made)) {}
    BstrOrView(NumberText number) noexcept : number_(number) {}

    operator BstrView() const noexcept {
        if (!number_.empty()) return number_;
        return made_.get() ? BstrView(made_) : lent_;
    }
    std::wstring_view view() const noexcept { return BstrView(*this).view(); }

  private:
    BstrView lent_;
    Bstr made_;
    NumberText number_;
};

// A text as an argument of a call, without a copy; never to be cleared.
inline VARIANT lend(BstrView text) noexcept {
    VARIANT lent{};
    lent.vt = VT_BSTR;
    lent.bstrVal = text.get();
    return lent;
}

}  // namespace automation
