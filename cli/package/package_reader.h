// Reads the packages that office documents are: parts in a zip archive, and the relationships that
// lead from one part to the next.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/package/xml_events.h"
#include "cli/package/zip_reader.h"

namespace cli {

struct Relationship {
    std::wstring id;
    std::wstring type;   // what stands behind the last "/" of the type's address: "worksheet"
    std::string target;  // name of the part, without a "/" before it; empty when it is outside
};

class PackageReader {
  public:
    // Reads the file. Throws Failure, as everything here does.
    explicit PackageReader(const std::wstring& path);
    PackageReader(const std::wstring& path, std::string bytes);

    const std::wstring& path() const noexcept { return path_; }
    const ZipReader& archive() const noexcept { return zip_; }
    // Names of parts are without a "/" before them, in whatever case.
    bool has(std::string_view part) const { return zip_.find(part) != nullptr; }
    std::string read(std::string_view part) const;
    void read_part(std::string_view part, XmlHandler& handler) const;

    // Of the part; of the package itself when the name is empty. Types are told apart by their last
    // name alone: each has an address in two editions of the standard.
    std::vector<Relationship> relationships(std::string_view part) const;

  private:
    std::wstring path_;
    ZipReader zip_;
};

// The first of this type that leads to a part inside, or null.
const Relationship* find_relationship(const std::vector<Relationship>& relationships,
                                      std::wstring_view type);

}  // namespace cli
