#include "hostkit/model/model_functions.h"

#include <algorithm>
#include <cmath>

#include "automation/conversion.h"
#include "automation/error.h"
#include "hostkit/model/query_data.h"
#include "kelos.h"

namespace hostkit {

using automation::Bstr;
using automation::Variant;

namespace {

// What tells an attribute's label from its object's in a full label.
constexpr wchar_t attribute_sign[] = L".";

// One decimal of a value in bar is worth none in kPa, and four in a unit of a thousand bar.
int decimals_in(const Attribute& attribute, const Unit* unit) {
    const int decimals = attribute.type.decimals;
    const Unit* const own = attribute.type.unit;
    if (decimals < 0 || !unit || !own || unit == own) return decimals;
    const double digits = std::log10(std::abs(unit->factor)) - std::log10(std::abs(own->factor));
    const int more = static_cast<int>(std::ceil(digits - 1e-9));
    return std::clamp(decimals + more, 0, most_decimals);
}

}  // namespace

Element::~Element() = default;

Attribute::Attribute(Model& owning_model, const AttributeType& attribute_type)
    : Element(owning_model, ElementKind::attribute), type(attribute_type) {
    system_type = kstAttribute;
}

Model::Model() = default;
Model::~Model() = default;

// ---- Identity and place ----------------------------------------------------------------------

std::wstring identity_key(long system_type, std::wstring_view uid) {
    return std::to_wstring(system_type).append(L":").append(uid);
}

bool remember(Element& element) {
    return element.model.elements.emplace(identity_key(element.system_type, element.uid), &element)
        .second;
}

Element* find_by_identity(Model& model, long system_type, std::wstring_view uid) {
    const auto found = model.elements.find(identity_key(system_type, uid));
    return found == model.elements.end() ? nullptr : found->second;
}

std::wstring path_of(const Element& element, const Element* top) {
    std::wstring path;
    for (const Element* level = &element; level && level != top; level = level->parent) {
        if (!path.empty()) path.insert(0, 1, L'|');
        path.insert(0, level->name);
    }
    return path;
}

Element* find_below(Element& top, std::wstring_view path) {
    Element* level = &top;
    const auto names = split(path, L'|');
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto child =
            std::find_if(level->children.begin(), level->children.end(),
                         [&](const auto& candidate) { return candidate->name == names[i]; });
        if (child == level->children.end())
            return i + 1 == names.size() ? find_attribute(*level, names[i]) : nullptr;
        level = child->get();
    }
    return level;
}

Element* find_anywhere(Model& model, std::wstring_view path) {
    if (model.project)
        if (Element* const found = find_below(*model.project, path)) return found;
    for (const auto& project : model.projects) {
        if (path == project->name) return project.get();
        if (path.starts_with(project->name + L"|"))
            return find_below(*project, path.substr(project->name.size() + 1));
    }
    return nullptr;
}

Attribute* find_attribute(const Element& element, std::wstring_view full_name) noexcept {
    for (const auto& attribute : element.attributes)
        if (attribute->name == full_name) return attribute.get();
    return nullptr;
}

Attribute& add_attribute(Element& element, const AttributeType& type) {
    auto attribute = std::make_unique<Attribute>(element.model, type);
    attribute->parent = &element;
    attribute->project = element.project;
    attribute->name = type.name;
    attribute->descriptions = type.descriptions;
    attribute->label = type.label;
    attribute->sign = attribute_sign;
    element.attributes.push_back(std::move(attribute));
    return *element.attributes.back();
}

const AttributeType& attribute_type(Model& model, const std::wstring& name) {
    if (const auto known = model.attribute_types.find(name); known != model.attribute_types.end())
        return *known->second;
    auto type = std::make_unique<AttributeType>();
    type->name = name;
    model.own_attribute_types.push_back(std::move(type));
    return *model.own_attribute_types.back();
}

void walk_below(Element& top, const std::function<void(Element&)>& visit) {
    for (const auto& child : top.children) {
        visit(*child);
        walk_below(*child, visit);
    }
}

std::wstring system_type_name(const Element& element) {
    for (const auto& [name, number] : element.model.system_types)
        if (number == element.system_type) return name;
    return {};
}

std::wstring short_name(const Element& element) {
    if (element.kind != ElementKind::attribute) return element.name;
    return element.name.substr(element.name.rfind(L'.') + 1);
}

std::wstring full_name(const Element& element) {
    return element.kind == ElementKind::attribute ? element.name
                                                  : path_of(element, element.project);
}

std::wstring nested_name(const Element& element) {
    return element.parent ? element.parent->name + L"." + element.name : element.name;
}

// ---- Texts -----------------------------------------------------------------------------------

std::size_t current_language(const Element& element) noexcept {
    return element.project ? element.project->language : element.model.language;
}

std::size_t language_for(const Element& element, long lcid) noexcept {
    const auto& languages = element.model.languages;
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (languages[i].lcid == lcid) return i;
    return current_language(element);
}

std::wstring label_of(const Element& element, LabelKind kind, std::size_t language) {
    if (kind == LabelKind::alias && !element.alias_label.empty())
        return element.alias_label.in(language);
    return element.label.in(language);
}

std::wstring signed_label(const Element& element, LabelKind kind, std::size_t language) {
    const std::wstring label = label_of(element, kind, language);
    return label.empty() ? label : element.sign + label;
}

std::wstring full_label(const Element& element, LabelKind kind, std::size_t language) {
    std::wstring labels;
    for (const Element* level = &element; level && level->kind != ElementKind::project;
         level = level->parent)
        labels.insert(0, signed_label(*level, kind, language));
    return labels;
}

// ---- Rights ----------------------------------------------------------------------------------

long rights_of(const Element& element, std::wstring_view login) {
    const std::wstring key(login);
    for (const Element* level = &element; level; level = level->parent)
        if (const auto said = level->rights.find(key); said != level->rights.end())
            return said->second;
    for (const User& user : element.model.users)
        if (user.login == login) return user.rights;
    return 0;
}

void require_write(const Element& element) {
    constexpr long right_to_write = 1;
    const std::wstring& login = element.model.users[element.model.user].login;
    if ((rights_of(element, login) & right_to_write) != right_to_write)
        automation::fail(E_ACCESSDENIED, L"The user \"" + login + L"\" may not change \"" +
                                             path_of(element) + L"\"");
}

// ---- Values of attributes --------------------------------------------------------------------

Variant value_in(const AttributeValue& value, std::size_t language) {
    return value.text.empty() ? value.value : Variant(value.text.in(language));
}

Variant value_at(const Attribute& attribute, long index, std::size_t language) {
    if (index < 1 || static_cast<std::size_t>(index) > attribute.values.size()) return {};
    return value_in(attribute.values[static_cast<std::size_t>(index) - 1], language);
}

void set_value(Attribute& attribute, long index, const VARIANT& value) {
    const auto position = static_cast<std::size_t>(index) - 1;
    if (index < 1 || position > attribute.values.size())
        automation::fail(automation::error_subscript_out_of_range);
    Variant converted = Variant::value_of(value);
    if (converted.vt != VT_EMPTY)
        converted = automation::to_type(converted, static_cast<VARTYPE>(attribute.type.type));
    if (position == attribute.values.size()) attribute.values.emplace_back();
    attribute.values[position] = {std::move(converted), {}};
}

Bstr display_of(const Attribute& attribute, const VARIANT& value, std::size_t language,
                const Unit* unit) {
    if (attribute.type.list)
        if (const ListItem* const item = attribute.type.list->find(value))
            return Bstr(item->text.in(language));
    const auto locale = static_cast<LCID>(attribute.model.languages[language].lcid);
    return display_text(value, locale, decimals_in(attribute, unit));
}

}  // namespace hostkit
