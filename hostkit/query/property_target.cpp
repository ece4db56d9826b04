#include "hostkit/query/property_target.h"

#include "automation/error.h"
#include "hostkit/model/model_functions.h"

namespace hostkit {
namespace {

// The parts of a parameter text that the property takes, parted by ";": a language and an index
// where it takes them, and for objects that are no attributes the attribute's full name.
struct Parameter {
    long language = 0;
    long index = 1;
    std::wstring_view attribute;
};

Parameter read_parameter(const kelos::KnownProperty& property, std::wstring_view text) {
    Parameter parameter;
    bool wants_language = property.takes_language;
    bool wants_index = property.takes_index;
    for (const std::wstring_view part : split(text, L';')) {
        long number = 0;
        if (!read_number(part, number)) {
            parameter.attribute = trimmed(part);
        } else if (wants_language) {
            parameter.language = number;
            wants_language = false;
        } else if (wants_index) {
            parameter.index = number;
            wants_index = false;
        }
    }
    return parameter;
}

// A language asked for by number goes before the one of the column.
std::size_t language_of(const Element& element, const Parameter& parameter, long lcid) {
    const auto count = static_cast<long>(element.model.languages.size());
    if (parameter.language >= 1 && parameter.language <= count)
        return static_cast<std::size_t>(parameter.language) - 1;
    return language_for(element, lcid);
}

}  // namespace

std::optional<PropertyTarget> property_target(Element& element, const ColumnSettings& settings) {
    const auto* const property = kelos::find_property(settings.constant);
    if (!property) return {};
    const Parameter parameter = read_parameter(*property, settings.parameter);
    PropertyTarget target{*property, nullptr, parameter.index,
                          language_of(element, parameter, settings.lcid)};
    if (!property->of_attribute) return target;
    target.attribute = element.kind == ElementKind::attribute
                           ? static_cast<Attribute*>(&element)
                           : find_attribute(element, parameter.attribute);
    if (!target.attribute) return {};
    return target;
}

const Unit* wanted_unit(const Attribute& attribute, const std::wstring& text) {
    const Unit* const own = attribute.type.unit;
    if (!own || text.empty()) return own;
    if (const Unit* const unit = own->group->find(text)) return unit;
    automation::fail(E_INVALIDARG, L"The unit \"" + text + L"\" does not suit \"" +
                                       path_of(attribute) + L"\", which is in \"" + own->text +
                                       L"\"");
}

}  // namespace hostkit
