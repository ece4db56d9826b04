#include "hostkit/project_file/model_changes.h"

#include <algorithm>
#include <optional>

#include "automation/error.h"
#include "hostkit/model/model_functions.h"

namespace hostkit::project_file {
namespace {

using automation::Variant;

[[noreturn]] void fail_unsaved(const Element& element, const std::wstring& what) {
    automation::fail(E_INVALIDARG, L"\"" + path_of(element) + L"\": " + what);
}

// As far as a file can tell: it has no fractions of a second.
bool is_same(const Variant& left, const Variant& right) {
    if (left.vt != right.vt) return false;
    return left.vt == VT_EMPTY || written_value(left) == written_value(right);
}

std::vector<const XmlElement*> children_named(const XmlElement& parent,
                                              std::initializer_list<std::wstring_view> names) {
    std::vector<const XmlElement*> found;
    for (const XmlElement& child : parent.children)
        if (std::ranges::find(names, child.name) != names.end()) found.push_back(&child);
    return found;
}

std::optional<std::wstring> attribute_of(const XmlElement& element, std::wstring_view name) {
    const auto found = std::ranges::find(element.attributes, name, &XmlAttribute::name);
    return found == element.attributes.end() ? std::nullopt : std::optional(found->value);
}

class Comparison {
  public:
    Comparison(const Model& original, const Model& changed)
        : original_(original), changed_(changed) {}

    MarkupEdits compare(const XmlElement& root) {
        const auto projects = children_named(root, {L"project"});
        for (std::size_t i = 0; i < projects.size(); ++i)
            compare_elements(*original_.projects[i], *changed_.projects[i], *projects[i]);
        return std::move(edits_);
    }

  private:
    void compare_elements(const Element& original, const Element& changed,
                          const XmlElement& element) {
        compare_texts(original, changed, element);
        compare_text(element, L"alias", original.alias_label, changed.alias_label);
        compare_text(element, L"status", original.status, changed.status);
        if (original.file != changed.file) set(element, L"file", changed.file);
        const auto attributes = children_named(element, {L"attribute", L"script"});
        for (std::size_t i = 0; i < attributes.size(); ++i)
            compare_attributes(*original.attributes[i], *changed.attributes[i], *attributes[i]);
        for (std::size_t i = attributes.size(); i < changed.attributes.size(); ++i)
            add_attribute(element, *changed.attributes[i]);
        const auto children = children_named(element, {L"object", L"document"});
        for (std::size_t i = 0; i < children.size(); ++i)
            compare_elements(*original.children[i], *changed.children[i], *children[i]);
    }

    void compare_texts(const Element& original, const Element& changed, const XmlElement& element) {
        constexpr std::wstring_view names[] = {L"description", L"description2", L"description3"};
        for (std::size_t i = 0; i < std::size(names); ++i)
            compare_text(element, names[i], original.descriptions[i], changed.descriptions[i]);
        compare_text(element, L"label", original.label, changed.label);
    }

    void compare_text(const XmlElement& element, std::wstring_view name, const LocalText& original,
                      const LocalText& changed) {
        if (original.base() != changed.base()) set(element, name, changed.base());
        for (std::size_t i = 0; i < changed_.languages.size(); ++i)
            if (original.translation(i) != changed.translation(i))
                translate(element, name, changed_.languages[i].name, changed.translation(i));
    }

    void translate(const XmlElement& element, std::wstring_view name, const std::wstring& language,
                   const std::wstring& text) {
        for (const XmlElement& child : element.children)
            if (child.name == L"translation" && attribute_of(child, L"language") == language)
                return set(child, name, text);
        auto& added = edits_[element.number].children;
        added.push_back({L"translation", {{L"language", language}, {std::wstring(name), text}}});
    }

    void compare_attributes(const Attribute& original, const Attribute& changed,
                            const XmlElement& element) {
        if (original.marker != changed.marker) set(element, L"marker", changed.marker);
        if (element.name == L"script") return check_script(original, changed);
        compare_texts(original, changed, element);
        const auto places = value_elements(element);
        for (std::size_t i = 0; i < changed.values.size(); ++i)
            if (i < places.size())
                compare_value(original.values[i], changed, i, *places[i]);
            else
                add_value(element, changed, i);
    }

    void check_script(const Attribute& original, const Attribute& changed) const {
        const std::size_t count = original.values.size();
        if (count != changed.values.size() ||
            !is_same(original.values.front().value, changed.values.front().value))
            fail_unsaved(changed, L"a script that was changed is not saved");
    }

    // The elements whose attributes "value" are the values: the attribute's own, if it has one,
    // then its items.
    static std::vector<const XmlElement*> value_elements(const XmlElement& element) {
        auto places = children_named(element, {L"item"});
        if (attribute_of(element, L"value")) places.insert(places.begin(), &element);
        return places;
    }

    void compare_value(const AttributeValue& original, const Attribute& attribute,
                       std::size_t position, const XmlElement& element) {
        const AttributeValue& changed = attribute.values[position];
        if (!changed.text.empty())
            return compare_text(element, L"value", original.text, changed.text);
        const Variant before = value_in(original, 0);
        const Variant after = value_in(changed, 0);
        if (!is_same(before, after)) set(element, L"value", file_text(attribute, after));
    }

    void add_value(const XmlElement& element, const Attribute& attribute, std::size_t position) {
        const std::wstring text = file_text(attribute, value_in(attribute.values[position], 0));
        if (position == 0)
            set(element, L"value", text);
        else
            edits_[element.number].children.push_back({L"item", {{L"value", text}}});
    }

    void add_attribute(const XmlElement& element, const Attribute& attribute) {
        NewElement added{L"attribute", {{L"name", attribute.name}}};
        if (attribute.values.size() > 1)
            fail_unsaved(attribute, L"so many new values are not saved");
        if (!attribute.values.empty())
            added.attributes.emplace_back(
                L"value", file_text(attribute, value_in(attribute.values.front(), 0)));
        if (!attribute.marker.empty()) added.attributes.emplace_back(L"marker", attribute.marker);
        edits_[element.number].children.push_back(std::move(added));
    }

    static std::wstring file_text(const Attribute& attribute, const Variant& value) {
        if (value.vt == VT_EMPTY) fail_unsaved(attribute, L"a value that was emptied is not saved");
        return written_value(value);
    }

    void set(const XmlElement& element, std::wstring_view name, std::wstring text) {
        edits_[element.number].attributes.emplace_back(name, std::move(text));
    }

    const Model& original_;
    const Model& changed_;
    MarkupEdits edits_;
};

}  // namespace

MarkupEdits changes_between(const Model& original, const Model& changed, const XmlElement& root) {
    return Comparison(original, changed).compare(root);
}

}  // namespace hostkit::project_file
