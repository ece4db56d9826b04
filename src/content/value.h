// The record of the value on both sides of a transfer, with its locale and flags.
#pragma once

#include "automation/object.h"
#include "content/record.h"
#include "tessera.h"

namespace tessera {

// Strings are kept in office form.
class Value : public automation::Object<Value, ITesseraValue>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::Value);

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

    const wchar_t* TitleIdent() const noexcept override { return L"Value"; }

  protected:
    const wchar_t* source() const noexcept override { return L"Tessera.Value"; }
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const dom::Node& title, std::int16_t version) override;

  private:
    automation::Variant kelos_value_;
    automation::Variant document_value_;
    std::int16_t lcid_ = 0;
    automation::Bstr io_mode_;
    bool all_values_numeric_ = false;
    bool empty_numeric_value_stay_empty_ = false;
};

}  // namespace tessera
