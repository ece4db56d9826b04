#include "mapping/property_names.h"

namespace tessera {
namespace {

constexpr KnownProperty properties[] = {
    {u"Description", 1, WriteBack::same_name, {}},
    {u"Description2", 6, WriteBack::same_name, {}},
    {u"Description3", 7, WriteBack::same_name, {}},
    {u"Name", 2, WriteBack::same_name, {}},
    {u"Fullname", 3, WriteBack::none, {}},
    {u"SystemFullName", 4, WriteBack::none, {}},
    {u"NestedName", 5, WriteBack::none, {}},
    {u"Label", 10, WriteBack::same_name, {}},
    {u"FullLabel", 11, WriteBack::none, {}},
    {u"SignedLabel", 13, WriteBack::none, {}},
    {u"AliasFullLabel", 20, WriteBack::none, {}},
    {u"AliasSignedLabel", 22, WriteBack::none, {}},
    {u"DisplayValue", 30, WriteBack::same_name, {}},
    {u"GetDisplayXValue", 31, WriteBack::operation, u"SetXValue"},
    {u"Value", 32, WriteBack::same_name, {}},
    {u"GetXValue", 33, WriteBack::operation, u"SetXValue"},
    {u"ProductValue", 34, WriteBack::none, {}},
    {u"GetStatus", 40, WriteBack::none, {}},
    {u"GetInternationalDescription", 50, WriteBack::operation, u"SetInternationalDescription"},
    {u"GetInternationalDescription2", 52, WriteBack::operation, u"SetInternationalDescription2"},
    {u"GetInternationalDescription3", 53, WriteBack::operation, u"SetInternationalDescription3"},
    {u"GetInternationalValue", 51, WriteBack::operation, u"SetInternationalValue"},
    {u"GetInternationalXValue", 54, WriteBack::operation, u"SetInternationalXValue"},
    {u"Login", 60, WriteBack::none, {}},
    {u"FileName", 61, WriteBack::same_name, {}},
};

std::u16string constant_text(int constant) {
    const std::string digits = std::to_string(constant);
    return {digits.begin(), digits.end()};
}

}  // namespace

std::span<const KnownProperty> known_properties() noexcept {
    return properties;
}

std::optional<std::u16string> PropertyNameTable::find(std::u16string_view key) {
    for (const KnownProperty& property : properties) {
        if (property.name == key) return constant_text(property.constant);
        if (constant_text(property.constant) == key) return std::u16string(property.name);
    }
    if (unknown_keys_.emplace(key).second) return std::nullopt;
    return std::u16string();
}

}  // namespace tessera
