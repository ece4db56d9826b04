#include "cli/workbook/workbook_writer.h"

#include "automation/bstr.h"
#include "cli/content_file.h"
#include "cli/package/package_writer.h"
#include "cli/workbook/carrier_sheet.h"
#include "cli/workbook/notes_writer.h"
#include "cli/workbook/sheet_name.h"
#include "cli/workbook/sheet_writer.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::u16string_view lists_sheet = u"Tessera lists";

constexpr std::u16string_view spreadsheet_type =
    u"application/vnd.openxmlformats-officedocument.spreadsheetml.";

std::u16string type_of(std::u16string_view part) {
    return std::u16string(spreadsheet_type).append(part).append(u"+xml");
}

std::u16string relationship_to(std::u16string_view part) {
    return std::u16string(office_relationships).append(u"/").append(part);
}

std::u16string numbered(std::u16string_view text, std::size_t number, std::u16string_view rest) {
    const std::string digits = std::to_string(number);
    return std::u16string(text).append(digits.begin(), digits.end()).append(rest);
}

// A sheet's name as formulas have it.
std::u16string quoted_sheet(std::u16string_view name) {
    std::u16string quoted = u"'";
    for (const char16_t letter : name)
        quoted.append(letter == u'\'' ? 2 : 1, letter);
    return quoted + u"'!";
}

// The rows and columns that are printed on every page: "'Pumps'!$A:$A,'Pumps'!$1:$2".
std::u16string print_titles(const PlannedSheet& sheet, const SheetLayout& layout) {
    std::u16string titles;
    if (layout.header_columns > 0) titles = quoted_sheet(sheet.name) + u"$A:$A";
    if (layout.header_rows == 0) return titles;
    if (!titles.empty()) titles += u',';
    return titles + quoted_sheet(sheet.name) +
           numbered(u"$1:$", static_cast<std::size_t>(layout.header_rows), {});
}

class StringSink : public TextSink {
  public:
    explicit StringSink(std::string& bytes) : bytes_(bytes) {}
    void write(std::u16string_view text) override { bytes_ += tessera::to_utf8(text); }

  private:
    std::string& bytes_;
};

class Writer {
  public:
    Writer(ByteSink& sink, const WorkbookPlan& plan, const WriteCourse& course)
        : package_(sink), plan_(plan), course_(course) {}

    void write(const dom::Node& contents_root) {
        for (const PlannedSheet& sheet : plan_.sheets)
            add_sheet(sheet);
        if (!shared_.drop_downs.named_lists().empty()) add_lists();
        add_contents(contents_root);
        package_.add_xml(u"/xl/styles.xml", type_of(u"styles"),
                         [&](XmlWriter& writer) { shared_.styles.write(writer); });
        relationships_.add(relationship_to(u"styles"), u"styles.xml");
        package_.add_xml(u"/xl/workbook.xml", type_of(u"sheet.main"),
                         [&](XmlWriter& writer) { write_book(writer); });
        package_.add_relationships(u"/xl/workbook.xml", relationships_);
        Relationships of_package;
        of_package.add(relationship_to(u"officeDocument"), u"xl/workbook.xml");
        package_.add_relationships({}, of_package);
        package_.finish();
    }

  private:
    struct Sheet {
        std::u16string name;
        std::u16string relationship;
        std::u16string print_titles;
        std::u16string_view state;  // "hidden"; empty for a sheet that is seen
    };

    template <class Write>
    void add_sheet_part(Sheet sheet, Write&& write) {
        const std::size_t number = sheets_.size() + 1;
        package_.add_xml(numbered(u"/xl/worksheets/sheet", number, u".xml"), type_of(u"worksheet"),
                         write);
        sheet.relationship = relationships_.add(relationship_to(u"worksheet"),
                                                numbered(u"worksheets/sheet", number, u".xml"));
        sheets_.push_back(std::move(sheet));
    }

    void add_sheet(const PlannedSheet& sheet) {
        course_(L"the sheet \"" + std::wstring(automation::as_wide(sheet.name)) + L"\"");
        const std::size_t number = sheets_.size() + 1;
        const SheetLayout layout = layout_of(sheet);
        Relationships relationships;
        const std::u16string notes = add_notes(sheet, layout, relationships);
        add_sheet_part({sheet.name, {}, print_titles(sheet, layout), {}}, [&](XmlWriter& writer) {
            write_sheet(writer, sheet, layout, shared_, notes);
        });
        package_.add_relationships(numbered(u"/xl/worksheets/sheet", number, u".xml"),
                                   relationships);
    }

    // Answers the relationship to the drawing.
    std::u16string add_notes(const PlannedSheet& sheet, const SheetLayout& layout,
                             Relationships& relationships) {
        const std::vector<Note> notes = notes_of(sheet);
        if (notes.empty()) return {};
        const std::size_t number = sheets_.size() + 1;
        package_.add_xml(numbered(u"/xl/comments", number, u".xml"), type_of(u"comments"),
                         [&](XmlWriter& writer) { write_comments(writer, notes); });
        relationships.add(relationship_to(u"comments"), numbered(u"../comments", number, u".xml"));
        package_.add_xml(
            numbered(u"/xl/drawings/notes", number, u".vml"),
            u"application/vnd.openxmlformats-officedocument.vmlDrawing",
            [&](XmlWriter& writer) { write_note_shapes(writer, notes, layout, next_block_); });
        next_block_ += blocks_for(notes);
        return relationships.add(relationship_to(u"vmlDrawing"),
                                 numbered(u"../drawings/notes", number, u".vml"));
    }

    std::u16string free_sheet_name(std::u16string_view wanted) const {
        std::u16string name(wanted);
        for (std::size_t number = 2; is_taken(name); ++number)
            name = numbered(wanted, number, {});
        return name;
    }

    bool is_taken(const std::u16string& name) const {
        for (const Sheet& sheet : sheets_)
            if (folded_sheet_name(sheet.name) == folded_sheet_name(name)) return true;
        return false;
    }

    // A column for each list that is not offered in place.
    void add_lists() {
        const auto& lists = shared_.drop_downs.named_lists();
        lists_sheet_ = free_sheet_name(lists_sheet);
        add_sheet_part({lists_sheet_, {}, {}, u"hidden"}, [&](XmlWriter& writer) {
            writer.start(u"worksheet");
            writer.attribute(u"xmlns", spreadsheet_namespace);
            writer.start(u"sheetData");
            for (std::int32_t row = 1; write_list_row(writer, lists, row); ++row) {
            }
            writer.end();
            writer.end();
        });
    }

    static bool write_list_row(XmlWriter& writer, const std::vector<DropDowns::NamedList>& lists,
                               std::int32_t row) {
        bool has_cells = false;
        for (std::size_t i = 0; i < lists.size(); ++i) {
            if (lists[i].texts.size() < static_cast<std::size_t>(row)) continue;
            if (!has_cells) {
                writer.start(u"row");
                writer.attribute(u"r", row);
            }
            has_cells = true;
            write_text_cell(writer, {static_cast<std::int32_t>(i + 1), row},
                            lists[i].texts[static_cast<std::size_t>(row - 1)]);
        }
        if (has_cells) writer.end();
        return has_cells;
    }

    void add_contents(const dom::Node& contents_root) {
        course_(L"the content document");
        std::string document;
        StringSink sink(document);
        XmlWriter writer(sink, XmlLayout::compact);
        writer.declaration(u"UTF-8");
        write_element(writer, contents_root);
        writer.finish();
        add_sheet_part({free_sheet_name(carrier_sheet), {}, {}, u"veryHidden"},
                       [&](XmlWriter& sheet) { write_carrier_sheet(sheet, document); });
        package_.add_bytes(u"/customXml/item1.xml", document);
        add_item_properties();
        Relationships of_item;
        of_item.add(relationship_to(u"customXmlProps"), u"itemProps1.xml");
        package_.add_relationships(u"/customXml/item1.xml", of_item);
        relationships_.add(relationship_to(u"customXml"), u"../customXml/item1.xml");
    }

    void add_item_properties() {
        package_.add_xml(u"/customXml/itemProps1.xml",
                         u"application/vnd.openxmlformats-officedocument.customXmlProperties+xml",
                         [](XmlWriter& writer) {
                             writer.start(u"ds:datastoreItem");
                             writer.attribute(u"ds:itemID",
                                              u"{6B0E4D10-52C7-4A1B-9E0F-3D5A7C21F1FE}");
                             writer.attribute(u"xmlns:ds",
                                              u"http://schemas.openxmlformats.org/"
                                              u"officeDocument/2006/customXml");
                             writer.end();
                         });
    }

    void write_book(XmlWriter& writer) const {
        writer.start(u"workbook");
        writer.attribute(u"xmlns", spreadsheet_namespace);
        writer.attribute(u"xmlns:r", office_relationships);
        writer.start(u"bookViews");
        writer.start(u"workbookView");
        writer.end();
        writer.end();
        writer.start(u"sheets");
        std::int64_t number = 0;
        for (const Sheet& sheet : sheets_) {
            writer.start(u"sheet");
            writer.attribute(u"name", sheet.name);
            writer.attribute(u"sheetId", ++number);
            if (!sheet.state.empty()) writer.attribute(u"state", sheet.state);
            writer.attribute(u"r:id", sheet.relationship);
            writer.end();
        }
        writer.end();
        write_names(writer);
        writer.end();
    }

    void write_names(XmlWriter& writer) const {
        bool is_open = false;
        const auto write_name = [&](std::u16string_view name, std::int64_t sheet,
                                    std::u16string_view range) {
            if (!is_open) writer.start(u"definedNames");
            is_open = true;
            writer.start(u"definedName", true);
            writer.attribute(u"name", name);
            if (sheet >= 0) writer.attribute(u"localSheetId", sheet);
            writer.text(range);
            writer.end();
        };
        for (std::size_t i = 0; i < sheets_.size(); ++i)
            if (!sheets_[i].print_titles.empty())
                write_name(u"_xlnm.Print_Titles", static_cast<std::int64_t>(i),
                           sheets_[i].print_titles);
        for (const DropDowns::NamedList& list : shared_.drop_downs.named_lists())
            write_name(list.name, -1, quoted_sheet(lists_sheet_) + list.range);
        if (is_open) writer.end();
    }

    PackageWriter package_;
    const WorkbookPlan& plan_;
    const WriteCourse& course_;
    SharedParts shared_;
    Relationships relationships_;  // of the workbook
    std::vector<Sheet> sheets_;
    std::u16string lists_sheet_;
    std::size_t next_block_ = 1;
};

}  // namespace

void write_workbook(ByteSink& sink, const WorkbookPlan& plan, const dom::Node& contents_root,
                    const WriteCourse& course) {
    Writer(sink, plan, course).write(contents_root);
}

}  // namespace cli
