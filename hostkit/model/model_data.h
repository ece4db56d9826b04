// The kit's object model as plain data.
//
// One Model owns everything that a project file describes. Automation objects are thin handles that
// keep the model alive (std::shared_ptr<Model>) and point into it; nothing in the model refers to a
// handle, so that no cycle can arise and everything ends with the last handle.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <unordered_map>

#include "automation/com_ptr.h"
#include "hostkit/model/mapping_table.h"
#include "hostkit/model/units.h"
#include "hostkit/model/values.h"

namespace hostkit {

struct Model;
struct Attribute;
struct Project;
struct QueryDefinition;

struct Language {
    std::wstring name;
    long lcid = 0;
};

struct User {
    std::wstring login;
    long rights = 0;  // on every object that says nothing else
};

enum class ElementKind { object, project, document, attribute };

// An engineering object: a node of the tree below a project.
struct Element {
    Element(Model& owning_model, ElementKind element_kind)
        : model(owning_model), kind(element_kind) {}
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    virtual ~Element();

    Model& model;
    const ElementKind kind;
    long system_type = 0;
    Element* parent = nullptr;  // nothing above a project
    Project* project = nullptr;
    std::wstring uid;
    std::wstring name;
    std::array<LocalText, 3> descriptions;
    LocalText label;
    LocalText alias_label;
    std::wstring sign;  // what the label is told by, for example "=" or "-"
    LocalText status;
    std::wstring login;
    std::wstring file;
    std::map<std::wstring, long> rights;  // by login
    std::vector<std::unique_ptr<Attribute>> attributes;
    std::vector<std::unique_ptr<Element>> children;
    std::unique_ptr<MappingTable> mapping;
};

// What attributes of one name have in common.
struct AttributeType {
    std::wstring name;
    ValueType type = ValueType::text;
    const Unit* unit = nullptr;
    const ValueList* list = nullptr;
    int decimals = -1;
    std::array<LocalText, 3> descriptions;
    LocalText label;
};

// One value; text values may have translations, then `value` is not used.
struct AttributeValue {
    automation::Variant value;
    LocalText text;
};

// An attribute; its name is the full name, "Group.Attribute".
struct Attribute : Element {
    Attribute(Model& owning_model, const AttributeType& attribute_type);

    const AttributeType& type;
    std::vector<AttributeValue> values;
    std::vector<AttributeValue> product;  // one or none
    std::wstring marker;
};

struct Document : Element {
    explicit Document(Model& owning_model) : Element(owning_model, ElementKind::document) {}

    std::wstring type_text;
    std::wstring sub_type_text;
    std::vector<Element*> shown;
    std::vector<std::pair<std::wstring, Element*>> named_entries;
    Element* owner = nullptr;
    Element* delegate = nullptr;
    QueryDefinition* query = nullptr;
};

struct Project : Element {
    explicit Project(Model& owning_model) : Element(owning_model, ElementKind::project) {}

    std::size_t language = 0;
};

// The file that a model came from, as it was then.
struct ProjectSource {
    std::wstring path;
    std::string bytes;
};

struct Model {
    Model();
    ~Model();

    ProjectSource source;
    std::vector<Language> languages;
    std::size_t language = 0;  // the current one of projects that name no other
    std::vector<User> users;
    std::size_t user = 0;
    long lcid = 0;
    std::map<std::wstring, long> system_types;
    std::vector<std::unique_ptr<UnitGroup>> unit_groups;
    std::map<std::wstring, std::unique_ptr<ValueList>> value_lists;
    std::map<std::wstring, std::unique_ptr<AttributeType>> attribute_types;
    std::vector<std::unique_ptr<AttributeType>> own_attribute_types;  // of single attributes
    std::vector<std::unique_ptr<Project>> projects;
    Project* project = nullptr;  // the current one
    std::vector<std::unique_ptr<QueryDefinition>> queries;
    std::unordered_map<std::wstring, Element*> elements;  // by identity_key
    automation::ComPtr<IDispatch> undo_state;
    automation::ComPtr<IDispatch> outer_undo_state;
};

// Keeps `owner`'s model alive and points to `item`; nothing for nothing.
template <class T, class Owner>
std::shared_ptr<T> kept(const std::shared_ptr<Owner>& owner, T* item) {
    return item ? std::shared_ptr<T>(owner, item) : nullptr;
}

}  // namespace hostkit
