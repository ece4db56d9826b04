#include "content/document.h"

namespace tessera {

using automation::Bstr;

namespace {

constexpr wchar_t source_text[] = L"Tessera.Document";
constexpr MemberName get_pointer{source_text, L"Property Get 'Pointer'"};
constexpr MemberName let_pointer{source_text, L"Property Let 'Pointer'"};

constexpr wchar_t item_pointer[] = L"Pointer";

}  // namespace

const wchar_t* Document::source() const noexcept {
    return source_text;
}

void Document::set_pointer(std::wstring_view pointer) noexcept {
    guarded(let_pointer, [&] { pointer_ = Bstr(pointer); });
}

STDMETHODIMP Document::get_Pointer(BSTR* Result) {
    return give(Result, pointer_, get_pointer);
}

STDMETHODIMP Document::put_Pointer(BSTR NewValue) {
    set_pointer(automation::view_of(NewValue));
    return S_OK;
}

void Document::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_pointer, pointer_);
}

void Document::read_items(const dom::Node& title, std::int16_t) {
    pointer_ = read_text(title, item_pointer);
}

}  // namespace tessera
