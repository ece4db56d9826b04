// The record that says which property of the host object is read and written.
#pragma once

#include "automation/object.h"
#include "content/record.h"

namespace tessera {

// Names and parameters come in pairs for reading and writing: setting one fills the other while
// that is empty.
class Property : public automation::Object<Property, ITesseraProperty>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::Property);

    Property() noexcept;

    void set_get_name(std::wstring_view name) noexcept;
    void set_set_name(std::wstring_view name) noexcept;
    void set_get_parameter(automation::Variant parameter) noexcept;
    void set_set_parameter(automation::Variant parameter) noexcept;
    const automation::Variant& get_parameter() const noexcept { return get_parameter_; }
    void set_phys_unit(automation::Bstr&& unit) noexcept { phys_unit_ = std::move(unit); }
    void set_query_property(KelosQueryProperty property) noexcept { query_property_ = property; }

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

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    automation::Bstr get_name_;
    automation::Bstr set_name_;
    automation::Variant get_parameter_;
    automation::Variant set_parameter_;
    automation::Bstr phys_unit_;
    KelosQueryProperty query_property_ = kqpNone;
};

}  // namespace tessera
