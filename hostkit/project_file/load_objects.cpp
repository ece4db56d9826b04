#include <algorithm>

#include "hostkit/model/model_functions.h"
#include "hostkit/model/query_data.h"
#include "hostkit/project_file/loader_parts.h"
#include "kelos.h"

namespace hostkit::project_file {
namespace {

constexpr wchar_t script_attribute[] = L"Vex";

void check_name(const Node& node, std::wstring_view name) {
    if (name.empty()) node.fail(L"a name may not be empty");
    if (name.find(L'|') != name.npos) node.fail(L"a name may not contain \"|\"");
}

// The identifier is the file's, or the path, which is unique as well.
void identify(const Node& node, Element& element) {
    element.uid = node.text(L"uid", L"");
    if (element.uid.empty()) element.uid = path_of(element);
    if (!remember(element))
        node.fail(L"there is a second object of its type with the identifier \"" + element.uid +
                  L"\"");
}

// ---- Attributes ------------------------------------------------------------------------------

const AttributeType& type_for(LoadContext& context, const Node& node, const std::wstring& name) {
    const AttributeType& common = attribute_type(context.model, name);
    const bool differs =
        node.find(L"type") || node.find(L"unit") || node.find(L"list") || node.find(L"decimals");
    if (!differs) return common;
    auto own = std::make_unique<AttributeType>(common);
    load_attribute_settings(context, node, *own);
    context.model.own_attribute_types.push_back(std::move(own));
    return *context.model.own_attribute_types.back();
}

AttributeValue load_value(const Node& node, ValueType type, const std::wstring& text) {
    AttributeValue value{value_of(node, type, text), {}};
    if (type == ValueType::text) value.text = LocalText(text);
    return value;
}

// Only texts have translations.
void add_value(const Node& node, const std::wstring& text, Attribute& attribute, TextSlots& slots) {
    attribute.values.push_back(load_value(node, attribute.type.type, text));
    if (attribute.type.type == ValueType::text)
        slots.emplace_back(L"value", &attribute.values.back().text);
}

// An <item> of an attribute with several values.
void load_item(LoadContext& context, const Node& node, Attribute& attribute) {
    TextSlots slots;
    add_value(node, node.text(L"value"), attribute, slots);
    node.children({{L"translation", [&](const Node& translation) {
                        load_translation(context.model, translation, slots);
                    }}});
}

void load_attribute(LoadContext& context, const Node& node, Element& owner) {
    const std::wstring name = node.text(L"name");
    check_name(node, name);
    if (find_attribute(owner, name)) node.fail(L"there is a second attribute \"" + name + L"\"");
    Attribute& attribute = add_attribute(owner, type_for(context, node, name));
    attribute.marker = node.text(L"marker", L"");
    TextSlots slots = text_slots(attribute.descriptions, attribute.label);
    load_texts(node, slots);
    // The slot of the value's translation must stay where it is when items are added.
    attribute.values.reserve(1 + node.element().children.size());
    if (const auto value = node.find(L"value")) add_value(node, *value, attribute, slots);
    if (const auto product = node.find(L"product"))
        attribute.product.push_back(load_value(node, attribute.type.type, *product));
    identify(node, attribute);
    node.children(
        {{L"translation",
          [&](const Node& translation) { load_translation(context.model, translation, slots); }},
         {L"item", [&](const Node& item) { load_item(context, item, attribute); }}});
}

// A document's stored mapping script.
void load_script(LoadContext& context, const Node& node, Element& owner) {
    Attribute& attribute = add_attribute(owner, attribute_type(context.model, script_attribute));
    attribute.marker = node.text(L"marker", L"~");
    attribute.values.push_back({automation::Variant(script_text(node.text())), {}});
    identify(node, attribute);
}

// ---- Objects ---------------------------------------------------------------------------------

void load_element(LoadContext& context, const Node& node, Element& element);

void load_rights(LoadContext& context, const Node& node, Element& element) {
    const std::wstring login = node.text(L"user");
    user_named(context.model, node, login);
    element.rights[login] = node.number(L"mask");
}

void append(LoadContext& context, Element& parent, std::unique_ptr<Element> child,
            const Node& node) {
    child->parent = &parent;
    child->project = parent.project;
    child->name = node.text(L"name");
    check_name(node, child->name);
    if (!context.names[&parent].insert(child->name).second)
        node.fail(L"there is a second object \"" + path_of(*child) + L"\"");
    parent.children.push_back(std::move(child));
}

Element& load_object(LoadContext& context, const Node& node, Element& parent) {
    append(context, parent, std::make_unique<Element>(context.model, ElementKind::object), node);
    Element& element = *parent.children.back();
    element.system_type = system_type_named(context.model, node, node.text(L"type"));
    load_element(context, node, element);
    return element;
}

// Looks the attribute's object up when all objects are there.
template <class Use>
void refer(LoadContext& context, const Node& node, std::wstring_view attribute, Element& place,
           Use use) {
    const auto path = node.find(attribute);
    if (!path) return;
    context.later.push_back([&model = context.model, source = Node(node.element(), node.path()),
                             path = *path, project = place.project,
                             use] { use(element_at(model, source, path, project)); });
}

void load_references(LoadContext& context, const Node& node, Document& document) {
    refer(context, node, L"owner", document,
          [&document](Element& owner) { document.owner = &owner; });
    refer(context, node, L"delegate", document,
          [&document](Element& delegate) { document.delegate = &delegate; });
    const auto name = node.find(L"query");
    if (!name) return;
    context.later.push_back([&document, source = Node(node.element(), node.path()), name = *name] {
        for (const auto& query : document.model.queries)
            if (query->name == name) document.query = query.get();
        if (!document.query) source.fail(L"there is no query \"" + name + L"\"");
    });
}

void load_shown(LoadContext& context, const Node& node, Document& document) {
    const std::size_t position = document.shown.size();
    document.shown.push_back(nullptr);
    node.text(L"object");
    refer(context, node, L"object", document,
          [&document, position](Element& shown) { document.shown[position] = &shown; });
}

void load_entry(LoadContext& context, const Node& node, Document& document) {
    const std::size_t position = document.named_entries.size();
    document.named_entries.emplace_back(node.text(L"name"), nullptr);
    refer(context, node, L"object", document, [&document, position](Element& object) {
        document.named_entries[position].second = &object;
    });
}

void load_document(LoadContext& context, const Node& node, Element& parent) {
    append(context, parent, std::make_unique<Document>(context.model), node);
    auto& document = static_cast<Document&>(*parent.children.back());
    document.system_type = kstDocument;
    const bool holds_query = node.find(L"query").has_value();
    document.type_text = node.text(L"type-text", holds_query ? L"J" : L"");
    document.sub_type_text = node.text(L"sub-type-text", holds_query ? L"1" : L"");
    load_references(context, node, document);
    load_element(context, node, document);
}

// Children of documents only.
void load_document_child(LoadContext& context, const Node& node, Element& element,
                         void (*load)(LoadContext&, const Node&, Document&)) {
    if (element.kind != ElementKind::document)
        node.fail(L"<" + node.element().name + L"> may stand inside <document> only");
    load(context, node, static_cast<Document&>(element));
}

void load_child_object(LoadContext& context, const Node& node, Element& parent) {
    Element& child = load_object(context, node, parent);
    // A document shows the objects that it holds.
    if (parent.kind == ElementKind::document)
        static_cast<Document&>(parent).shown.push_back(&child);
}

// What objects, documents and projects have in common.
void load_element(LoadContext& context, const Node& node, Element& element) {
    TextSlots slots = text_slots(element.descriptions, element.label);
    slots.emplace_back(L"alias", &element.alias_label);
    slots.emplace_back(L"status", &element.status);
    load_texts(node, slots);
    element.sign = node.text(L"sign", L"");
    element.login = node.text(L"login", L"");
    element.file = node.text(L"file", L"");
    identify(node, element);
    node.children({
        {L"translation", [&](const Node& child) { load_translation(context.model, child, slots); }},
        {L"rights", [&](const Node& child) { load_rights(context, child, element); }},
        {L"attribute", [&](const Node& child) { load_attribute(context, child, element); }},
        {L"object", [&](const Node& child) { load_child_object(context, child, element); }},
        {L"document", [&](const Node& child) { load_document(context, child, element); }},
        {L"script", [&](const Node& child) { load_script(context, child, element); }},
        {L"mapping", [&](const Node& child) { load_mapping(context, child, element); }},
        {L"shows",
         [&](const Node& child) { load_document_child(context, child, element, load_shown); }},
        {L"entry",
         [&](const Node& child) { load_document_child(context, child, element, load_entry); }},
    });
}

}  // namespace

void load_project(LoadContext& context, const Node& node) {
    Model& model = context.model;
    if (model.languages.empty() || model.users.empty())
        node.fail(L"<languages> and <users> must stand before <project>");
    model.projects.push_back(std::make_unique<Project>(model));
    Project& project = *model.projects.back();
    project.project = &project;
    project.name = node.text(L"name");
    check_name(node, project.name);
    project.system_type = system_type_named(model, node, node.text(L"type"));
    project.language = model.language;
    if (const auto language = node.find(L"language"))
        project.language = language_named(model, node, *language);
    if (node.flag(L"current", false)) model.project = &project;
    load_element(context, node, project);
}

}  // namespace hostkit::project_file
