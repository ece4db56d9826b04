#include "content/value_items.h"

#include <algorithm>

#include "automation/conversion.h"
#include "automation/enumerator.h"

namespace tessera {

using automation::BstrView;
using automation::ComPtr;
using automation::Variant;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.ValueItems", L"ValueItems"_bstr, L"1"_bstr};

constexpr MemberName member(const wchar_t* label) {
    return {record_class.source, label};
}

constexpr BstrView item_presentation = L"Presentation"_bstr;
constexpr long append_index = -1;

// Somebody else's implementation of the interface could not write itself into the document.
ComPtr<ValueItem> own_item(IUnknown* item) {
    ComPtr<ValueItem> own = automation::own_object<ValueItem>(item);
    if (!own) automation::fail(automation::error_type_mismatch);
    return own;
}

}  // namespace

ValueItems::ValueItems() noexcept : Record(record_class) {}

STDMETHODIMP ValueItems::get_Presentation(KelosPresentation* Result) {
    return give(Result, presentation_, member(L"Public Property Get 'Presentation'"));
}

STDMETHODIMP ValueItems::put_Presentation(KelosPresentation NewValue) {
    return keep(presentation_, NewValue);
}

STDMETHODIMP ValueItems::Add(ITesseraValueItem* VItem, long Index, long* Result) {
    return trapped(Result, member(L"Public Function 'Add'"), [&](long& result) {
        result = Index;
        if (VItem) result = insert(own_item(VItem), Index);
    });
}

STDMETHODIMP ValueItems::AddNew(VARIANT Value, VARIANT DisplayValue, short LCID,
                                uceDataType ValueType, uceDataType DisplayValueType, long Index,
                                ITesseraValueItem** Result) {
    return answer(Result, member(L"Public Function 'AddNew'"), [&] {
        auto item = automation::make<ValueItem>();
        item->set_lcid(LCID);
        item->SetValue(ValueType, Value);
        item->SetDisplayValue(DisplayValueType, DisplayValue);
        insert(item, Index);
        return item;
    });
}

STDMETHODIMP ValueItems::get_Count(long* Result) {
    return give(Result, count(), member(L"Public Property Get 'Count'"));
}

STDMETHODIMP ValueItems::get_Item(long Index, ITesseraValueItem** Result) {
    return answer(Result, member(L"Public Property Get 'Item'"), [&] { return item(Index); });
}

STDMETHODIMP ValueItems::Remove(VARIANT ItemIdent, ITesseraValueItem** Result) {
    return answer(Result, member(L"Public Function 'Remove'"),
                  [&] { return remove(Variant::value_of(ItemIdent)); });
}

STDMETHODIMP ValueItems::get__Item(long Index, ITesseraValueItem** Result) {
    return answer(Result, member(L"Public Property Get '_Item'"), [&] { return item(Index); });
}

STDMETHODIMP ValueItems::get__NewEnum(IUnknown** Result) {
    return answer(Result, member(L"Public Property Get '_NewEnum'"), [&] {
        return automation::make_enumerator(
            items_, [](const ComPtr<ValueItem>& item) { return item->main_pointer(); });
    });
}

ComPtr<ValueItem> ValueItems::item(long position) const {
    return holds_position(position) ? items_[static_cast<std::size_t>(position - 1)] : nullptr;
}

ComPtr<ValueItem> ValueItems::remove(const VARIANT& ident) {
    const long position = position_of(ident);
    ComPtr<ValueItem> removed = item(position);
    if (removed) items_.erase(items_.begin() + (position - 1));
    return removed;
}

// -1, positions beyond the end and any position in an empty list append; 0 and the other negative
// ones insert at the front.
long ValueItems::insert(ComPtr<ValueItem> item, long index) {
    if (items_.empty() || index == append_index || index > count()) {
        append(std::move(item));
        return count();
    }
    const long position = std::max(index, 1L);
    items_.insert(items_.begin() + (position - 1), std::move(item));
    return position;
}

// 0 when the list does not hold what is identified.
long ValueItems::position_of(const VARIANT& ident) const {
    if (automation::is_numeric(ident)) return automation::to_long(ident);
    if (ident.vt != VT_DISPATCH && ident.vt != VT_UNKNOWN) return 0;
    const auto wanted = automation::own_object<ValueItem>(ident.punkVal);
    if (!wanted) return 0;
    const auto found = std::ranges::find(items_, wanted);
    return found == items_.end() ? 0 : static_cast<long>(found - items_.begin()) + 1;
}

// The presentation is the owner's item, a sibling of the list.
void ValueItems::write_items(ArchiveNode& title, ArchiveNode& owner) {
    // What is there now: the host may change the list from inside.
    for (const ComPtr<ValueItem>& item : std::vector(items_))
        item->write_below(title);
    write_long(owner, item_presentation, presentation_);
}

void ValueItems::read(const ArchiveReader& owner, const dom::Node& title) {
    Record::read(owner, title);
    presentation_ = static_cast<KelosPresentation>(read_long(owner, item_presentation));
}

void ValueItems::read_items(const ArchiveReader& title, std::int16_t) {
    items_.clear();
    constexpr wchar_t item_title[] = L"ValueItem";
    for (dom::Element element = dom::child_named(title.node(), item_title); element;
         element = dom::sibling_named(element, item_title)) {
        const auto item = automation::make<ValueItem>();
        item->read_from(title, element);
        append(item);
    }
}

}  // namespace tessera
