#include "cli/package/package_writer.h"

#include <algorithm>

#include "text/utf8.h"

namespace cli {
namespace {

std::u16string numbered_id(std::size_t number) {
    std::u16string id = u"rId";
    for (const char digit : std::to_string(number))
        id += static_cast<char16_t>(digit);
    return id;
}

}  // namespace

std::u16string relationships_part(std::u16string_view part) {
    const std::size_t name = part.rfind(u'/') == part.npos ? 0 : part.rfind(u'/') + 1;
    std::u16string result(name == 0 ? u"/" : part.substr(0, name));
    return result.append(u"_rels/").append(part.substr(name)).append(u".rels");
}

std::u16string Relationships::add(std::u16string_view type, std::u16string_view target) {
    std::size_t number = list_.size() + 1;
    while (std::ranges::find(list_, numbered_id(number), &Relationships::Entry::id) != list_.end())
        ++number;
    list_.push_back({numbered_id(number), std::u16string(type), std::u16string(target)});
    return list_.back().id;
}

void Relationships::drop(std::u16string_view type) {
    std::erase_if(list_, [&](const Entry& known) {
        return std::u16string_view(known.type).substr(known.type.rfind(u'/') + 1) == type;
    });
}

PackageWriter::PackageWriter(ByteSink& sink, ContentTypes types)
    : zip_(sink), types_(std::move(types)) {
    types_.of_endings.emplace(u"rels", u"application/vnd.openxmlformats-package.relationships+xml");
    types_.of_endings.emplace(u"xml", u"application/xml");
}

void PackageWriter::add_bytes(std::u16string_view part, std::string_view bytes) {
    zip_.add(entry_name(part), [&](ByteSink& sink) { sink.write(bytes); });
}

void PackageWriter::set_type(std::u16string_view part, std::u16string_view type) {
    if (!type.empty()) types_.of_parts.insert_or_assign(std::u16string(part), type);
}

void PackageWriter::add_relationships(std::u16string_view part,
                                      const Relationships& relationships) {
    if (relationships.empty()) return;
    add_xml(relationships_part(part), {}, [&](XmlWriter& writer) {
        writer.start(u"Relationships");
        writer.attribute(u"xmlns", u"http://schemas.openxmlformats.org/package/2006/relationships");
        for (const Relationships::Entry& relationship : relationships.list()) {
            writer.start(u"Relationship");
            writer.attribute(u"Id", relationship.id);
            writer.attribute(u"Type", relationship.type);
            writer.attribute(u"Target", relationship.target);
            if (relationship.is_external) writer.attribute(u"TargetMode", u"External");
            writer.end();
        }
        writer.end();
    });
}

void PackageWriter::finish() {
    add_xml(u"/[Content_Types].xml", {}, [&](XmlWriter& writer) { write_types(writer); });
    zip_.finish();
}

void PackageWriter::write_types(XmlWriter& writer) const {
    writer.start(u"Types");
    writer.attribute(u"xmlns", u"http://schemas.openxmlformats.org/package/2006/content-types");
    for (const auto& [ending, type] : types_.of_endings) {
        writer.start(u"Default");
        writer.attribute(u"Extension", ending);
        writer.attribute(u"ContentType", type);
        writer.end();
    }
    for (const auto& [part, type] : types_.of_parts) {
        writer.start(u"Override");
        writer.attribute(u"PartName", part);
        writer.attribute(u"ContentType", type);
        writer.end();
    }
    writer.end();
}

void PackageWriter::Utf8Sink::write(std::u16string_view text) {
    sink_.write(tessera::to_utf8(text));
}

std::string PackageWriter::entry_name(std::u16string_view part) {
    return tessera::to_utf8(part.substr(1));
}

}  // namespace cli
