#include "cli/package/package_reader.h"

#include <algorithm>
#include <utility>

#include "automation/bstr.h"
#include "cli/failure.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"
#include "text/utf8.h"

namespace cli {
namespace {

std::string_view folder_of(std::string_view part) noexcept {
    return part.substr(0, part.rfind('/') + 1);
}

std::string relationships_of(std::string_view part) {
    const std::string_view folder = folder_of(part);
    return std::string(folder).append("_rels/").append(part.substr(folder.size())).append(".rels");
}

// "../sharedStrings.xml" seen from the folder "xl/worksheets/" is "xl/sharedStrings.xml".
std::string resolved(std::string_view folder, std::string_view target) {
    std::vector<std::string_view> names;
    const auto take = [&](std::string_view path) {
        while (!path.empty()) {
            const std::size_t end = std::min(path.find('/'), path.size());
            const std::string_view name = path.substr(0, end);
            if (name == ".." && !names.empty()) names.pop_back();
            if (name != ".." && name != "." && !name.empty()) names.push_back(name);
            path.remove_prefix(std::min(end + 1, path.size()));
        }
    };
    if (!target.starts_with('/')) take(folder);
    take(target);
    std::string result;
    for (const std::string_view name : names)
        result.append(result.empty() ? "" : "/").append(name);
    return result;
}

std::wstring shown_part(std::string_view part) {
    const auto name = tessera::from_utf8(part);
    return L"part \"" + (name ? std::wstring(automation::as_wide(*name)) : L"") + L"\"";
}

class RelationshipHandler : public XmlHandler {
  public:
    explicit RelationshipHandler(std::string_view folder) : folder_(folder) {}

    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        if (name != L"Relationship") return;
        const std::wstring type = attributes.text(L"Type");
        Relationship& found = relationships.emplace_back();
        found.id = attributes.text(L"Id");
        found.type = type.substr(type.rfind(L'/') + 1);
        if (attributes.text(L"TargetMode") != L"External")
            found.target =
                resolved(folder_, tessera::to_utf8(automation::as_u16(attributes.text(L"Target"))));
    }
    void end(std::wstring_view) override {}
    void text(std::wstring_view) override {}

    std::vector<Relationship> relationships;

  private:
    std::string folder_;
};

}  // namespace

PackageReader::PackageReader(const std::wstring& path)
    : PackageReader(path, read_bytes(path, L"the workbook")) {}

PackageReader::PackageReader(const std::wstring& path, std::string bytes)
    : path_(input_name(path)), zip_(path_, std::move(bytes)) {}

std::string PackageReader::read(std::string_view part) const {
    if (const ZipReader::Entry* const entry = zip_.find(part)) return zip_.read(*entry);
    throw Failure(L"\"" + path_ + L"\" cannot be read: its " + shown_part(part) + L" is missing");
}

void PackageReader::read_part(std::string_view part, XmlHandler& handler) const {
    read_xml(read(part), handler, L"\"" + path_ + L"\" cannot be read: its " + shown_part(part));
}

std::vector<Relationship> PackageReader::relationships(std::string_view part) const {
    const std::string name = relationships_of(part);
    if (!has(name)) return {};
    RelationshipHandler handler(folder_of(part));
    read_part(name, handler);
    return std::move(handler.relationships);
}

const Relationship* find_relationship(const std::vector<Relationship>& relationships,
                                      std::wstring_view type) {
    const auto found = std::ranges::find_if(relationships, [&](const Relationship& candidate) {
        return candidate.type == type && !candidate.target.empty();
    });
    return found == relationships.end() ? nullptr : &*found;
}

}  // namespace cli
