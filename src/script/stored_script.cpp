#include "script/stored_script.h"

#include "automation/conversion.h"
#include "script/script_text.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

constexpr wchar_t attribute_name[] = L"Vex";
constexpr wchar_t free_text_marker[] = L"~";
constexpr long script_index = 1;

ComPtr<IKelosAttribute> attribute_of(IKelosObject* object) {
    const auto attributes = get(object, &IKelosObject::get_Attributes);
    const Variant name(attribute_name);
    return get(attributes, &IKelosAttributes::get_Item, static_cast<VARIANT>(name));
}

bool has_rights(const ComPtr<IKelosObject>& object, long mask) {
    const auto workset = get(object, &IKelosObject::get_WorkSet);
    const auto user = get(workset, &IKelosWorkset::get_CurrentUser);
    return (mask & get(object, &IKelosObject::GetRights, user.get())) == mask;
}

// The object that keeps the script; nothing when the user may not touch it there.
ComPtr<IKelosObject> script_keeper(IKelosDocument* document) {
    const auto delegate = get(document, &IKelosDocument::get_Delegate);
    if (!delegate) return ComPtr<IKelosDocument>(document);
    return has_rights(delegate, krWrite) ? delegate : ComPtr<IKelosObject>();
}

void mark_as_free_text(const ComPtr<IKelosAttribute>& attribute) {
    if (get(attribute, &IKelosAttribute::get_Marker).view() == free_text_marker) return;
    const Bstr marker(free_text_marker);
    call(attribute, &IKelosAttribute::put_Marker, marker.get());
}

Bstr script_value(const ComPtr<IKelosAttribute>& attribute) {
    return automation::to_text(get(attribute, &IKelosAttribute::get_Value, script_index));
}

}  // namespace

ComPtr<IKelosAttribute> script_attribute(IKelosDocument* document) {
    const auto keeper = script_keeper(document);
    return keeper ? attribute_of(keeper.get()) : ComPtr<IKelosAttribute>();
}

ComPtr<IKelosAttribute> script_attribute_created(IKelosDocument* document) {
    const auto keeper = script_keeper(document);
    if (!keeper) return {};
    if (auto attribute = attribute_of(keeper.get())) return attribute;
    const Bstr name(attribute_name);
    return get(get(keeper, &IKelosObject::get_Attributes), &IKelosAttributes::Add, name.get());
}

Bstr read_script(const ComPtr<IKelosAttribute>& attribute) {
    mark_as_free_text(attribute);
    return script_value(attribute);
}

void write_script(const ComPtr<IKelosAttribute>& attribute, std::wstring_view script) {
    const Variant value(script);
    call(attribute, &IKelosAttribute::put_Value, script_index, static_cast<VARIANT>(value));
    mark_as_free_text(attribute);
}

bool IsVexScriptEmptyOrNothing(IKelosDocument* document) noexcept {
    bool known = false;
    bool empty = true;
    guarded(vex_script_member(L"Function IsVexScriptEmptyOrNothing"), [&] {
        if (document)
            if (const auto attribute = attribute_of(document))
                empty = is_empty_script(script_value(attribute).u16());
        known = true;
    });
    // A script that could not be read is none to be replaced.
    return known && empty;
}

}  // namespace tessera
