// Writes packages of parts, the form of office documents: a zip archive that says of every part
// what it holds and which others it refers to.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/package/zip_writer.h"
#include "cli/xml_writer.h"

namespace cli {

inline constexpr std::u16string_view office_relationships =
    u"http://schemas.openxmlformats.org/officeDocument/2006/relationships";

// What a part, or the package, refers to.
class Relationships {
  public:
    struct Entry {
        std::u16string id;
        std::u16string type;
        std::u16string target;
        bool is_external = false;
    };

    // As it stands in a package that is written anew.
    void keep(Entry entry) { list_.push_back(std::move(entry)); }
    // Answers the identifier, one that no other relationship has.
    std::u16string add(std::u16string_view type, std::u16string_view target);
    // What stands behind the last "/" of the type's address tells it.
    void drop(std::u16string_view type);

    const std::vector<Entry>& list() const noexcept { return list_; }
    bool empty() const noexcept { return list_.empty(); }

  private:
    std::vector<Entry> list_;
};

// What the parts of a package hold, by the ending of their names and by name.
struct ContentTypes {
    std::map<std::u16string, std::u16string> of_endings;
    std::map<std::u16string, std::u16string> of_parts;  // their names begin with "/"
};

// "/xl/_rels/workbook.xml.rels" for "/xl/workbook.xml": the part that holds what another one refers
// to.
std::u16string relationships_part(std::u16string_view part);

// Part names begin with "/".
class PackageWriter {
  public:
    explicit PackageWriter(ByteSink& sink, ContentTypes types = {});

    // `write` is given an XmlWriter whose declaration is written, and finishes no document itself.
    template <class Write>
    void add_xml(std::u16string_view part, std::u16string_view type, Write&& write) {
        set_type(part, type);
        zip_.add(entry_name(part), [&](ByteSink& sink) {
            Utf8Sink text(sink);
            XmlWriter writer(text, XmlLayout::compact);
            writer.declaration(u"UTF-8");
            write(writer);
            writer.finish();
        });
    }
    // A part whose type is said already, or by the ending of its name.
    void add_bytes(std::u16string_view part, std::string_view bytes);
    void set_type(std::u16string_view part, std::u16string_view type);
    void drop_type(std::u16string_view part) { types_.of_parts.erase(std::u16string(part)); }
    // An empty part name stands for the package. Nothing is written when there are none.
    void add_relationships(std::u16string_view part, const Relationships& relationships);
    void finish();

  private:
    class Utf8Sink : public TextSink {
      public:
        explicit Utf8Sink(ByteSink& sink) : sink_(sink) {}
        void write(std::u16string_view text) override;

      private:
        ByteSink& sink_;
    };

    static std::string entry_name(std::u16string_view part);
    void write_types(XmlWriter& writer) const;

    ZipWriter zip_;
    ContentTypes types_;
};

}  // namespace cli
