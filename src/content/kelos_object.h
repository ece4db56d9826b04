// The record that says which host object a transferred value belongs to.
#pragma once

#include "automation/object.h"
#include "content/record.h"
#include "tessera.h"

namespace tessera {

// Holds the host object by shared reference, or what it takes to find it again: the workset that
// the owning `Tessera` hands over, system type and identifier, and the path within the project.
class KelosObject : public automation::Object<KelosObject, ITesseraKelosObject>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::KelosObject);

    STDMETHODIMP get_Object(IKelosObject** Result) override;
    STDMETHODIMP put_Object(IKelosObject* NewValue) override;
    STDMETHODIMP putref_Object(IKelosObject* NewValue) override;
    STDMETHODIMP get_SystemUID(BSTR* Result) override;
    STDMETHODIMP put_SystemUID(BSTR NewValue) override;
    STDMETHODIMP get_PathFullName(BSTR* Result) override;
    STDMETHODIMP put_PathFullName(BSTR NewValue) override;
    STDMETHODIMP get_SystemType(long* Result) override;
    STDMETHODIMP put_SystemType(long NewValue) override;

    void set_workset(automation::ComPtr<IKelosWorkset> workset) { workset_ = std::move(workset); }
    const wchar_t* TitleIdent() const noexcept override { return L"KelosObject"; }

  protected:
    const wchar_t* source() const noexcept override { return L"Tessera.KelosObject"; }
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const dom::Node& title, std::int16_t version) override;

  private:
    void store(IKelosObject* object);
    void load_by_type_and_uid();
    void find_by_path();

    automation::ComPtr<IKelosObject> object_;
    automation::Bstr system_uid_;
    automation::Bstr path_full_name_;
    long system_type_ = 0;
    automation::ComPtr<IKelosWorkset> workset_;
};

}  // namespace tessera
