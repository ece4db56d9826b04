// The record that says which host object a transferred value belongs to.
#pragma once

#include "automation/object.h"
#include "content/record.h"

namespace tessera {

// Holds the host object by shared reference, or what it takes to find it again: the workset that
// the owning `Tessera` hands over, system type and identifier, and the path within the project.
class KelosObject : public automation::Object<KelosObject, ITesseraKelosObject>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::KelosObject);

    KelosObject() noexcept;

    void set_workset(automation::ComPtr<IKelosWorkset> workset) { workset_ = std::move(workset); }
    // The host object; it is looked for first when only its identity is known.
    automation::ComPtr<IKelosObject> object() noexcept;
    // Keeps the object with its identity; nothing clears them.
    void set_object(IKelosObject* object, const wchar_t* label = L"Property Let 'Object'") noexcept;

    STDMETHODIMP get_Object(IKelosObject** Result) override;
    STDMETHODIMP put_Object(IKelosObject* NewValue) override;
    STDMETHODIMP putref_Object(IKelosObject* NewValue) override;
    STDMETHODIMP get_SystemUID(BSTR* Result) override;
    STDMETHODIMP put_SystemUID(BSTR NewValue) override;
    STDMETHODIMP get_PathFullName(BSTR* Result) override;
    STDMETHODIMP put_PathFullName(BSTR NewValue) override;
    STDMETHODIMP get_SystemType(long* Result) override;
    STDMETHODIMP put_SystemType(long NewValue) override;

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    void read_identity();
    void load_by_type_and_uid();
    void find_by_path();

    automation::ComPtr<IKelosObject> object_;
    automation::Bstr system_uid_;
    automation::Bstr path_full_name_;
    long system_type_ = 0;
    automation::ComPtr<IKelosWorkset> workset_;
};

}  // namespace tessera
