#include "cli/workbook/workbook_writer.h"

#include <algorithm>
#include <set>

#include "automation/bstr.h"
#include "cli/content_file.h"
#include "cli/fragment.h"
#include "cli/workbook/book_text.h"
#include "cli/workbook/carrier_sheet.h"
#include "cli/workbook/notes_writer.h"
#include "cli/workbook/sheet_filler.h"
#include "cli/workbook/sheet_name.h"
#include "cli/workbook/sheet_writer.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::u16string_view lists_sheet = u"Tessera lists";

std::u16string type_of(std::u16string_view part) {
    return std::u16string(u"application/vnd.openxmlformats-officedocument.spreadsheetml.")
        .append(part)
        .append(u"+xml");
}

std::u16string relationship_to(std::u16string_view part) {
    return std::u16string(office_relationships).append(u"/").append(part);
}

std::u16string numbered(std::u16string_view text, std::size_t number, std::u16string_view rest) {
    const std::string digits = std::to_string(number);
    return std::u16string(text).append(digits.begin(), digits.end()).append(rest);
}

std::wstring quoted(std::u16string_view text) {
    return L"\"" + std::wstring(automation::as_wide(text)) + L"\"";
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

class Writer {
  public:
    Writer(ByteSink& sink, const BaseWorkbook& base, const WorkbookPlan& plan,
           const WriteCourse& course)
        : base_(base),
          package_(sink, base.types),
          plan_(plan),
          course_(course),
          relationships_(base.of_book),
          next_block_(base.sheets().size() + 1) {
        if (!base.styles_part.empty()) shared_.styles = StyleSheet(base.read(base.styles_part));
        shared_.drop_downs.avoid_names_in(base.book);
    }

    std::vector<UnwrittenCell> write(const dom::Node& contents_root) {
        for (const PlannedSheet& sheet : plan_.sheets)
            put_sheet(sheet);
        if (!shared_.drop_downs.named_lists().empty()) add_lists();
        put_contents(contents_root);
        put_styles();
        drop_calculation_chain();
        put(base_.book_part,
            with_sheets(base_.book, added_sheets_, names(), !base_.sheets().empty()),
            type_of(u"sheet.main"));
        put_relationships(base_.book_part, relationships_);
        put_relationships({}, base_.of_package);
        replaced_.insert("[content_types].xml");
        copy_the_rest();
        package_.finish();
        return std::move(unwritten_);
    }

  private:
    // A part of the base is written once: as it was, or as it has become.
    void replace(std::u16string_view part) {
        replaced_.insert(folded_name(tessera::to_utf8(part.substr(1))));
    }

    void put(std::u16string_view part, std::string_view text, std::u16string_view type = {}) {
        replace(part);
        package_.set_type(part, type);
        package_.add_bytes(part, text);
    }

    void put_relationships(std::u16string_view part, const Relationships& relationships) {
        replace(relationships_part(part));
        package_.add_relationships(part, relationships);
    }

    void copy_the_rest() {
        for (const std::u16string& part : base_.parts()) {
            const std::string name = tessera::to_utf8(std::u16string_view(part).substr(1));
            if (name.ends_with('/') || replaced_.contains(folded_name(name))) continue;
            course_(L"the part " + quoted(part));
            package_.add_bytes(part, base_.bytes(part));
        }
    }

    void put_sheet(const PlannedSheet& sheet) {
        course_(L"the sheet " + quoted(sheet.name));
        const auto& sheets = base_.sheets();
        const auto known = std::ranges::find(
            sheets, folded_sheet_name(sheet.name),
            [](const BaseSheet& candidate) { return folded_sheet_name(candidate.name); });
        if (known == sheets.end()) return add_sheet(sheet);
        if (known->has_cells && !known->is_carrier) return fill_sheet(sheet, known->part);
        for (const PlannedCell& cell : sheet.cells)
            leave_out(cell, L"the template's sheet of that name is none of cells");
    }

    void leave_out(const PlannedCell& cell, const std::wstring& reason) {
        unwritten_.push_back({cell.record->pointer.text, reason});
    }

    void fill_sheet(const PlannedSheet& sheet, const std::u16string& part) {
        put(part, filled_sheet(base_.read(part), sheet, shared_.styles,
                               [&](const PlannedCell& cell, const std::wstring& reason) {
                                   leave_out(cell, reason);
                               }));
    }

    // The next number under which no part of a sheet is known.
    std::size_t take_number() {
        do
            ++last_number_;
        while (base_.has(sheet_part(last_number_)) || base_.has(comments_part(last_number_)));
        return last_number_;
    }
    static std::u16string sheet_part(std::size_t number) {
        return numbered(u"/xl/worksheets/sheet", number, u".xml");
    }
    static std::u16string comments_part(std::size_t number) {
        return numbered(u"/xl/comments", number, u".xml");
    }
    static std::u16string shapes_part(std::size_t number) {
        return numbered(u"/xl/drawings/tesseraNotes", number, u".vml");
    }

    template <class Write>
    void add_sheet_part(std::size_t number, AddedSheet sheet, Write&& write) {
        replace(sheet_part(number));
        package_.add_xml(sheet_part(number), type_of(u"worksheet"), write);
        sheet.relationship = relationships_.add(relationship_to(u"worksheet"), sheet_part(number));
        added_sheets_.push_back(std::move(sheet));
    }

    void add_sheet(const PlannedSheet& sheet) {
        const std::size_t number = take_number();
        const SheetLayout layout = layout_of(sheet);
        Relationships relationships;
        const std::u16string notes = add_notes(number, sheet, layout, relationships);
        add_sheet_part(
            number, {sheet.name, {}, {}, print_titles(sheet, layout)},
            [&](XmlWriter& writer) { write_sheet(writer, sheet, layout, shared_, notes); });
        put_relationships(sheet_part(number), relationships);
    }

    // Answers the relationship to the drawing.
    std::u16string add_notes(std::size_t number, const PlannedSheet& sheet,
                             const SheetLayout& layout, Relationships& relationships) {
        const std::vector<Note> notes = notes_of(sheet);
        if (notes.empty()) return {};
        replace(comments_part(number));
        package_.add_xml(comments_part(number), type_of(u"comments"),
                         [&](XmlWriter& writer) { write_comments(writer, notes); });
        relationships.add(relationship_to(u"comments"), comments_part(number));
        replace(shapes_part(number));
        package_.add_xml(
            shapes_part(number), u"application/vnd.openxmlformats-officedocument.vmlDrawing",
            [&](XmlWriter& writer) { write_note_shapes(writer, notes, layout, next_block_); });
        next_block_ += blocks_for(notes);
        return relationships.add(relationship_to(u"vmlDrawing"), shapes_part(number));
    }

    std::u16string free_sheet_name(std::u16string_view wanted) const {
        std::u16string name(wanted);
        for (std::size_t number = 2; is_taken(name); ++number)
            name = numbered(wanted, number, {});
        return name;
    }

    bool is_taken(const std::u16string& name) const {
        const auto is_it = [&](const auto& sheet) {
            return folded_sheet_name(sheet.name) == folded_sheet_name(name);
        };
        return std::ranges::any_of(base_.sheets(), is_it) ||
               std::ranges::any_of(added_sheets_, is_it);
    }

    void add_lists() {
        lists_sheet_ = free_sheet_name(lists_sheet);
        add_sheet_part(take_number(), {lists_sheet_, {}, u"hidden", {}}, [&](XmlWriter& writer) {
            write_lists_sheet(writer, shared_.drop_downs.named_lists());
        });
    }

    std::vector<AddedName> names() const {
        std::vector<AddedName> names;
        for (const DropDowns::NamedList& list : shared_.drop_downs.named_lists())
            names.push_back({list.name, quoted_sheet(lists_sheet_) + list.range});
        return names;
    }

    // A document that came before gives way to this one, in both of its places.
    void put_contents(const dom::Node& contents_root) {
        course_(L"the content document");
        const std::string document = fragment([&](XmlWriter& writer) {
            writer.declaration(u"UTF-8");
            write_element(writer, contents_root);
        });
        if (base_.contents_part.empty())
            add_contents_part(document);
        else
            put(base_.contents_part, document);
        const auto carrier = std::ranges::find(base_.sheets(), true, &BaseSheet::is_carrier);
        const auto write = [&](XmlWriter& writer) { write_carrier_sheet(writer, document); };
        if (carrier == base_.sheets().end())
            add_sheet_part(take_number(), {free_sheet_name(carrier_sheet), {}, u"veryHidden", {}},
                           write);
        else
            put(carrier->part, fragment(write));
    }

    void add_contents_part(const std::string& document) {
        std::size_t number = 1;
        while (base_.has(numbered(u"/customXml/item", number, u".xml")))
            ++number;
        const std::u16string part = numbered(u"/customXml/item", number, u".xml");
        const std::u16string properties = numbered(u"/customXml/itemProps", number, u".xml");
        put(part, document);
        replace(properties);
        package_.add_xml(
            properties, u"application/vnd.openxmlformats-officedocument.customXmlProperties+xml",
            [](XmlWriter& writer) {
                writer.start(u"ds:datastoreItem");
                writer.attribute(u"ds:itemID", u"{6B0E4D10-52C7-4A1B-9E0F-3D5A7C21F1FE}");
                writer.attribute(u"xmlns:ds",
                                 u"http://schemas.openxmlformats.org/"
                                 u"officeDocument/2006/customXml");
                writer.end();
            });
        Relationships of_item;
        of_item.add(relationship_to(u"customXmlProps"), properties);
        put_relationships(part, of_item);
        relationships_.add(relationship_to(u"customXml"), part);
    }

    void put_styles() {
        if (!base_.styles_part.empty()) return put(base_.styles_part, shared_.styles.text());
        put(u"/xl/styles.xml", shared_.styles.text(), type_of(u"styles"));
        relationships_.add(relationship_to(u"styles"), u"/xl/styles.xml");
    }

    // Programs make it anew; one that names cells that are no formulas any more stops them.
    void drop_calculation_chain() {
        relationships_.drop(u"calcChain");
        if (base_.calculation_chain.empty()) return;
        replace(base_.calculation_chain);
        package_.drop_type(base_.calculation_chain);
    }

    const BaseWorkbook& base_;
    PackageWriter package_;
    const WorkbookPlan& plan_;
    const WriteCourse& course_;
    SharedParts shared_;
    Relationships relationships_;  // of the workbook
    std::vector<AddedSheet> added_sheets_;
    std::u16string lists_sheet_;
    std::set<std::string> replaced_;
    std::vector<UnwrittenCell> unwritten_;
    std::size_t last_number_ = 0;
    std::size_t next_block_;
};

}  // namespace

std::vector<UnwrittenCell> write_workbook(ByteSink& sink, const BaseWorkbook& base,
                                          const WorkbookPlan& plan, const dom::Node& contents_root,
                                          const WriteCourse& course) {
    return Writer(sink, base, plan, course).write(contents_root);
}

}  // namespace cli
