// The record that says which property of the host object is read and written.
#pragma once

#include "automation/object.h"
#include "content/record.h"
#include "tessera.h"

namespace tessera {

// Names and parameters come in pairs for reading and writing: setting one fills the other while
// that is empty.
class Property : public automation::Object<Property, ITesseraProperty>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::Property);

    STDMETHODIMP get_GetName(BSTR* Result) override;
    STDMETHODIMP put_GetName(BSTR NewValue) override;
    STDMETHODIMP get_SetName(BSTR* Result) override;
    STDMETHODIMP put_SetName(BSTR NewValue) override;
    STDMETHODIMP get_GetParameter(VARIANT* Result) override;
    STDMETHODIMP put_GetParameter(VARIANT NewValue) override;
    STDMETHODIMP get_SetParameter(VARIANT* Result) override;
    STDMETHODIMP put_SetParameter(VARIANT NewValue) override;
    STDMETHODIMP get_PhysUnit(VARIANT* Result) override;
    STDMETHODIMP put_PhysUnit(VARIANT NewValue) override;
    STDMETHODIMP get_QDefProperty(KelosQueryProperty* Result) override;
    STDMETHODIMP put_QDefProperty(KelosQueryProperty NewValue) override;

    const wchar_t* TitleIdent() const noexcept override { return L"Property"; }

  protected:
    const wchar_t* source() const noexcept override { return L"Tessera.Property"; }
    const wchar_t* version() const noexcept override { return L"2"; }
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const dom::Node& title, std::int16_t version) override;

  private:
    automation::Bstr get_name_;
    automation::Bstr set_name_;
    automation::Variant get_parameter_;
    automation::Variant set_parameter_;
    automation::Bstr phys_unit_;
    KelosQueryProperty query_property_ = kqpNone;
};

}  // namespace tessera
