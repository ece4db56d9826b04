#include "hostkit/project_file/loader.h"

#include "hostkit/model/model_functions.h"
#include "hostkit/model/query_data.h"
#include "hostkit/project_file/loader_parts.h"

namespace hostkit::project_file {
namespace {

constexpr long file_version = 1;

void load_root(LoadContext& context, const Node& root) {
    if (root.element().name != L"kelos-project-file")
        root.fail(L"this is no project file: its root element is not <kelos-project-file>");
    if (root.number(L"version") != file_version)
        root.fail(L"this version of project files is not known");
    context.model.lcid = root.number(L"lcid", 0);
    const auto with = [&](void (*load)(LoadContext&, const Node&)) {
        return [&context, load](const Node& node) { load(context, node); };
    };
    root.children({{L"languages", with(load_languages)},
                   {L"users", with(load_users)},
                   {L"system-types", with(load_system_types)},
                   {L"units", with(load_unit_groups)},
                   {L"value-lists", with(load_value_lists)},
                   {L"attribute-types", with(load_attribute_types)},
                   {L"project", with(load_project)},
                   {L"queries", with(load_queries)}});
    root.check_all_read();
    for (const auto& load : context.later)
        load();

    Model& model = context.model;
    if (model.projects.empty()) root.fail(L"there is no <project>");
    if (model.lcid == 0) model.lcid = model.languages[model.projects.front()->language].lcid;
}

}  // namespace

std::shared_ptr<Model> load(const std::wstring& path) {
    ProjectSource source{path, read_file(path)};
    const XmlElement root = read_xml(path, source.bytes);
    return load(std::move(source), root);
}

std::shared_ptr<Model> load(ProjectSource source, const XmlElement& root) {
    auto model = std::make_shared<Model>();
    LoadContext context{*model, {}};
    load_root(context, Node(root, source.path));
    model->source = std::move(source);
    return model;
}

// ---- Look-ups --------------------------------------------------------------------------------

std::size_t language_named(const Model& model, const Node& node, std::wstring_view name) {
    for (std::size_t i = 0; i < model.languages.size(); ++i)
        if (model.languages[i].name == name) return i;
    node.fail(std::wstring(L"there is no language \"").append(name).append(L"\""));
}

std::size_t user_named(const Model& model, const Node& node, std::wstring_view login) {
    for (std::size_t i = 0; i < model.users.size(); ++i)
        if (model.users[i].login == login) return i;
    node.fail(std::wstring(L"there is no user \"").append(login).append(L"\""));
}

long system_type_named(const Model& model, const Node& node, const std::wstring& name) {
    if (const auto found = model.system_types.find(name); found != model.system_types.end())
        return found->second;
    node.fail(L"there is no system type \"" + name + L"\"");
}

const Unit& unit_named(const Model& model, const Node& node, std::wstring_view text) {
    for (const auto& group : model.unit_groups)
        if (const Unit* const unit = group->find(text)) return *unit;
    node.fail(std::wstring(L"there is no unit \"").append(text).append(L"\""));
}

Element& element_at(Model& model, const Node& node, std::wstring_view path, Project* project) {
    if (project)
        if (Element* const found = find_below(*project, path)) return *found;
    if (Element* const found = find_anywhere(model, path)) return *found;
    node.fail(std::wstring(L"there is no object \"").append(path).append(L"\""));
}

automation::Variant value_of(const Node& node, ValueType type, std::wstring_view text) {
    if (auto value = read_value(type, text)) return *std::move(value);
    node.fail(
        std::wstring(L"\"").append(text).append(L"\" is no value of the type that is asked for"));
}

ValueType value_type(const Node& node, ValueType by_default) {
    const auto name = node.find(L"type");
    if (!name) return by_default;
    if (const auto type = value_type_of(*name)) return *type;
    node.fail(L"there is no value type \"" + *name + L"\"");
}

// ---- Texts -----------------------------------------------------------------------------------

TextSlots text_slots(std::array<LocalText, 3>& descriptions, LocalText& label) {
    return {{L"description", &descriptions[0]},
            {L"description2", &descriptions[1]},
            {L"description3", &descriptions[2]},
            {L"label", &label}};
}

void load_texts(const Node& node, const TextSlots& slots) {
    for (const auto& [attribute, text] : slots)
        if (auto base = node.find(attribute)) text->set_base(*std::move(base));
}

void load_translation(const Model& model, const Node& node, const TextSlots& slots) {
    const std::size_t language = language_named(model, node, node.text(L"language"));
    for (const auto& [attribute, text] : slots)
        if (auto translation = node.find(attribute))
            text->translate(language, *std::move(translation));
}

}  // namespace hostkit::project_file
