// One item of a value: what is stored and what is displayed for it, with a locale.
#pragma once

#include "automation/object.h"
#include "content/record.h"

namespace tessera {

// Strings are kept in office form, objects by shared reference.
class ValueItem : public automation::Object<ValueItem, ITesseraValueItem>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::ValueItem);
    static constexpr GUID private_id = {
        0x3f1c7d52, 0x9a04, 0x4e6b, {0xb1, 0x5d, 0x27, 0x8e, 0x60, 0xc4, 0xaf, 0x13}};

    ValueItem() noexcept;

    void SetDisplayValue(uceDataType type, automation::Variant value) noexcept;
    void SetValue(uceDataType type, automation::Variant value) noexcept;
    // The same for what an automation caller gives, which may be a reference.
    void SetDisplayValue(uceDataType type, const VARIANT& value) noexcept;
    void SetValue(uceDataType type, const VARIANT& value) noexcept;
    // The values that are there are re-read under the new locale.
    void set_lcid(std::int16_t lcid) noexcept;

    STDMETHODIMP get_DisplayValue(uceDataType VType, VARIANT* Result) override;
    STDMETHODIMP put_DisplayValue(uceDataType VType, VARIANT NewValue) override;
    STDMETHODIMP putref_DisplayValue(uceDataType VType, VARIANT* NewValue) override;
    STDMETHODIMP get_Value(uceDataType VType, VARIANT* Result) override;
    STDMETHODIMP put_Value(uceDataType VType, VARIANT NewValue) override;
    STDMETHODIMP putref_Value(uceDataType VType, VARIANT* NewValue) override;
    STDMETHODIMP get_LCID(short* Result) override;
    STDMETHODIMP put_LCID(short NewValue) override;

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    automation::Variant display_value_;
    automation::Variant value_;
    std::int16_t lcid_ = 0;
};

}  // namespace tessera
