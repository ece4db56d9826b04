#include "hostkit/project_file/loader_node.h"

#include <algorithm>
#include <cmath>

#include "hostkit/model/texts.h"

namespace hostkit::project_file {

std::optional<std::wstring> Node::find(std::wstring_view attribute) const {
    for (std::size_t i = 0; i < element_.attributes.size(); ++i)
        if (element_.attributes[i].name == attribute) {
            read_[i] = true;
            return element_.attributes[i].value;
        }
    return {};
}

std::wstring Node::text(std::wstring_view attribute, std::wstring_view by_default) const {
    return find(attribute).value_or(std::wstring(by_default));
}

std::wstring Node::text(std::wstring_view attribute) const {
    if (auto value = find(attribute)) return *value;
    fail(std::wstring(L"the attribute \"").append(attribute).append(L"\" is missing"));
}

long Node::read_as_number(std::wstring_view attribute, const std::wstring& value) const {
    long result = 0;
    if (read_number(value, result)) return result;
    fail(L"\"" + value + L"\" is not a whole number, which \"" + std::wstring(attribute) +
         L"\" must be");
}

long Node::number(std::wstring_view attribute, long by_default) const {
    const auto value = find(attribute);
    return value ? read_as_number(attribute, *value) : by_default;
}

long Node::number(std::wstring_view attribute) const {
    return read_as_number(attribute, text(attribute));
}

bool Node::flag(std::wstring_view attribute, bool by_default) const {
    const auto value = find(attribute);
    if (!value) return by_default;
    if (*value == L"yes" || *value == L"true") return true;
    if (*value == L"no" || *value == L"false") return false;
    fail(L"\"" + *value + L"\" is neither \"yes\" nor \"no\"");
}

double Node::factor(std::wstring_view attribute, double by_default) const {
    const auto value = find(attribute);
    if (!value) return by_default;
    const auto parts = split(*value, L'/');
    double number = 0;
    double divisor = 1;
    const bool reads = parts.size() <= 2 && read_number(parts[0], number) &&
                       (parts.size() == 1 || read_number(parts[1], divisor));
    if (reads && std::isfinite(number / divisor)) return number / divisor;
    fail(L"\"" + *value + L"\" is neither a number nor a fraction");
}

void Node::children(std::initializer_list<Child> known) const {
    for (const XmlElement& child : element_.children) {
        const Node node(child, path_);
        const auto suits = [&](const Child& candidate) { return candidate.name == child.name; };
        const auto* const found = std::find_if(known.begin(), known.end(), suits);
        if (found == known.end())
            node.fail(L"<" + child.name + L"> may not stand inside <" + element_.name + L">");
        found->handle(node);
        node.check_all_read();
    }
}

void Node::check_all_read() const {
    for (std::size_t i = 0; i < read_.size(); ++i)
        if (!read_[i])
            fail(L"<" + element_.name + L"> has no attribute \"" + element_.attributes[i].name +
                 L"\"");
}

void Node::fail(std::wstring_view problem) const {
    fail_in_file(path_, element_.line, problem);
}

}  // namespace hostkit::project_file
