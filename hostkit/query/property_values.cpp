#include "hostkit/query/property_values.h"

#include "automation/conversion.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/query/property_target.h"
#include "kelos.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::Variant;

std::wstring text_property(const Element& element, long constant, std::size_t language) {
    switch (constant) {
        case kqpDescription:
        case kqpGetInternationalDescription:
            return element.descriptions[0].in(language);
        case kqpDescription2:
        case kqpGetInternationalDescription2:
            return element.descriptions[1].in(language);
        case kqpDescription3:
        case kqpGetInternationalDescription3:
            return element.descriptions[2].in(language);
        case kqpName:
            return short_name(element);
        case kqpFullName:
            return full_name(element);
        case kqpSystemFullName:
            return path_of(element);
        case kqpNestedName:
            return nested_name(element);
        case kqpLabel:
            return label_of(element, LabelKind::own, language);
        case kqpFullLabel:
            return full_label(element, LabelKind::own, language);
        case kqpSignedLabel:
            return signed_label(element, LabelKind::own, language);
        case kqpAliasFullLabel:
            return full_label(element, LabelKind::alias, language);
        case kqpAliasSignedLabel:
            return signed_label(element, LabelKind::alias, language);
        case kqpGetStatus:
            return element.status.in(language);
        case kqpLogin:
            return element.login;
        case kqpFileName:
            return element.file;
        default:
            return {};
    }
}

Variant in_unit(const Attribute& attribute, Variant value, const Unit* unit) {
    const bool is_number = value.vt == VT_R8 || value.vt == VT_I4;
    if (!is_number || unit == attribute.type.unit) return value;
    return Variant(convert(automation::to_type(value, VT_R8).dblVal, *attribute.type.unit, *unit));
}

Variant current_value(const Attribute& attribute, long constant, long index, std::size_t language) {
    if (constant != kqpProductValue) return value_at(attribute, index, language);
    return attribute.product.empty() ? Variant() : value_in(attribute.product.front(), language);
}

// A column of values shows them as they are; one of display values shows what a user reads.
Variant display_of(const Attribute& attribute, const Variant& value, long constant,
                   std::size_t language, const Unit* unit) {
    const bool as_it_is = constant == kqpValue || constant == kqpGetXValue;
    if (!as_it_is || attribute.type.list)
        return Variant(display_of(attribute, value, language, unit));
    const auto locale = static_cast<LCID>(attribute.model.languages[language].lcid);
    return Variant(display_text(value, locale, -1));
}

void add_list(PropertyValues& result, const ValueList& list, const Variant& current,
              std::size_t language) {
    const ListItem* const chosen = list.find(current);
    for (const ListItem& item : list.items)
        if (&item != chosen)
            result.entries.push_back({item.value, Variant(item.text.in(language))});
    result.presentation = list.presentation;
}

PropertyValues read_values(const ColumnSettings& settings, const PropertyTarget& target) {
    const Attribute& attribute = *target.attribute;
    const std::size_t language = target.language;
    PropertyValues result;
    result.unit = wanted_unit(attribute, settings.unit);
    Variant value =
        in_unit(attribute, current_value(attribute, settings.constant, target.index, language),
                result.unit);
    if (value.vt != VT_EMPTY) {
        Variant display = display_of(attribute, value, settings.constant, language, result.unit);
        result.entries.push_back({value, std::move(display)});
    }
    if (attribute.type.list) add_list(result, *attribute.type.list, value, language);
    return result;
}

}  // namespace

std::optional<PropertyValues> read_property(Element& element, const ColumnSettings& settings) {
    const auto target = property_target(element, settings);
    if (!target) return {};
    PropertyValues result;
    if (target->attribute) {
        result = read_values(settings, *target);
    } else {
        const Variant text(text_property(element, settings.constant, target->language));
        result.entries.push_back({text, text});
    }
    result.lcid = element.model.languages[target->language].lcid;
    return result;
}

}  // namespace hostkit
