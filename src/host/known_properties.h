// The properties of host objects that are known by name: what the component and a host have to
// agree on. Portable, so that rules on them are tested without a host.
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

namespace kelos {

struct KnownProperty {
    int number;  // a KelosQueryProperty
    std::u16string_view name;
    std::u16string_view set_name;  // of what writes the property back; empty: it cannot be written
    // What the parameter holds, in this order: the number of a language, the index of a value.
    bool takes_language = false;
    bool takes_index = false;
    bool of_attribute = false;  // other objects do not have it
};

// "Fullname" is spelled so on purpose: exact look-ups know it under no other spelling.
inline constexpr KnownProperty known_properties[] = {
    {1, u"Description", u"Description"},
    {6, u"Description2", u"Description2"},
    {7, u"Description3", u"Description3"},
    {2, u"Name", u"Name"},
    {3, u"Fullname", u""},
    {4, u"SystemFullName", u""},
    {5, u"NestedName", u""},
    {10, u"Label", u"Label"},
    {11, u"FullLabel", u""},
    {13, u"SignedLabel", u""},
    {20, u"AliasFullLabel", u""},
    {22, u"AliasSignedLabel", u""},
    {30, u"DisplayValue", u"DisplayValue", false, false, true},
    {31, u"GetDisplayXValue", u"SetXValue", false, true, true},
    {32, u"Value", u"Value", false, false, true},
    {33, u"GetXValue", u"SetXValue", false, true, true},
    {34, u"ProductValue", u"", false, false, true},
    {40, u"GetStatus", u""},
    {50, u"GetInternationalDescription", u"SetInternationalDescription", true},
    {52, u"GetInternationalDescription2", u"SetInternationalDescription2", true},
    {53, u"GetInternationalDescription3", u"SetInternationalDescription3", true},
    {51, u"GetInternationalValue", u"SetInternationalValue", true, false, true},
    {54, u"GetInternationalXValue", u"SetInternationalXValue", true, true, true},
    {60, u"Login", u""},
    {61, u"FileName", u"FileName"},
};

// Nothing for a number or name that is not known.
constexpr const KnownProperty* find_property(long number) noexcept {
    const auto* const found = std::ranges::find(known_properties, number, &KnownProperty::number);
    return found == std::end(known_properties) ? nullptr : found;
}
template <class Suits>
constexpr const KnownProperty* find_property_if(Suits&& name_suits) {
    const auto* const found =
        std::ranges::find_if(known_properties, name_suits, &KnownProperty::name);
    return found == std::end(known_properties) ? nullptr : found;
}

}  // namespace kelos
