#include "cli/records/content_records.h"

#include <algorithm>
#include <iterator>

#include "host/known_properties.h"

namespace cli {
namespace {

constexpr std::u16string_view number_types[] = {u"Byte",   u"Integer", u"Long",
                                                u"Single", u"Double",  u"Currency"};

// Property names are plain ASCII: that much of the rule about letters is enough.
char16_t lower_case(char16_t letter) noexcept {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter - u'A' + u'a') : letter;
}

bool is_same_name(std::u16string_view left, std::u16string_view right) {
    return std::ranges::equal(left, right, {}, lower_case, lower_case);
}

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
    const auto* known = kelos::find_property_if(
        [this](std::u16string_view name) { return is_same_name(name, property.name); });
    return known ? PropertyKind::known : PropertyKind::expression;
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

std::u16string property_text(const PropertyRecord& property) {
    std::u16string text = property.name;
    if (!property.parameter.text.empty())
        text.append(u"(").append(property.parameter.text).append(u")");
    return text;
}

}  // namespace cli
