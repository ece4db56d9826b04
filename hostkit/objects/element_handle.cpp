#include "hostkit/objects/element_handle.h"

namespace hostkit {

using automation::Bstr;
using automation::ComPtr;
using automation::Variant;
using automation::view_of;

ElementRef element_behind(IUnknown* object) {
    const auto handle = ComPtr<IUnknown>(object).try_as<ElementHandle>();
    return handle ? handle->element() : nullptr;
}

namespace members {

ComPtr<IKelosProject> project(const ElementRef& element) {
    return make_project(kept(element, element->project));
}

Bstr path(const ElementRef& element, IKelosProject* relative_to) {
    const ElementRef top = element_behind(relative_to);
    if (relative_to && !top) automation::fail(E_INVALIDARG, L"The project is not of this workset");
    return Bstr(path_of(*element, top.get()));
}

ComPtr<IKelosAttribute> attribute(const ElementRef& element, BSTR full_name) {
    return make_attribute(kept(element, find_attribute(*element, view_of(full_name))));
}

long rights(const ElementRef& element, IKelosUser* user) {
    return rights_of(*element, automation::get(user, &IKelosUser::get_Login).view());
}

ComPtr<IKelosObjects> children(const ElementRef& element) {
    std::vector<Element*> found;
    for (const auto& child : element->children)
        found.push_back(child.get());
    return make_objects(model_of(element), std::move(found));
}

Bstr attribute_text(const ElementRef& element, BSTR full_name) {
    const Attribute* const found = find_attribute(*element, view_of(full_name));
    if (!found) return {};
    const std::size_t language = current_language(*element);
    return display_of(*found, value_at(*found, 1, language), language);
}

Variant attribute_value(const ElementRef& element, BSTR full_name, long index) {
    const Attribute* const found = find_attribute(*element, view_of(full_name));
    return found ? value_at(*found, index, current_language(*element)) : Variant();
}

Bstr international_description(const ElementRef& element, long language) {
    if (!item_at(element->model.languages, language))
        automation::fail(automation::error_subscript_out_of_range);
    return Bstr(element->descriptions[0].in(static_cast<std::size_t>(language) - 1));
}

void replace_text(const ElementRef& element, LocalText& text, BSTR new_value) {
    require_write(*element);
    text.replace(current_language(*element), std::wstring(view_of(new_value)));
}

}  // namespace members
}  // namespace hostkit
