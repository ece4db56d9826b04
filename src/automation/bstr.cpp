#include "automation/bstr_room.h"
#include "automation/bstr_view.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>

namespace automation {

namespace {

BSTR allocate(const wchar_t* text, std::size_t length) {
    if (length > (std::numeric_limits<UINT>::max)() / sizeof(wchar_t)) throw std::bad_alloc();
    const BSTR allocated = SysAllocStringLen(text, static_cast<UINT>(length));
    if (!allocated) throw std::bad_alloc();
    return allocated;
}

}  // namespace

Bstr::Bstr(std::wstring_view text) {
    if (!text.empty()) text_ = allocate(text.data(), text.size());
}

Bstr Bstr::joined(std::initializer_list<std::wstring_view> texts) {
    std::size_t length = 0;
    for (const std::wstring_view text : texts)
        length += text.size();
    Bstr result = attach(allocate(nullptr, length));
    wchar_t* end = result.text_;
    for (const std::wstring_view text : texts)
        end = std::ranges::copy(text, end).out;
    return result;
}

BstrRoom::BstrRoom(std::size_t characters) : room_(Bstr::attach(allocate(nullptr, characters))) {}

Bstr BstrRoom::finish(std::size_t length) {
    if (length == 0) return {};
    if (length == room_.view().size()) return std::move(room_);
    // Without a text of its own it keeps the characters, and ends them anew.
    if (!SysReAllocStringLen(room_.address(), nullptr, static_cast<UINT>(length)))
        throw std::bad_alloc();
    return std::move(room_);
}

NumberText::NumberText(long number) noexcept {
    wchar_t digits[std::size(decltype(characters_){})];
    wchar_t* begin = std::end(digits);
    auto left =
        number < 0 ? 0UL - static_cast<unsigned long>(number) : static_cast<unsigned long>(number);
    do
        *--begin = static_cast<wchar_t>(L'0' + left % 10);
    while ((left /= 10) != 0);
    if (number < 0) *--begin = L'-';
    std::copy(begin, std::end(digits), characters_);
    size_ = static_cast<std::uint32_t>((std::end(digits) - begin) * sizeof(wchar_t));
}

}  // namespace automation
