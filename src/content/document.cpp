#include "content/document.h"

namespace tessera {

using automation::Bstr;

namespace {

constexpr wchar_t item_pointer[] = L"Pointer";

}  // namespace

STDMETHODIMP Document::get_Pointer(BSTR* Result) {
    return trapped(Result, {source(), L"Property Get 'Pointer'"},
                   [&](Bstr& result) { result = pointer_; });
}

STDMETHODIMP Document::put_Pointer(BSTR NewValue) {
    return trapped({source(), L"Property Let 'Pointer'"},
                   [&] { pointer_ = Bstr(automation::view_of(NewValue)); });
}

void Document::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_pointer, pointer_);
}

void Document::read_items(const dom::Node& title, std::int16_t) {
    pointer_ = read_text(title, item_pointer);
}

}  // namespace tessera
