// The record of the value on both sides of a transfer, with its locale and flags.
#pragma once

#include "automation/object.h"
#include "content/record.h"

namespace tessera {

// Strings are kept in office form.
class Value : public automation::Object<Value, ITesseraValue>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::Value);

    Value() noexcept;

    void set_kelos_value(uceDataType type, automation::Variant value) noexcept;
    void set_document_value(uceDataType type, automation::Variant value) noexcept;
    // The values that are there are re-read under the new locale.
    void set_lcid(std::int16_t lcid) noexcept;
    void set_io_mode(std::wstring_view mode) noexcept;
    void set_all_values_numeric(bool numeric) noexcept { all_values_numeric_ = numeric; }
    void set_empty_numeric_value_stay_empty(bool stay) noexcept {
        empty_numeric_value_stay_empty_ = stay;
    }

    STDMETHODIMP get_KelosValue(uceDataType VType, VARIANT* Result) override;
    STDMETHODIMP put_KelosValue(uceDataType VType, VARIANT NewValue) override;
    STDMETHODIMP get_DocumentValue(uceDataType VType, VARIANT* Result) override;
    STDMETHODIMP put_DocumentValue(uceDataType VType, VARIANT NewValue) override;
    STDMETHODIMP get_LCID(short* Result) override;
    STDMETHODIMP put_LCID(short NewValue) override;
    STDMETHODIMP get_IOMode(BSTR* Result) override;
    STDMETHODIMP put_IOMode(BSTR NewValue) override;
    STDMETHODIMP get_AllValuesNumeric(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_AllValuesNumeric(VARIANT_BOOL NewValue) override;
    STDMETHODIMP get_EmptyNumericValueStayEmpty(VARIANT_BOOL* Result) override;
    STDMETHODIMP put_EmptyNumericValueStayEmpty(VARIANT_BOOL NewValue) override;

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    automation::Variant kelos_value_;
    automation::Variant document_value_;
    std::int16_t lcid_ = 0;
    automation::Bstr io_mode_;
    bool all_values_numeric_ = false;
    bool empty_numeric_value_stay_empty_ = false;
};

}  // namespace tessera
