// The base of every handle onto an element: the members of IKelosObject and those that the kit
// adds to it.
#pragma once

#include "automation/object.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/objects/objects.h"

namespace hostkit {

// A handle as the kit's own code sees it: a private interface, in no type library.
struct DECLSPEC_UUID("c81f5e20-3a6d-4b97-a0e4-62d97b1c51f0") ElementHandle : public IUnknown {
    virtual const ElementRef& element() const noexcept = 0;
};

}  // namespace hostkit

#ifdef __CRT_UUID_DECL
__CRT_UUID_DECL(hostkit::ElementHandle, 0xc81f5e20, 0x3a6d, 0x4b97, 0xa0, 0xe4, 0x62, 0xd9, 0x7b,
                0x1c, 0x51, 0xf0)
#endif

namespace hostkit {

// Bodies of members, the same for every kind of handle.
namespace members {

automation::ComPtr<IKelosProject> project(const ElementRef& element);
automation::Bstr path(const ElementRef& element, IKelosProject* relative_to);
automation::ComPtr<IKelosAttribute> attribute(const ElementRef& element, BSTR full_name);
long rights(const ElementRef& element, IKelosUser* user);
automation::ComPtr<IKelosObjects> children(const ElementRef& element);
automation::Bstr attribute_text(const ElementRef& element, BSTR full_name);
automation::Variant attribute_value(const ElementRef& element, BSTR full_name, long index);
automation::Bstr international_description(const ElementRef& element, long language);
void replace_text(const ElementRef& element, LocalText& text, BSTR new_value);

}  // namespace members

template <class Self, class Data, class Main, class... More>
class ObjectHandle : public automation::Object<Self, Main, More..., ElementHandle> {
  public:
    explicit ObjectHandle(const std::shared_ptr<Data>& data) : element_(data) {}

    const ElementRef& element() const noexcept override { return element_; }

    // ---- IKelosObject ----
    STDMETHODIMP get_SystemUID(BSTR* result) override {
        return answer(result, Given(data().name), [&] { return automation::Bstr(data().uid); });
    }
    STDMETHODIMP get_SystemType(long* result) override {
        return answer(result, Given(data().name), [&] { return data().system_type; });
    }
    STDMETHODIMP get_WorkSet(IKelosWorkset** result) override {
        return answer(result, Given(data().name),
                      [&] { return make_workset(model_of(element())); });
    }
    STDMETHODIMP get_Project(IKelosProject** result) override {
        return answer(result, Given(data().name), [&] { return members::project(element()); });
    }
    STDMETHODIMP get_PathFullName(IKelosProject* relative_to, BSTR* result) override {
        return answer(result, Given(data().name, relative_to),
                      [&] { return members::path(element(), relative_to); });
    }
    STDMETHODIMP FindByPathFullName(BSTR path, IKelosObject** result) override {
        return answer(result, Given(data().name, path), [&] {
            return make_object(kept(element(), find_below(data(), automation::view_of(path))));
        });
    }
    STDMETHODIMP get_Attributes(IKelosAttributes** result) override {
        return answer(result, Given(data().name), [&] { return make_attributes(element()); });
    }
    STDMETHODIMP AttributeByFullName(BSTR full_name, IKelosAttribute** result) override {
        return answer(result, Given(data().name, full_name),
                      [&] { return members::attribute(element(), full_name); });
    }
    STDMETHODIMP GetRights(IKelosUser* user, long* result) override {
        return answer(result, Given(data().name, user),
                      [&] { return members::rights(element(), user); });
    }
    STDMETHODIMP get_XObj(IDispatch** result) override {
        // An object with a mapping table plays that role itself.
        return answer(result, Given(data().name), [&] {
            return automation::ComPtr<IDispatch>(data().mapping ? this->main_interface() : nullptr);
        });
    }

    // ---- What the kit adds ----
    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, Given(data().name),
                      [&] { return automation::Bstr(short_name(data())); });
    }
    STDMETHODIMP get_Description(BSTR* result) override { return read(result, description(0)); }
    STDMETHODIMP put_Description(BSTR value) override { return write(value, description(0)); }
    STDMETHODIMP get_Description2(BSTR* result) override { return read(result, description(1)); }
    STDMETHODIMP put_Description2(BSTR value) override { return write(value, description(1)); }
    STDMETHODIMP get_Description3(BSTR* result) override { return read(result, description(2)); }
    STDMETHODIMP put_Description3(BSTR value) override { return write(value, description(2)); }
    STDMETHODIMP get_Label(BSTR* result) override { return read(result, data().label); }
    STDMETHODIMP put_Label(BSTR value) override { return write(value, data().label); }
    STDMETHODIMP get_FullLabel(BSTR* result) override {
        return answer(result, Given(data().name), [&] {
            return automation::Bstr(full_label(data(), LabelKind::own, language()));
        });
    }
    STDMETHODIMP get_SignedLabel(BSTR* result) override {
        return answer(result, Given(data().name), [&] {
            return automation::Bstr(signed_label(data(), LabelKind::own, language()));
        });
    }
    STDMETHODIMP get_FullName(BSTR* result) override {
        return answer(result, Given(data().name),
                      [&] { return automation::Bstr(full_name(data())); });
    }
    STDMETHODIMP get_Status(BSTR* result) override { return read(result, data().status); }
    STDMETHODIMP get_SystemTypeName(BSTR* result) override {
        return answer(result, Given(data().name),
                      [&] { return automation::Bstr(system_type_name(data())); });
    }
    STDMETHODIMP get_Parent(IKelosObject** result) override {
        return answer(result, Given(data().name),
                      [&] { return make_object(kept(element(), data().parent)); });
    }
    STDMETHODIMP get_Children(IKelosObjects** result) override {
        return answer(result, Given(data().name), [&] { return members::children(element()); });
    }
    STDMETHODIMP get_AttributeText(BSTR full_name, BSTR* result) override {
        return answer(result, Given(data().name, full_name),
                      [&] { return members::attribute_text(element(), full_name); });
    }
    STDMETHODIMP get_AttributeValue(BSTR full_name, long index, VARIANT* result) override {
        return answer(result, Given(data().name, full_name, index),
                      [&] { return members::attribute_value(element(), full_name, index); });
    }
    STDMETHODIMP get_InternationalDescription(long number, BSTR* result) override {
        return answer(result, Given(data().name, number),
                      [&] { return members::international_description(element(), number); });
    }

  protected:
    Data& data() const noexcept { return static_cast<Data&>(*element()); }
    std::shared_ptr<Data> data_ref() const noexcept { return {element(), &data()}; }
    std::size_t language() const noexcept { return current_language(data()); }

  private:
    LocalText& description(std::size_t number) const noexcept {
        return data().descriptions[number];
    }
    HRESULT read(
        BSTR* result, const LocalText& text,
        const std::source_location& member = std::source_location::current()) const noexcept {
        return answer(
            result, Given(data().name), [&] { return automation::Bstr(text.in(language())); },
            member);
    }
    HRESULT write(
        BSTR value, LocalText& text,
        const std::source_location& member = std::source_location::current()) const noexcept {
        return run(
            Given(data().name, value), [&] { members::replace_text(element(), text, value); },
            member);
    }

    ElementRef element_;
};

}  // namespace hostkit
