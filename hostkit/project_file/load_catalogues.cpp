#include "hostkit/project_file/loader_parts.h"
#include "kelos.h"

namespace hostkit::project_file {
namespace {

struct PresentationName {
    const wchar_t* name;
    long number;
};
constexpr PresentationName presentations[] = {
    {L"none", kprNone},
    {L"combo-box", kprComboBox},
    {L"list-box", kprListBox},
    {L"option-buttons", kprOptionButtons},
    {L"check-boxes", kprCheckBoxes},
};

long load_presentation(const Node& node) {
    const std::wstring name = node.text(L"presentation", L"none");
    for (const PresentationName& known : presentations)
        if (name == known.name) return known.number;
    node.fail(L"there is no presentation \"" + name + L"\"");
}

void load_unit(const Node& node, UnitGroup& group) {
    auto unit = std::make_unique<Unit>();
    unit->group = &group;
    unit->text = group.name + L"." + node.text(L"name");
    unit->label = node.text(L"label");
    unit->factor = node.factor(L"factor", 1);
    unit->offset = node.factor(L"offset", 0);
    if (unit->factor == 0) node.fail(L"a unit's factor may not be 0");
    group.units.push_back(std::move(unit));
}

int load_decimals(const Node& node) {
    const long decimals = node.number(L"decimals");
    if (decimals >= 0 && decimals <= most_decimals) return static_cast<int>(decimals);
    node.fail(L"\"decimals\" is not between 0 and " + std::to_wstring(most_decimals));
}

void load_list_item(LoadContext& context, const Node& node, ValueList& list, ValueType type) {
    ListItem item;
    item.value = value_of(node, type, node.text(L"value"));
    const TextSlots slots{{L"text", &item.text}};
    load_texts(node, slots);
    node.children({{L"translation", [&](const Node& translation) {
                        load_translation(context.model, translation, slots);
                    }}});
    list.items.push_back(std::move(item));
}

void load_value_list(LoadContext& context, const Node& node) {
    auto list = std::make_unique<ValueList>();
    list->name = node.text(L"name");
    list->presentation = load_presentation(node);
    const ValueType type = value_type(node, ValueType::text);
    node.children(
        {{L"item", [&](const Node& item) { load_list_item(context, item, *list, type); }}});
    const std::wstring name = list->name;
    if (!context.model.value_lists.emplace(name, std::move(list)).second)
        node.fail(L"there is a second value list \"" + name + L"\"");
}

void load_attribute_type(LoadContext& context, const Node& node) {
    auto type = std::make_unique<AttributeType>();
    type->name = node.text(L"name");
    load_attribute_settings(context, node, *type);
    const TextSlots slots = text_slots(type->descriptions, type->label);
    load_texts(node, slots);
    node.children({{L"translation", [&](const Node& translation) {
                        load_translation(context.model, translation, slots);
                    }}});
    const std::wstring name = type->name;
    if (!context.model.attribute_types.emplace(name, std::move(type)).second)
        node.fail(L"there is a second attribute type \"" + name + L"\"");
}

}  // namespace

void load_languages(LoadContext& context, const Node& node) {
    Model& model = context.model;
    node.children(
        {{L"language", [&](const Node& language) {
              model.languages.push_back({language.text(L"name"), language.number(L"lcid")});
          }}});
    if (model.languages.empty()) node.fail(L"there is no <language>");
    model.language = language_named(model, node, node.text(L"current"));
}

void load_users(LoadContext& context, const Node& node) {
    Model& model = context.model;
    node.children({{L"user", [&](const Node& user) {
                        model.users.push_back({user.text(L"login"), user.number(L"rights")});
                    }}});
    if (model.users.empty()) node.fail(L"there is no <user>");
    model.user = user_named(model, node, node.text(L"current"));
}

void load_system_types(LoadContext& context, const Node& node) {
    node.children(
        {{L"system-type", [&](const Node& type) {
              const std::wstring name = type.text(L"name");
              if (!context.model.system_types.emplace(name, type.number(L"number")).second)
                  type.fail(L"there is a second system type \"" + name + L"\"");
          }}});
}

void load_unit_groups(LoadContext& context, const Node& node) {
    node.children(
        {{L"unit-group", [&](const Node& group_node) {
              auto group = std::make_unique<UnitGroup>();
              group->name = group_node.text(L"name");
              group_node.children({{L"unit", [&](const Node& unit) { load_unit(unit, *group); }}});
              context.model.unit_groups.push_back(std::move(group));
          }}});
}

void load_value_lists(LoadContext& context, const Node& node) {
    node.children({{L"value-list", [&](const Node& list) { load_value_list(context, list); }}});
}

void load_attribute_types(LoadContext& context, const Node& node) {
    node.children(
        {{L"attribute-type", [&](const Node& type) { load_attribute_type(context, type); }}});
}

void load_attribute_settings(LoadContext& context, const Node& node, AttributeType& type) {
    type.type = value_type(node, type.type);
    if (const auto unit = node.find(L"unit")) type.unit = &unit_named(context.model, node, *unit);
    if (const auto list = node.find(L"list")) {
        const auto found = context.model.value_lists.find(*list);
        if (found == context.model.value_lists.end())
            node.fail(L"there is no value list \"" + *list + L"\"");
        type.list = found->second.get();
    }
    if (node.find(L"decimals")) type.decimals = load_decimals(node);
}

}  // namespace hostkit::project_file
