// What can be asked of the plain object model: paths, labels, rights, languages, values.
#pragma once

#include <functional>

#include "hostkit/model/model_data.h"

namespace hostkit {

// ---- Identity and place ----------------------------------------------------------------------

std::wstring identity_key(long system_type, std::wstring_view uid);
// False when another element of this type has the identifier already.
bool remember(Element& element);
Element* find_by_identity(Model& model, long system_type, std::wstring_view uid);

// Names from below `top` (or from the root) down to the element, parted by "|".
std::wstring path_of(const Element& element, const Element* top = nullptr);
// The element with the path below `top`; its last name may be an attribute's. Nothing otherwise.
Element* find_below(Element& top, std::wstring_view path);
// The same from the current project or, when there is none, from the root on.
Element* find_anywhere(Model& model, std::wstring_view path);
Attribute* find_attribute(const Element& element, std::wstring_view full_name) noexcept;
Attribute& add_attribute(Element& element, const AttributeType& type);
// The declared type of that name, or a new text type.
const AttributeType& attribute_type(Model& model, const std::wstring& name);

// Visits the elements below `top`, parents first; attributes are none of them.
void walk_below(Element& top, const std::function<void(Element&)>& visit);

std::wstring system_type_name(const Element& element);
std::wstring nested_name(const Element& element);
std::wstring full_name(const Element& element);
std::wstring short_name(const Element& element);

// ---- Texts -----------------------------------------------------------------------------------

std::size_t current_language(const Element& element) noexcept;
// The language with the locale identifier, or the current one.
std::size_t language_for(const Element& element, long lcid) noexcept;

enum class LabelKind { own, alias };
std::wstring label_of(const Element& element, LabelKind kind, std::size_t language);
std::wstring signed_label(const Element& element, LabelKind kind, std::size_t language);
// The signed labels of the objects from below the project down to the element.
std::wstring full_label(const Element& element, LabelKind kind, std::size_t language);

// ---- Rights ----------------------------------------------------------------------------------

// What the element says about the user, else what the nearest element above says, else what the
// user may in general. An unknown user may nothing.
long rights_of(const Element& element, std::wstring_view login);
// Throws when the current user may not write the element.
void require_write(const Element& element);

// ---- Values of attributes --------------------------------------------------------------------

// Index from 1; Empty when there is none.
automation::Variant value_at(const Attribute& attribute, long index, std::size_t language);
automation::Variant value_in(const AttributeValue& value, std::size_t language);
// Converts to the attribute's type. The index may be one behind the last value.
void set_value(Attribute& attribute, long index, const VARIANT& value);
// What a user reads; the text of the attribute's value list where it has the value. A number that
// was converted into another unit (nothing: the attribute's own) is shown as precisely as in its
// own.
automation::Bstr display_of(const Attribute& attribute, const VARIANT& value, std::size_t language,
                            const Unit* unit = nullptr);

}  // namespace hostkit
