#include "cli/records/content_records.h"

#include <algorithm>
#include <iterator>

#include "cli/records/ascii.h"

namespace cli {
namespace {

constexpr std::u16string_view number_types[] = {u"Byte",   u"Integer", u"Long",
                                                u"Single", u"Double",  u"Currency"};

bool is_digits(std::u16string_view text) {
    return !text.empty() && text.find_first_not_of(u"0123456789") == text.npos;
}

}  // namespace

bool ArchivedValue::holds_value() const noexcept {
    return !type.empty() && type != u"Empty" && type != u"Null";
}

bool ArchivedValue::is_number() const noexcept {
    return std::ranges::find(number_types, type) != std::end(number_types);
}

PropertyKind ContentRecord::property_kind() const {
    if (property.name.empty()) return PropertyKind::none;
    if (is_digits(property.name)) return PropertyKind::numbered;
    return known_property(property.name) ? PropertyKind::known : PropertyKind::expression;
}

const ArchivedValue& ContentRecord::host_value() const noexcept {
    return items.empty() ? value : items.front().value;
}

const ArchivedValue& ContentRecord::display_value() const noexcept {
    return items.empty() ? value : items.front().display;
}

const ArchivedValue& ContentRecord::cell_value() const noexcept {
    return document_value.holds_value() ? document_value : host_value();
}

const kelos::KnownProperty* known_property(std::u16string_view name) {
    const bool is_number = is_digits(name);
    const auto* found =
        std::ranges::find_if(kelos::known_properties, [&](const kelos::KnownProperty& known) {
            return is_number ? decimal(known.number) == name : is_same_name(known.name, name);
        });
    return found == std::end(kelos::known_properties) ? nullptr : found;
}

std::u16string property_text(const PropertyRecord& property) {
    std::u16string text = property.name;
    if (!property.parameter.text.empty())
        text.append(u"(").append(property.parameter.text).append(u")");
    return text;
}

}  // namespace cli
