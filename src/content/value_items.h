// The ordered list of a value's items, with how the host presents it.
#pragma once

#include <vector>

#include "content/value_item.h"

namespace tessera {

// Positions count from 1. The list shares its items with whoever holds them; an item may be in it
// more than once.
class ValueItems : public automation::Object<ValueItems, ITesseraValueItems>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::ValueItems);

    ValueItems() noexcept;

    // Appends the item: what `Add` with the position -1 does.
    void append(automation::ComPtr<ValueItem> item) { items_.push_back(std::move(item)); }
    // Nothing for a position that the list does not hold.
    automation::ComPtr<ValueItem> item(long position) const;
    automation::ComPtr<ValueItem> remove(const VARIANT& ident);
    void set_presentation(KelosPresentation value) noexcept { presentation_ = value; }

    STDMETHODIMP get_Presentation(KelosPresentation* Result) override;
    STDMETHODIMP put_Presentation(KelosPresentation NewValue) override;
    STDMETHODIMP Add(ITesseraValueItem* VItem, long Index, long* Result) override;
    STDMETHODIMP AddNew(VARIANT Value, VARIANT DisplayValue, short LCID, uceDataType ValueType,
                        uceDataType DisplayValueType, long Index,
                        ITesseraValueItem** Result) override;
    STDMETHODIMP get_Count(long* Result) override;
    STDMETHODIMP get_Item(long Index, ITesseraValueItem** Result) override;
    STDMETHODIMP Remove(VARIANT ItemIdent, ITesseraValueItem** Result) override;
    STDMETHODIMP get__Item(long Index, ITesseraValueItem** Result) override;
    STDMETHODIMP get__NewEnum(IUnknown** Result) override;

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read(const ArchiveReader& owner, const dom::Node& title) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    long count() const noexcept { return static_cast<long>(items_.size()); }
    bool holds_position(long index) const noexcept { return 1 <= index && index <= count(); }
    long insert(automation::ComPtr<ValueItem> item, long index);
    long position_of(const VARIANT& ident) const;

    KelosPresentation presentation_ = kprNone;
    std::vector<automation::ComPtr<ValueItem>> items_;
};

}  // namespace tessera
