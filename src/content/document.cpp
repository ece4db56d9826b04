#include "content/document.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.Document", L"Document"_bstr, L"1"_bstr};
constexpr MemberName get_pointer{record_class.source, L"Property Get 'Pointer'"};
constexpr MemberName let_pointer{record_class.source, L"Property Let 'Pointer'"};

constexpr BstrView item_pointer = L"Pointer"_bstr;

}  // namespace

Document::Document() noexcept : Record(record_class) {}

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

void Document::read_items(const ArchiveReader& title, std::int16_t) {
    pointer_ = read_text(title, item_pointer);
}

}  // namespace tessera
