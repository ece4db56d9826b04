// Checks the known properties against the contract while compiling; there is no code here.
#include "host/known_properties.h"

#include "kelos.h"

namespace kelos {
namespace {

#define TESSERA_NAME(property)                              \
    static_assert(find_property(kqp##property) != nullptr); \
    case kqp##property:                                     \
        return u"" #property

// No default: a property that the contract gains is a compiler warning until it stands here.
constexpr std::u16string_view contract_name(KelosQueryProperty property) {
    switch (property) {
        case kqpNone:
            break;
            TESSERA_NAME(Description);
            TESSERA_NAME(Name);
            TESSERA_NAME(FullName);
            TESSERA_NAME(SystemFullName);
            TESSERA_NAME(NestedName);
            TESSERA_NAME(Description2);
            TESSERA_NAME(Description3);
            TESSERA_NAME(Label);
            TESSERA_NAME(FullLabel);
            TESSERA_NAME(SignedLabel);
            TESSERA_NAME(AliasFullLabel);
            TESSERA_NAME(AliasSignedLabel);
            TESSERA_NAME(DisplayValue);
            TESSERA_NAME(GetDisplayXValue);
            TESSERA_NAME(Value);
            TESSERA_NAME(GetXValue);
            TESSERA_NAME(ProductValue);
            TESSERA_NAME(GetStatus);
            TESSERA_NAME(GetInternationalDescription);
            TESSERA_NAME(GetInternationalValue);
            TESSERA_NAME(GetInternationalDescription2);
            TESSERA_NAME(GetInternationalDescription3);
            TESSERA_NAME(GetInternationalXValue);
            TESSERA_NAME(Login);
            TESSERA_NAME(FileName);
    }
    return {};
}
#undef TESSERA_NAME

// The contract spells one name otherwise than the table.
constexpr bool is_named_as_in_contract(const KnownProperty& property) {
    const auto name = contract_name(static_cast<KelosQueryProperty>(property.number));
    return property.name == (name == u"FullName" ? u"Fullname" : name);
}

static_assert(std::ranges::all_of(known_properties, is_named_as_in_contract));

}  // namespace
}  // namespace kelos
