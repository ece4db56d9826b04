#include "automation/conversion.h"
#include "automation/enumerator.h"
#include "hostkit/objects/element_handle.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Object;
using automation::Variant;
using automation::view_of;

// ---- Units -----------------------------------------------------------------------------------

using UnitRef = std::shared_ptr<const Unit>;

ComPtr<IKelosUnitGroup> make_unit_group(const UnitRef& member);

class UnitObject : public Object<UnitObject, Extends<IHostKitUnit, IKelosUnit>> {
  public:
    explicit UnitObject(UnitRef unit) : unit_(std::move(unit)) {}

    STDMETHODIMP get_Label(BSTR* result) override {
        return answer(result, [&] { return Bstr(unit_->label); });
    }
    STDMETHODIMP get_UnitText(BSTR* result) override {
        return answer(result, [&] { return Bstr(unit_->text); });
    }
    STDMETHODIMP get_Group(IKelosUnitGroup** result) override {
        return answer(result, [&] { return make_unit_group(unit_); });
    }

  private:
    UnitRef unit_;
};

ComPtr<IKelosUnit> make_unit(const UnitRef& unit) {
    if (!unit) return {};
    return automation::make<UnitObject>(unit)->main_pointer();
}

class UnitGroupObject
    : public Object<UnitGroupObject, Extends<IHostKitUnitGroup, IKelosUnitGroup>> {
  public:
    explicit UnitGroupObject(UnitRef member) : member_(std::move(member)) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(units().size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosUnit** result) override {
        return answer(result, Given(index), [&]() -> ComPtr<IKelosUnit> {
            const auto* const unit = item_at(units(), index);
            return unit ? make_unit(UnitRef(member_, unit->get())) : nullptr;
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(
                units(), [&](const auto& unit) { return make_unit(UnitRef(member_, unit.get())); });
        });
    }

  private:
    const std::vector<std::unique_ptr<Unit>>& units() const noexcept {
        return member_->group->units;
    }

    UnitRef member_;
};

ComPtr<IKelosUnitGroup> make_unit_group(const UnitRef& member) {
    return automation::make<UnitGroupObject>(member)->main_pointer();
}

// ---- Attributes ------------------------------------------------------------------------------

class AttributeObject
    : public ObjectHandle<AttributeObject, Attribute,
                          Extends<IHostKitAttribute, IKelosAttribute, IKelosObject>> {
  public:
    using ObjectHandle::ObjectHandle;

    STDMETHODIMP get_Value(long index, VARIANT* result) override {
        return answer(result, Given(data().name, index),
                      [&] { return value_at(data(), index, language()); });
    }
    STDMETHODIMP put_Value(long index, VARIANT value) override {
        return run(Given(data().name, index, value), [&] {
            require_write(data());
            set_value(data(), index, value);
        });
    }
    STDMETHODIMP get_ValueText(BSTR* result) override {
        return answer(result, Given(data().name), [&] {
            // The platform's plain form; a Boolean is "-1" or "0".
            const Variant value = value_at(data(), 1, language());
            Variant text = automation::to_type(value, VT_BSTR);
            return Bstr::attach(text.detach().bstrVal);
        });
    }
    STDMETHODIMP get_Marker(BSTR* result) override {
        return answer(result, Given(data().name), [&] { return Bstr(data().marker); });
    }
    STDMETHODIMP put_Marker(BSTR marker) override {
        return run(Given(data().name, marker), [&] {
            require_write(data());
            data().marker = view_of(marker);
        });
    }
    STDMETHODIMP get_Unit(IKelosUnit** result) override {
        return answer(result, Given(data().name),
                      [&] { return make_unit(kept(element(), data().type.unit)); });
    }
    STDMETHODIMP get_Text(BSTR* result) override {
        return answer(result, Given(data().name), [&] {
            return display_of(data(), value_at(data(), 1, language()), language());
        });
    }
    STDMETHODIMP get_ValueCount(long* result) override {
        return answer(result, Given(data().name),
                      [&] { return static_cast<long>(data().values.size()); });
    }
    STDMETHODIMP get_UnitLabel(BSTR* result) override {
        return answer(result, Given(data().name),
                      [&] { return data().type.unit ? Bstr(data().type.unit->label) : Bstr(); });
    }
};

class AttributeList : public Object<AttributeList, Extends<IHostKitAttributes, IKelosAttributes>> {
  public:
    explicit AttributeList(ElementRef owner) : owner_(std::move(owner)) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(owner_->attributes.size()); });
    }
    STDMETHODIMP get_Item(VARIANT index, IKelosAttribute** result) override {
        return answer(result, Given(index),
                      [&] { return make_attribute(kept(owner_, find(index))); });
    }
    STDMETHODIMP Add(BSTR name, IKelosAttribute** result) override {
        return answer(result, Given(name),
                      [&] { return make_attribute(kept(owner_, add(view_of(name)))); });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(owner_->attributes, [&](const auto& attribute) {
                return make_attribute(kept(owner_, attribute.get()));
            });
        });
    }

  private:
    Attribute* find(const VARIANT& given) const {
        const Variant index = Variant::value_of(given);
        if (index.is_string()) return find_attribute(*owner_, index.text());
        const auto* const attribute = item_at(owner_->attributes, automation::to_long(index));
        return attribute ? attribute->get() : nullptr;
    }

    Attribute* add(std::wstring_view name) const {
        if (Attribute* const there = find_attribute(*owner_, name)) return there;
        require_write(*owner_);
        if (name.empty() || name.find(L'|') != name.npos)
            automation::fail(E_INVALIDARG, L"This is no name for an attribute");
        Attribute& attribute =
            add_attribute(*owner_, attribute_type(owner_->model, std::wstring(name)));
        attribute.uid = path_of(attribute);
        remember(attribute);
        return &attribute;
    }

    ElementRef owner_;
};

}  // namespace

ComPtr<IKelosAttribute> make_attribute(const std::shared_ptr<Attribute>& attribute) {
    if (!attribute) return {};
    return automation::make<AttributeObject>(attribute)->main_pointer();
}

ComPtr<IKelosAttributes> make_attributes(const ElementRef& owner) {
    return automation::make<AttributeList>(owner)->main_pointer();
}

}  // namespace hostkit
