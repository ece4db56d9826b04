// Makes the automation objects of the model: thin handles that keep the model alive.
//
// Making one is cheap; the same element may have any number of handles. Nothing gives nothing.
#pragma once

#include "hostkit/boundary.h"
#include "hostkit/model/model_data.h"
#include "kelos.h"
#include "model.h"

namespace hostkit {

using ModelRef = std::shared_ptr<Model>;
using ElementRef = std::shared_ptr<Element>;

inline ModelRef model_of(const ElementRef& element) {
    return {element, &element->model};
}

automation::ComPtr<IKelosObject> make_object(const ElementRef& element);
automation::ComPtr<IKelosProject> make_project(const std::shared_ptr<Project>& project);
automation::ComPtr<IKelosDocument> make_document(const std::shared_ptr<Document>& document);
automation::ComPtr<IKelosAttribute> make_attribute(const std::shared_ptr<Attribute>& attribute);
automation::ComPtr<IKelosAttributes> make_attributes(const ElementRef& owner);
automation::ComPtr<IKelosObjects> make_objects(const ModelRef& model,
                                               std::vector<Element*> elements);
automation::ComPtr<IKelosNamedEntries> make_named_entries(
    const std::shared_ptr<Document>& document);
automation::ComPtr<IKelosWorkset> make_workset(const ModelRef& model);
automation::ComPtr<IKelosLanguages> make_languages(const ModelRef& model);
automation::ComPtr<IKelosLanguage> make_language(const ModelRef& model, std::size_t position);
automation::ComPtr<IDispatch> make_undo_state(const wchar_t* name);

// What is behind a handle of the kit; nothing for objects of others.
ElementRef element_behind(IUnknown* object);
ModelRef model_behind(IKelosWorkset* workset);

}  // namespace hostkit
