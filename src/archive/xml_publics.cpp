#include "archive/xml_publics.h"

#include <algorithm>
#include <optional>
#include <string>

#include "archive/element_patterns.h"
#include "automation/conversion.h"
#include "host/error_boundary.h"
#include "host/service.h"
#include "text/string_forms.h"

namespace tessera {

using automation::Bstr;
using automation::BstrOrView;
using automation::BstrView;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using namespace automation::literals;

namespace {

constexpr wchar_t source[] = L"Tessera.XMLPublics";
constexpr MemberName write_title{source, L"Public Function 'XML_WriteTitle'"};
constexpr wchar_t key_title[] = L"~06150 XML-Bearbeitung";
constexpr wchar_t key_not_archived[] =
    L"~00912 Die Variable kann nicht in Archiv gespeichert werden.";
constexpr wchar_t key_not_read[] = L"~00910 Die Variable kann nicht gelesen werden.";
constexpr wchar_t key_value_read[] = L"~00911 gelesene Variable: '";
constexpr wchar_t key_not_found[] = L"~00918 Archiv wurde nicht gefunden.";

constexpr BstrView attribute_name = L"Name"_bstr;
constexpr BstrView attribute_version = L"Version"_bstr;
constexpr BstrView attribute_type = L"Type"_bstr;
constexpr BstrView attribute_data = L"Data"_bstr;

// The type names that are read back. Writing uses the platform's name of whatever type a value
// has; these are the ones among them that lead back to a value.
struct ArchivedType {
    std::wstring_view name;
    VARTYPE type;
};
constexpr ArchivedType archived_types[] = {
    {L"String", VT_BSTR}, {L"Long", VT_I4},   {L"Integer", VT_I2}, {L"Boolean", VT_BOOL},
    {L"Empty", VT_EMPTY}, {L"Double", VT_R8}, {L"Single", VT_R4},  {L"Currency", VT_CY},
    {L"Date", VT_DATE},   {L"Byte", VT_UI1},  {L"Null", VT_NULL},
};

std::optional<VARTYPE> archived_type(std::wstring_view type_name) {
    const auto* const found = std::ranges::find(archived_types, type_name, &ArchivedType::name);
    if (found == std::end(archived_types)) return std::nullopt;
    return found->type;
}

void show_archive_message(const std::wstring& text, const wchar_t* procedure) {
    const std::wstring title = translate(key_title).str() + L"  (" + procedure + L")";
    show_message(text, style_ok | style_critical, title);
}

void show_not_archived(VARTYPE type) {
    show_archive_message(
        translate(key_not_archived).str() + L"\r\n\r\nVarType = " + std::to_wstring(type),
        L"GetString");
}

void show_not_read(std::wstring_view item_name, std::wstring_view type, const Variant& value) {
    show_archive_message(translate(key_not_read).str() + L"\r\n\r\nName = '" +
                             std::wstring(item_name) + L"'\r\nType = " + std::wstring(type) +
                             L"\r\n" + translate(key_value_read).str() +
                             automation::to_text(value).str() + L"'",
                         L"XML_ReadItem");
}

void show_not_found(std::wstring_view title_name) {
    show_archive_message(std::wstring(title_name) + L"\r\n\r\n" + translate(key_not_found).str(),
                         L"XML_GetTitleNode");
}

ComPtr<IKelosObject> host_object(const VARIANT& value) {
    if (value.vt != VT_DISPATCH || !value.pdispVal) return {};
    return ComPtr<IDispatch>(value.pdispVal).try_as<IKelosObject>();
}

// Arrays with an element type pass on purpose; their conversion fails afterwards.
bool can_be_archived(const VARIANT& value, const ComPtr<IKelosObject>& object) {
    switch (value.vt) {
        case VT_DISPATCH:
            return static_cast<bool>(object);
        case VT_UNKNOWN:
        case VT_ARRAY:
        case VT_ERROR:
        case VT_RECORD:
            return false;
        default:
            return true;
    }
}

Bstr identify(const ComPtr<IKelosObject>& object) {
    const long type = get(object, &IKelosObject::get_SystemType);
    const Bstr uid = get(object, &IKelosObject::get_SystemUID);
    return Bstr(std::to_wstring(type) + L"::" + uid.str());
}

// The platform writes the exponent form with a point in every locale, and reads it with the
// locale's separator.
Bstr fraction_text(const VARIANT& value) {
    Bstr text = automation::to_text(value);
    const std::size_t point = text.view().find(L'.');
    if (point == std::wstring_view::npos || text.view().find(L'E') == std::wstring_view::npos)
        return text;
    wchar_t separator[4];
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, 4) == 0) return text;
    std::wstring readable = text.str();
    readable.replace(point, 1, separator);
    return Bstr(readable);
}

BstrOrView archived_text(const VARIANT& value) {
    const ComPtr<IKelosObject> object = host_object(value);
    if (!can_be_archived(value, object)) {
        show_not_archived(value.vt);
        return {};
    }
    if (value.vt & VT_ARRAY) automation::fail(automation::error_type_mismatch);
    if (value.vt == VT_EMPTY) return {};
    if (value.vt == VT_BOOL) return value.boolVal ? L"-1"_bstr : L"0"_bstr;
    if (object) return identify(object);
    if (value.vt == VT_R4 || value.vt == VT_R8) return fraction_text(value);
    return automation::text_of(value);
}

// Lends what it can; the value must outlive the text.
BstrOrView GetString(const VARIANT& value) noexcept {
    BstrOrView result;
    guarded({source, L"Private Function 'GetString'"}, [&] { result = archived_text(value); });
    return result;
}

template <class AnyNode>
Variant GetXMLAttributeValue(const AnyNode& node, BstrView name) noexcept {
    return guarded_result<Variant>({source, L"Private Function 'GetXMLAttributeValue'"},
                                   [&](Variant& value) { value = dom::attribute(node, name); });
}

bool is_named(const dom::Element& title, std::wstring_view name) {
    return GetXMLAttributeValue(title, attribute_name).text() == name;
}

dom::Element titled_child(const dom::Node& parent, std::wstring_view title_name,
                          std::wstring_view name) {
    dom::Element title = dom::child_named(parent, title_name);
    while (title && !is_named(title, name))
        title = dom::sibling_named(title, title_name);
    return title;
}

// Below an element a nameless title is never looked for. Drafts have no titles with names.
ArchiveNode existing_title(ArchiveNode& parent, BstrView title_name, std::wstring_view name) {
    if (!name.empty()) return titled_child(parent.node(), title_name.view(), name);
    if (parent.is_document()) return parent.child(title_name);
    return {};
}

Variant converted(const Variant& data, VARTYPE type) {
    switch (type) {
        case VT_EMPTY:
            return {};
        case VT_NULL: {
            Variant null;
            null.vt = VT_NULL;
            return null;
        }
        case VT_BSTR:
            return Variant(Bstr(office_string(automation::as_u16(data.text()))));
        default:
            return automation::to_type(data, type);
    }
}

bool is_detached_title(const ArchiveReader& node, std::wstring_view title_name) {
    return node.base_name() == title_name && !get(node.node(), &IXMLDOMNode::get_parentNode);
}

}  // namespace

ArchiveNode XML_WriteTitle(ArchiveNode& parent, BstrView title_name, BstrView version,
                           BstrView name) noexcept {
    ArchiveNode title;
    guarded(write_title, [&] {
        if (!parent) return;
        title = existing_title(parent, title_name, name.view());
        if (!title) title = parent.append(title_name);
        if (!name.empty()) XML_WriteAttribute(title, attribute_name, automation::lend(name));
        XML_WriteAttribute(title, attribute_version, automation::lend(version));
    });
    return title;
}

DraftedTitle::DraftedTitle(ArchiveNode parent, BstrView title_name, BstrView version) noexcept
    : parent_(std::move(parent)) {
    guarded(write_title, [&] {
        if (!parent_) return;
        parent_.check_takes_element();
        draft_ = ElementPatterns::of_thread().take_draft();
        title_ = ArchiveNode(draft_, draft_.append(Draft::none, title_name));
        XML_WriteAttribute(title_, attribute_version, automation::lend(version));
    });
}

ArchiveNode DraftedTitle::write() noexcept {
    ArchiveNode written;
    guarded(write_title, [&] {
        if (!title_) return;
        ElementPatterns& patterns = ElementPatterns::of_thread();
        written = patterns.write(draft_, parent_);
        patterns.give_back(std::move(draft_));
    });
    title_ = {};
    return written;
}

void XML_WriteAttribute(ArchiveNode& node, BstrView name, const VARIANT& value) noexcept {
    guarded({source, L"Private Function 'XML_WriteAttribute'"}, [&] {
        const BstrOrView text = GetString(value);
        if (node) node.set_attribute(name, text);
    });
}

dom::Element XML_WriteItem(ArchiveNode& title, BstrView item_name, const VARIANT& value) noexcept {
    dom::Element written;
    guarded({source, L"Public Function 'XML_WriteItem'"}, [&] {
        if (!title) return;
        ArchiveNode item = title.child(item_name);
        if (!item) item = title.append(item_name);
        written = item.element();
        item.set_attribute(attribute_type, automation::type_name(value));
        item.set_attribute(attribute_data, GetString(value));
    });
    return written;
}

dom::Element XML_GetItemNode(const ArchiveReader& title, std::wstring_view item_name) noexcept {
    dom::Element item;
    guarded({source, L"Public Function 'XML_GetItemNode'"}, [&] {
        if (title) item = title.child(item_name);
    });
    return item;
}

Variant XML_ReadItem(const ArchiveReader& title, std::wstring_view item_name) noexcept {
    Variant value;
    guarded({source, L"Public Function 'XML_ReadItem'"}, [&] {
        const dom::Element item = XML_GetItemNode(title, item_name);
        const Variant type_name = GetXMLAttributeValue(item, attribute_type);
        bool readable = type_name.is_string();
        const Variant data = GetXMLAttributeValue(item, attribute_data);
        if (readable && data.is_string()) {
            const auto type = archived_type(type_name.text());
            readable = type.has_value();
            if (type) value = converted(data, *type);
        }
        if (!readable) show_not_read(item_name, type_name.text(), value);
    });
    return value;
}

dom::Node XML_GetTitleNode(const ArchiveReader& node, std::wstring_view title_name,
                           std::wstring_view name, bool show_message) noexcept {
    dom::Node title;
    guarded({source, L"Public Function 'XML_GetTitleNode'"}, [&] {
        if (!node) return;
        if (is_detached_title(node, title_name))
            title = node.node();
        else if (name.empty())
            title = node.child(title_name);
        else
            title = titled_child(node.node(), title_name, name);
        if (!title && show_message) show_not_found(title_name);
    });
    return title;
}

std::int16_t XML_GetVersion(const dom::Node& title) noexcept {
    std::int16_t version = 0;
    guarded({source, L"Public Function 'XML_GetVersion'"}, [&] {
        version = automation::to_short(GetXMLAttributeValue(title, attribute_version));
    });
    return version;
}

}  // namespace tessera
