#include "hostkit/objects/query_objects.h"

#include "automation/call.h"
#include "host/known_properties.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::check;
using automation::ComPtr;
using automation::Variant;

// The parser's headers do not tie its interfaces to their identifiers for every compiler.
template <class Interface>
ComPtr<Interface> role(IUnknown* object, REFIID id) {
    ComPtr<Interface> result;
    object->QueryInterface(id, reinterpret_cast<void**>(result.put()));
    return result;
}

// A document is its own owner.
ComPtr<IXMLDOMDocument> document_of(IXMLDOMNode* node) {
    auto document = role<IXMLDOMDocument>(node, IID_IXMLDOMDocument);
    if (!document) check(node->get_ownerDocument(document.put()));
    return automation::require(document);
}

class ColumnElement {
  public:
    explicit ColumnElement(IXMLDOMDocument* document) {
        const Bstr name(L"Column");
        check(document->createElement(name.get(), element_.put()));
    }

    void set(const wchar_t* name, const Variant& value) {
        const Bstr attribute(name);
        check(element_->setAttribute(attribute.get(), value));
    }
    void append_to(IXMLDOMNode* owner) {
        ComPtr<IXMLDOMNode> appended;
        check(owner->appendChild(element_.get(), appended.put()));
    }

  private:
    ComPtr<IXMLDOMElement> element_;
};

}  // namespace

void write_column(IXMLDOMNode* owner, const ColumnSettings& column, const std::wstring& heading) {
    automation::require(owner);
    const auto* const property = kelos::find_property(column.constant);
    ColumnElement element(document_of(owner).get());
    element.set(L"Name", Variant(column.name));
    element.set(L"Heading", Variant(heading));
    element.set(L"Property", Variant(automation::as_wide(property ? property->name : u"")));
    element.set(L"PropertyConstant", Variant(column.constant));
    element.set(L"Parameter", Variant(column.parameter));
    element.set(L"Unit", Variant(column.unit));
    element.set(L"LCID", Variant(column.lcid));
    element.set(L"Shown", Variant(column.shown ? L"True" : L"False"));
    element.append_to(owner);
}

}  // namespace hostkit
