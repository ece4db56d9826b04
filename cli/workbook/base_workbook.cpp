#include "cli/workbook/base_workbook.h"

#include <algorithm>

#include "automation/bstr.h"
#include "cli/failure.h"
#include "cli/package/markup.h"
#include "cli/workbook/carrier_sheet.h"
#include "cli/workbook/sheet_name.h"
#include "cli/workbook/workbook_plan.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::string_view plain_book =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
    "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<bookViews><workbookView/></bookViews><sheets/></workbook>";

std::string narrow(std::u16string_view part) {
    return tessera::to_utf8(part.substr(part.starts_with(u'/') ? 1 : 0));
}

std::u16string wide_part(std::string_view part) {
    return u"/" + tessera::from_utf8(part).value_or(std::u16string());
}

std::u16string u16(const std::wstring& text) {
    return std::u16string(automation::as_u16(text));
}

// Hands over every element of a name.
template <class Use>
class Elements : public XmlHandler {
  public:
    Elements(std::wstring_view name, Use use) : name_(name), use_(std::move(use)) {}
    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        if (name == name_) use_(attributes);
    }
    void end(std::wstring_view) override {}
    void text(std::wstring_view) override {}

  private:
    std::wstring_view name_;
    Use use_;
};

// "Tessera content", or that with a number where the name was taken.
bool is_carrier_name(std::u16string_view name) {
    return name.starts_with(carrier_sheet) &&
           name.substr(carrier_sheet.size()).find_first_not_of(u"0123456789") == name.npos;
}

template <class Use>
void for_each_element(const PackageReader& package, const std::string& part, std::wstring_view name,
                      Use use) {
    Elements<Use> handler(name, std::move(use));
    package.read_part(part, handler);
}

Relationships relationships_in(const PackageReader& package, std::u16string_view part) {
    Relationships found;
    const std::string name = narrow(relationships_part(part));
    if (!package.has(name)) return found;
    for_each_element(package, name, L"Relationship", [&](const XmlAttributes& attributes) {
        found.keep({u16(attributes.text(L"Id")), u16(attributes.text(L"Type")),
                    u16(attributes.text(L"Target")),
                    attributes.text(L"TargetMode") == L"External"});
    });
    return found;
}

}  // namespace

BaseWorkbook::BaseWorkbook() : book(plain_book) {
    of_package.add(std::u16string(office_relationships) + u"/officeDocument", u"/xl/workbook.xml");
}

BaseWorkbook::BaseWorkbook(const std::wstring& path)
    : package_(std::make_unique<PackageReader>(path)) {
    of_package = relationships_in(*package_, {});
    read_types();
    read_book();
    read_sheets();
    find_contents();
}

bool BaseWorkbook::counts_from_1904() const {
    const auto properties = markup::find(book, "workbookPr");
    const auto flag = properties ? markup::attribute(*properties, "date1904") : std::nullopt;
    return flag == "1" || flag == "true";
}

bool BaseWorkbook::has(std::u16string_view part) const {
    return package_ && package_->has(narrow(part));
}

std::string BaseWorkbook::bytes(std::u16string_view part) const {
    return package_->read(narrow(part));
}

// Markup is changed as UTF-8, which all programs write.
std::string BaseWorkbook::read(std::u16string_view part) const {
    std::string text = package_->read(narrow(part));
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark)) text.erase(0, mark.size());
    Elements ignored(L"", [](const XmlAttributes&) {});
    package_->read_part(narrow(part), ignored);
    if (!text.starts_with('<') || text.find('\0') != text.npos || !tessera::from_utf8(text))
        fail(L"its part \"" + std::wstring(automation::as_wide(part)) +
             L"\" is not UTF-8; save it anew with "
             L"a spreadsheet program");
    return text;
}

std::vector<std::u16string> BaseWorkbook::parts() const {
    std::vector<std::u16string> names;
    if (package_)
        for (const ZipReader::Entry& entry : package_->archive().entries())
            names.push_back(wide_part(entry.name));
    return names;
}

void BaseWorkbook::read_types() {
    const std::string part = "[Content_Types].xml";
    for_each_element(*package_, part, L"Default", [&](const XmlAttributes& attributes) {
        types.of_endings[u16(attributes.text(L"Extension"))] = u16(attributes.text(L"ContentType"));
    });
    for_each_element(*package_, part, L"Override", [&](const XmlAttributes& attributes) {
        types.of_parts[u16(attributes.text(L"PartName"))] = u16(attributes.text(L"ContentType"));
    });
}

void BaseWorkbook::read_book() {
    const auto relationships = package_->relationships({});
    const Relationship* const to_book = find_relationship(relationships, L"officeDocument");
    if (!to_book) fail(L"it is no workbook; save it as .xlsx");
    book_part = wide_part(to_book->target);
    book = read(book_part);
    if (!markup::find(book, "workbook") || !markup::find(book, "sheets"))
        fail(L"it is no workbook of the form \".xlsx\"; save it as one");
    const auto type = types.of_parts.find(book_part);
    if (type != types.of_parts.end() && type->second.find(u"macro") != std::u16string::npos)
        fail(L"it has macros; save it as a workbook without them, \".xlsx\"");
    of_book = relationships_in(*package_, book_part);
    const auto parts_of_book = package_->relationships(narrow(book_part));
    if (const Relationship* const styles = find_relationship(parts_of_book, L"styles"))
        styles_part = wide_part(styles->target);
    if (const Relationship* const chain = find_relationship(parts_of_book, L"calcChain"))
        calculation_chain = wide_part(chain->target);
}

void BaseWorkbook::read_sheets() {
    const auto relationships = package_->relationships(narrow(book_part));
    for_each_element(*package_, narrow(book_part), L"sheet", [&](const XmlAttributes& attributes) {
        const auto found =
            std::ranges::find(relationships, attributes.text(L"id"), &Relationship::id);
        BaseSheet sheet{u16(attributes.text(L"name")), {}};
        sheet.has_cells = found != relationships.end() && found->type == L"worksheet";
        if (sheet.has_cells) sheet.part = wide_part(found->target);
        sheet.is_carrier = sheet.has_cells && attributes.text(L"state").ends_with(L"idden") &&
                           is_carrier_name(sheet.name);
        sheets_.push_back(std::move(sheet));
    });
}

void BaseWorkbook::find_contents() {
    for (const Relationship& known : package_->relationships(narrow(book_part))) {
        if (known.type != L"customXml" || !package_->has(known.target)) continue;
        const std::string text = package_->read(known.target);
        const auto root = markup::Scanner(text).next();
        const bool is_contents =
            root && root->is_start_of("Contents") && markup::attribute(*root, "Version");
        if (is_contents) contents_part = wide_part(known.target);
    }
}

void BaseWorkbook::fail(std::wstring_view problem) const {
    throw Failure(L"the template \"" + package_->path() + L"\" cannot be filled in: " +
                  std::wstring(problem));
}

}  // namespace cli
