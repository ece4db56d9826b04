#include "cli/workbook/book_text.h"

#include <algorithm>

#include "cli/fragment.h"
#include "cli/package/markup.h"
#include "cli/package/package_writer.h"

namespace cli {
namespace {

struct SheetCount {
    std::int64_t sheets = 0;
    std::int64_t highest_id = 0;
};

SheetCount count_sheets(std::string_view text) {
    SheetCount count;
    markup::Scanner scanner(text);
    while (const auto tag = scanner.next()) {
        if (!tag->is_start_of("sheet")) continue;
        ++count.sheets;
        count.highest_id =
            std::max<std::int64_t>(count.highest_id, markup::number(*tag, "sheetId").value_or(0));
    }
    return count;
}

std::string_view prefix_of(std::string_view text) {
    const auto root = markup::find(text, "workbook");
    return root ? root->prefix : std::string_view();
}

std::string sheet_elements(const std::vector<AddedSheet>& sheets, std::int64_t id) {
    return fragment([&](XmlWriter& writer) {
        for (const AddedSheet& sheet : sheets) {
            writer.start(u"sheet");
            writer.attribute(u"xmlns:r", office_relationships);
            writer.attribute(u"name", sheet.name);
            writer.attribute(u"sheetId", ++id);
            if (!sheet.state.empty()) writer.attribute(u"state", sheet.state);
            writer.attribute(u"r:id", sheet.relationship);
            writer.end();
        }
    });
}

void write_name(XmlWriter& writer, std::u16string_view name, std::int64_t sheet,
                std::u16string_view range) {
    writer.start(u"definedName", true);
    writer.attribute(u"name", name);
    if (sheet >= 0) writer.attribute(u"localSheetId", sheet);
    writer.text(range);
    writer.end();
}

std::string name_elements(const std::vector<AddedSheet>& sheets,
                          const std::vector<AddedName>& names, std::int64_t first_sheet) {
    return fragment([&](XmlWriter& writer) {
        std::int64_t index = first_sheet;
        for (const AddedSheet& sheet : sheets) {
            if (!sheet.print_titles.empty())
                write_name(writer, u"_xlnm.Print_Titles", index, sheet.print_titles);
            ++index;
        }
        for (const AddedName& name : names)
            write_name(writer, name.name, -1, name.range);
    });
}

// Behind the last of the elements that come before what is to be inserted.
void insert_behind(std::string& text, std::initializer_list<std::string_view> elements,
                   const std::string& inserted) {
    std::size_t end = 0;
    for (const std::string_view name : elements)
        if (const auto element = markup::find(text, name))
            end = std::max(end, markup::end_of(text, *element));
    text.insert(end, inserted);
}

void add_names(std::string& text, const std::string& elements) {
    if (elements.empty()) return;
    const std::string prefix(prefix_of(text));
    const std::string ours = markup::prefixed(elements, prefix);
    if (const auto names = markup::find(text, "definedNames")) {
        text = markup::with_children(text, *names, ours, 0);
        return;
    }
    const std::string name = prefix + "definedNames";
    insert_behind(text, {"sheets", "functionGroups", "externalReferences"},
                  "<" + name + ">" + ours + "</" + name + ">");
}

void recalculate(std::string& text) {
    if (const auto known = markup::find(text, "calcPr")) {
        const std::string changed = markup::with_attribute(*known, "fullCalcOnLoad", "1");
        text.replace(known->begin, known->end - known->begin, changed);
        return;
    }
    insert_behind(text, {"sheets", "functionGroups", "externalReferences", "definedNames"},
                  "<" + std::string(prefix_of(text)) + "calcPr fullCalcOnLoad=\"1\"/>");
}

}  // namespace

std::string with_sheets(std::string text, const std::vector<AddedSheet>& sheets,
                        const std::vector<AddedName>& names, bool recalculates) {
    const SheetCount before = count_sheets(text);
    if (const auto list = markup::find(text, "sheets"))
        text = markup::with_children(
            text, *list,
            markup::prefixed(sheet_elements(sheets, before.highest_id), prefix_of(text)), 0);
    add_names(text, name_elements(sheets, names, before.sheets));
    if (recalculates) recalculate(text);
    return text;
}

std::u16string quoted_sheet(std::u16string_view name) {
    std::u16string quoted = u"'";
    for (const char16_t letter : name)
        quoted.append(letter == u'\'' ? 2 : 1, letter);
    return quoted + u"'!";
}

}  // namespace cli
