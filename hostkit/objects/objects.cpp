#include "hostkit/objects/objects.h"

#include "hostkit/objects/element_handle.h"
#include "hostkit/objects/query_objects.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Variant;

class PlainObject
    : public ObjectHandle<PlainObject, Element, Extends<IHostKitObject, IKelosObject>> {
  public:
    using ObjectHandle::ObjectHandle;
};

// ---- Mapping tables --------------------------------------------------------------------------

class MappingObject
    : public ObjectHandle<MappingObject, Element, Extends<IHostKitMappingObject, IKelosObject>,
                          IKelosMappingTable> {
  public:
    using ObjectHandle::ObjectHandle;

    STDMETHODIMP GetCount(long* result) override {
        return answer(result, [&] { return table().count(); });
    }
    STDMETHODIMP get_Target(long index, BSTR* result) override {
        return answer(result, Given(index), [&] {
            Bstr target(target_of(table().at(index)));
            note_row(index, table().count());
            return target;
        });
    }
    STDMETHODIMP get_SourceObject(long index, IKelosObject** result) override {
        return answer(result, Given(index),
                      [&] { return make_object(kept(element(), row(index).source)); });
    }
    STDMETHODIMP get_SourceProperty(long index, BSTR* result) override {
        return answer(result, Given(index), [&] { return Bstr(row(index).property); });
    }
    STDMETHODIMP get_SourceIndex(long index, VARIANT* result) override {
        return answer(result, Given(index), [&] { return row(index).index; });
    }
    STDMETHODIMP get_UNIT(long index, BSTR* result) override {
        return answer(result, Given(index), [&] { return Bstr(row(index).unit); });
    }
    STDMETHODIMP get_IO(long index, BSTR* result) override {
        return answer(result, Given(index), [&] { return Bstr(row(index).direction); });
    }
    STDMETHODIMP get_Value(long index, VARIANT* result) override {
        return answer(result, Given(index), [&] { return value_of(table().at(index)); });
    }

  private:
    const MappingTable& table() const noexcept { return *data().mapping; }
    const MappingRow& row(long index) const { return *table().at(index).row; }
};

// ---- Documents -------------------------------------------------------------------------------

class DocumentObject
    : public ObjectHandle<DocumentObject, Document,
                          Extends<IHostKitDocument, IKelosDocument, IKelosObject>> {
  public:
    using ObjectHandle::ObjectHandle;

    // A delegating document's attributes are those of its delegate, its script among them.
    STDMETHODIMP get_Attributes(IKelosAttributes** result) override {
        return answer(result, Given(data().name), [&] {
            return make_attributes(data().delegate ? kept(element(), data().delegate) : element());
        });
    }
    STDMETHODIMP get_TypeText(BSTR* result) override {
        return answer(result, [&] { return Bstr(data().type_text); });
    }
    STDMETHODIMP get_SubTypeText(BSTR* result) override {
        return answer(result, [&] { return Bstr(data().sub_type_text); });
    }
    STDMETHODIMP get_Objects(IKelosObjects** result) override {
        return answer(result, [&] { return make_objects(model_of(element()), data().shown); });
    }
    STDMETHODIMP get_NamedEntries(IKelosNamedEntries** result) override {
        return answer(result, [&] { return make_named_entries(data_ref()); });
    }
    STDMETHODIMP get_Owner(IKelosObject** result) override {
        return answer(result, [&] { return make_object(kept(element(), data().owner)); });
    }
    STDMETHODIMP get_Delegate(IKelosObject** result) override {
        return answer(result, [&] { return make_object(kept(element(), data().delegate)); });
    }
    STDMETHODIMP get_QueryContainer(IDispatch** result) override {
        return answer(result, [&]() -> ComPtr<IDispatch> {
            if (!data().query) return {};
            return make_query_container(model_of(element()), *data().query);
        });
    }
};

// ---- Projects --------------------------------------------------------------------------------

class ProjectObject : public ObjectHandle<ProjectObject, Project,
                                          Extends<IHostKitProject, IKelosProject, IKelosObject>> {
  public:
    using ObjectHandle::ObjectHandle;

    STDMETHODIMP get_Languages(IKelosLanguages** result) override {
        return answer(result, [&] { return make_languages(model_of(element())); });
    }
    STDMETHODIMP get_CurrentLanguage(IKelosLanguage** result) override {
        return answer(result, [&] { return make_language(model_of(element()), data().language); });
    }
    STDMETHODIMP get_CurrentLanguageNumber(long* result) override {
        return answer(result, [&] { return static_cast<long>(data().language) + 1; });
    }
    STDMETHODIMP put_CurrentLanguageNumber(long number) override {
        return run(Given(number), [&] {
            if (!item_at(data().model.languages, number))
                automation::fail(automation::error_subscript_out_of_range);
            data().language = static_cast<std::size_t>(number) - 1;
        });
    }
};

}  // namespace

ComPtr<IKelosProject> make_project(const std::shared_ptr<Project>& project) {
    if (!project) return {};
    return automation::make<ProjectObject>(project)->main_pointer();
}

ComPtr<IKelosDocument> make_document(const std::shared_ptr<Document>& document) {
    if (!document) return {};
    return automation::make<DocumentObject>(document)->main_pointer();
}

ComPtr<IKelosObject> make_object(const ElementRef& element) {
    if (!element) return {};
    switch (element->kind) {
        case ElementKind::project:
            return make_project(std::static_pointer_cast<Project>(element));
        case ElementKind::document:
            return make_document(std::static_pointer_cast<Document>(element));
        case ElementKind::attribute:
            return make_attribute(std::static_pointer_cast<Attribute>(element));
        case ElementKind::object:
            break;
    }
    if (element->mapping) return automation::make<MappingObject>(element)->main_pointer();
    return automation::make<PlainObject>(element)->main_pointer();
}

}  // namespace hostkit
