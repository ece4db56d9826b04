// The class `Tessera`: one transferred value, as a "Content" element of a content document.
#pragma once

#include "archive/xml_publics.h"
#include "automation/object.h"
#include "content/document.h"
#include "content/kelos_object.h"
#include "content/property.h"
#include "content/value.h"
#include "content/value_items.h"

namespace tessera {

// Owns its five records: each comes into being on first use and stays for the owner's life, so
// that references to them stay valid when the object is read anew. The workset is shared.
class Tessera : public automation::Object<Tessera, ITessera> {
  public:
    static constexpr CLSID class_id = __uuidof(::Tessera);

    // The records; each comes into being here.
    KelosObject& kelos_object() {
        KelosObject& record = created(kelos_object_);
        record.set_workset(workset_);
        return record;
    }
    Property& property() { return created(property_); }
    ValueItems& value_items() { return created(value_items_); }
    Value& value() { return created(value_); }
    Document& document() { return created(document_); }
    void set_workset(automation::ComPtr<IKelosWorkset> workset) { workset_ = std::move(workset); }

    // Appends the "Content" element to the owner and returns it. A document's contents root is the
    // owner then, made when there is none; a new document's for nothing.
    ArchiveNode write_below(const ArchiveNode& owner) noexcept;
    // Reads the records from the element, or from the first one of the owner.
    void read_from(const dom::Node& owner, dom::Node content,
                   const wchar_t* label = L"Property Let 'XMLNode'") noexcept;

    // Both serve documents of contents as a whole and use nothing of the object.
    static dom::Document create_dom_document() noexcept;
    // The element "Contents" of the owner, or of a new document.
    static ArchiveNode create_contents_root(ArchiveNode owner) noexcept;

    STDMETHODIMP get_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) override;
    STDMETHODIMP put_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) override;
    STDMETHODIMP putref_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) override;
    STDMETHODIMP get_TitleIdent(BSTR* Result) override;
    STDMETHODIMP get_KelosObject(ITesseraKelosObject** Result) override;
    STDMETHODIMP get_Property(ITesseraProperty** Result) override;
    STDMETHODIMP get_ValueItems(ITesseraValueItems** Result) override;
    STDMETHODIMP get_Value(ITesseraValue** Result) override;
    STDMETHODIMP get_Document(ITesseraDocument** Result) override;
    STDMETHODIMP get_WorkSet(IKelosWorkset** Result) override;
    STDMETHODIMP put_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP putref_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP CreateDOMDocument(IXMLDOMDocument** Result) override;
    STDMETHODIMP CreateContentsRoot(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) override;

  private:
    template <class RecordClass>
    static RecordClass& created(automation::ComPtr<RecordClass>& record) {
        if (!record) record = automation::make<RecordClass>();
        return *record;
    }
    void write_records(ArchiveNode& content);
    void read_records(const ArchiveReader& content);

    automation::ComPtr<KelosObject> kelos_object_;
    automation::ComPtr<Property> property_;
    automation::ComPtr<ValueItems> value_items_;
    automation::ComPtr<Value> value_;
    automation::ComPtr<Document> document_;
    automation::ComPtr<IKelosWorkset> workset_;
};

}  // namespace tessera
