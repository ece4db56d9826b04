// The record of the position in the external document.
#pragma once

#include "automation/object.h"
#include "content/record.h"

namespace tessera {

class Document : public automation::Object<Document, ITesseraDocument>, public Record {
  public:
    static constexpr CLSID class_id = __uuidof(::Document);

    Document() noexcept;

    void set_pointer(std::wstring_view pointer) noexcept;

    STDMETHODIMP get_Pointer(BSTR* Result) override;
    STDMETHODIMP put_Pointer(BSTR NewValue) override;

  protected:
    void write_items(ArchiveNode& title, ArchiveNode& owner) override;
    void read_items(const ArchiveReader& title, std::int16_t version) override;

  private:
    automation::Bstr pointer_;
};

}  // namespace tessera
