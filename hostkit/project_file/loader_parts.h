// The parts of the loader, and what they share.
#pragma once

#include <unordered_set>

#include "hostkit/model/model_data.h"
#include "hostkit/project_file/loader_node.h"

namespace hostkit::project_file {

struct LoadContext {
    Model& model;
    // What refers to objects is read when all objects are there.
    std::vector<std::function<void()>> later;
    // Of the objects directly below each: looked up for every one that comes.
    std::unordered_map<const Element*, std::unordered_set<std::wstring>> names = {};
};

// ---- Catalogues (load_catalogues.cpp) --------------------------------------------------------

void load_languages(LoadContext& context, const Node& node);
void load_users(LoadContext& context, const Node& node);
void load_system_types(LoadContext& context, const Node& node);
void load_unit_groups(LoadContext& context, const Node& node);
void load_value_lists(LoadContext& context, const Node& node);
void load_attribute_types(LoadContext& context, const Node& node);

// Type, unit, value list and decimals; what is not given stays as it is.
void load_attribute_settings(LoadContext& context, const Node& node, AttributeType& type);

// ---- Objects (load_objects.cpp) --------------------------------------------------------------

void load_project(LoadContext& context, const Node& node);

// ---- Mapping tables (load_mapping.cpp) -------------------------------------------------------

void load_mapping(LoadContext& context, const Node& node, Element& owner);

// ---- Queries (load_queries.cpp) --------------------------------------------------------------

void load_queries(LoadContext& context, const Node& node);

// ---- Look-ups that fail with the node's line -------------------------------------------------

std::size_t language_named(const Model& model, const Node& node, std::wstring_view name);
std::size_t user_named(const Model& model, const Node& node, std::wstring_view login);
long system_type_named(const Model& model, const Node& node, const std::wstring& name);
const Unit& unit_named(const Model& model, const Node& node, std::wstring_view text);
// The element with the path below the project (nothing: the current one) or from the root on.
Element& element_at(Model& model, const Node& node, std::wstring_view path, Project* project);
automation::Variant value_of(const Node& node, ValueType type, std::wstring_view text);
ValueType value_type(const Node& node, ValueType by_default);

// ---- Texts with translations -----------------------------------------------------------------

using TextSlots = std::vector<std::pair<std::wstring_view, LocalText*>>;
TextSlots text_slots(std::array<LocalText, 3>& descriptions, LocalText& label);

// Reads the attributes that the slots name as base texts; what is not given stays as it is.
void load_texts(const Node& node, const TextSlots& slots);
// Reads a <translation>: the language and the slots' texts in it.
void load_translation(const Model& model, const Node& node, const TextSlots& slots);

// Program text inside an element: its lines without the empty ones before and after them and
// without the indentation that all of them share, parted by CR LF.
std::wstring script_text(std::wstring_view text);

}  // namespace hostkit::project_file
