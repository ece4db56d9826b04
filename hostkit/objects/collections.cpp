#include "automation/enumerator.h"
#include "automation/object.h"
#include "hostkit/objects/objects.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Object;
using automation::view_of;

class ObjectList : public Object<ObjectList, Extends<IHostKitObjects, IKelosObjects>> {
  public:
    ObjectList(ModelRef model, std::vector<Element*> elements)
        : model_(std::move(model)), elements_(std::move(elements)) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(elements_.size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosObject** result) override {
        return answer(result, Given(index), [&]() -> ComPtr<IKelosObject> {
            Element** const element = item_at(elements_, index);
            return element ? make_object(kept(model_, *element)) : nullptr;
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(
                elements_, [&](Element* element) { return make_object(kept(model_, element)); });
        });
    }

  private:
    ModelRef model_;
    std::vector<Element*> elements_;
};

class NamedEntry : public Object<NamedEntry, Extends<IHostKitNamedEntry, IKelosNamedEntry>> {
  public:
    NamedEntry(std::wstring name, ElementRef element)
        : name_(std::move(name)), element_(std::move(element)) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(name_); });
    }
    STDMETHODIMP get_Object(IKelosObject** result) override {
        return answer(result, [&] { return make_object(element_); });
    }

  private:
    std::wstring name_;
    ElementRef element_;
};

class NamedEntryList
    : public Object<NamedEntryList, Extends<IHostKitNamedEntries, IKelosNamedEntries>> {
  public:
    explicit NamedEntryList(std::shared_ptr<Document> document) : document_(std::move(document)) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(document_->named_entries.size()); });
    }
    STDMETHODIMP get_Item(BSTR name, IKelosNamedEntry** result) override {
        return answer(result, Given(name), [&]() -> ComPtr<IKelosNamedEntry> {
            for (const auto& [known, element] : document_->named_entries)
                if (known == view_of(name)) return present(known, element);
            return {};
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(document_->named_entries, [&](const auto& entry) {
                return present(entry.first, entry.second);
            });
        });
    }

  private:
    ComPtr<IKelosNamedEntry> present(const std::wstring& name, Element* element) const {
        return automation::make<NamedEntry>(name, kept(document_, element))->main_pointer();
    }

    std::shared_ptr<Document> document_;
};

}  // namespace

ComPtr<IKelosObjects> make_objects(const ModelRef& model, std::vector<Element*> elements) {
    return automation::make<ObjectList>(model, std::move(elements))->main_pointer();
}

ComPtr<IKelosNamedEntries> make_named_entries(const std::shared_ptr<Document>& document) {
    return automation::make<NamedEntryList>(document)->main_pointer();
}

}  // namespace hostkit
