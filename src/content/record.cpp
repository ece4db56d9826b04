#include "content/record.h"

#include "automation/conversion.h"
#include "host/office_text.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::Variant;

namespace {

// Both forms differ in line breaks only.
bool is_text_with_lines(const Variant& value) {
    return value.is_string() && value.text().find(L'\n') != std::wstring_view::npos;
}

}  // namespace

ArchiveNode Record::write_below(ArchiveNode& owner) noexcept {
    ArchiveNode title;
    guarded({record_class_.source, L"Property Get 'XMLNode'"}, [&] {
        // Not the caller's: other records may be written below the same nothing.
        ArchiveNode own;
        if (!owner) own = dom::create_document();
        ArchiveNode& target = owner ? owner : own;
        title = XML_WriteTitle(target, title_name(), record_class_.version);
        write_items(title, target);
    });
    return title;
}

void Record::read_from(const ArchiveReader& owner, const dom::Node& title) noexcept {
    guarded({record_class_.source, L"Property Let 'XMLNode'"}, [&] {
        if (!owner && !title) return;
        read(owner, title ? title : XML_GetTitleNode(owner, title_name().view(), {}, true));
    });
}

void Record::read(const ArchiveReader&, const dom::Node& title) {
    if (title) read_items(title, XML_GetVersion(title));
}

void write_text(ArchiveNode& title, BstrView name, BstrView value) {
    XML_WriteItem(title, name, automation::lend(value));
}

void write_long(ArchiveNode& title, BstrView name, long value) {
    XML_WriteItem(title, name, Variant(value));
}

void write_short(ArchiveNode& title, BstrView name, std::int16_t value) {
    XML_WriteItem(title, name, Variant(value));
}

void write_bool(ArchiveNode& title, BstrView name, bool value) {
    XML_WriteItem(title, name, Variant(value));
}

Bstr read_text(const ArchiveReader& title, BstrView name) {
    return automation::to_text(XML_ReadItem(title, name.view()));
}

long read_long(const ArchiveReader& title, BstrView name) {
    return automation::to_long(XML_ReadItem(title, name.view()));
}

std::int16_t read_short(const ArchiveReader& title, BstrView name) {
    return automation::to_short(XML_ReadItem(title, name.view()));
}

bool read_bool(const ArchiveReader& title, BstrView name) {
    return automation::to_bool(XML_ReadItem(title, name.view()));
}

Variant stored_form(Variant value, uceDataType type, long lcid) {
    if (type == uccVBString && is_text_with_lines(value))
        return Variant(GetOfficeString(value.text(), lcid));
    return value;
}

Variant given_form(const Variant& stored, uceDataType type, long lcid) {
    if (type == uccVBString && is_text_with_lines(stored))
        return Variant(GetVBString(stored.text(), lcid));
    return stored;
}

void change_locale(Variant& stored, long from_lcid, long to_lcid) {
    if (stored.is_string())
        stored = Variant(GetOfficeFromOffice(stored.text(), from_lcid, to_lcid));
}

}  // namespace tessera
