#include "cli/workbook/sheet_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "automation/bstr.h"
#include "cli/failure.h"
#include "cli/workbook/cell_text.h"
#include "cli/workbook/date_format.h"
#include "text/string_forms.h"

namespace cli {
namespace {

// What a spreadsheet program writes is right.
constexpr const wchar_t* save_anew = L"; save the workbook anew with a spreadsheet program";

using automation::as_u16;

std::optional<CellAddress> address_of(std::wstring_view text) {
    const auto cell = parse_pointer(std::u16string(u"!").append(as_u16(text))).cell;
    return cell && is_on_sheet(*cell) ? cell : std::nullopt;
}

template <class Number>
std::optional<Number> number_of(std::wstring_view text) {
    std::string digits;
    for (const wchar_t digit : text)
        digits += digit < 0x80 ? static_cast<char>(digit) : '?';
    Number number{};
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool is_number = read.ec == std::errc() && read.ptr == digits.data() + digits.size() &&
                           std::isfinite(static_cast<double>(number));
    return is_number ? std::optional(number) : std::nullopt;
}

// Gathers the texts of rich text: its runs are one text, what says how to pronounce it is none.
class TextGatherer {
  public:
    void start(std::wstring_view name) {
        if (name == L"rPh") is_phonetic_ = true;
        if (name == L"t") is_open_ = !is_phonetic_;
    }
    void end(std::wstring_view name) {
        if (name == L"rPh") is_phonetic_ = false;
        if (name == L"t") is_open_ = false;
    }
    void text(std::wstring_view piece) {
        if (is_open_) text_ += piece;
    }
    std::u16string take() {
        const std::wstring text = std::exchange(text_, {});
        return tessera::office_string(unescaped_cell_text(as_u16(text)));
    }

  private:
    std::wstring text_;
    bool is_phonetic_ = false;
    bool is_open_ = false;
};

class SharedTextHandler : public XmlHandler {
  public:
    void start(std::wstring_view name, const XmlAttributes&) override { gatherer_.start(name); }
    void end(std::wstring_view name) override {
        gatherer_.end(name);
        if (name == L"si") texts.push_back(gatherer_.take());
    }
    void text(std::wstring_view piece) override { gatherer_.text(piece); }

    std::vector<std::u16string> texts;

  private:
    TextGatherer gatherer_;
};

class StyleHandler : public XmlHandler {
  public:
    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        if (name == L"numFmt") {
            const long number = number_of<long>(attributes.text(L"numFmtId")).value_or(0);
            formats_[number] = is_date_format(as_u16(attributes.text(L"formatCode")));
        } else if (name == L"cellXfs") {
            is_in_cells_ = true;
        } else if (name == L"xf" && is_in_cells_) {
            date_styles.push_back(
                is_date(number_of<long>(attributes.text(L"numFmtId")).value_or(0)));
        }
    }
    void end(std::wstring_view name) override {
        if (name == L"cellXfs") is_in_cells_ = false;
    }
    void text(std::wstring_view) override {}

    std::vector<bool> date_styles;

  private:
    bool is_date(long format) const {
        const auto own = formats_.find(format);
        return own != formats_.end() ? own->second : is_date_format(format);
    }

    std::map<long, bool> formats_;
    bool is_in_cells_ = false;
};

class SheetHandler : public XmlHandler {
  public:
    SheetHandler(const CellTables& tables, const std::wstring& place)
        : tables_(tables), place_(place) {}

    void start(std::wstring_view name, const XmlAttributes& attributes) override {
        if (name == L"c")
            begin_cell(attributes);
        else if (name == L"row")
            begin_row(attributes);
        else if (name == L"mergeCell")
            add_merged(attributes.text(L"ref"));
        else if (name == L"worksheet")
            is_sheet_ = true;
        if (name == L"f") cell_.is_formula = true;
        is_value_ = name == L"v";
        gatherer_.start(name);
    }
    void end(std::wstring_view name) override {
        gatherer_.end(name);
        is_value_ = false;
        if (name == L"c") finish_cell();
    }
    void text(std::wstring_view piece) override {
        if (is_value_) value_ += piece;
        gatherer_.text(piece);
    }

    SheetCells take() {
        if (!is_sheet_) throw Failure(place_ + L" is no sheet of cells" + save_anew);
        return std::move(sheet_);
    }

  private:
    // Rows and cells may say where they are, or come behind those before them.
    void begin_row(const XmlAttributes& attributes) {
        at_.row = number_of<std::int32_t>(attributes.text(L"r")).value_or(at_.row + 1);
        at_.column = 0;
        if (at_.row < 1 || at_.row > last_cell.row)
            throw Failure(place_ + L" has a row " + std::to_wstring(at_.row) +
                          L", which no sheet has" + save_anew);
    }

    void begin_cell(const XmlAttributes& attributes) {
        cell_ = {};
        value_.clear();
        const std::wstring reference = attributes.text(L"r");
        if (reference.empty())
            ++at_.column;
        else if (const auto address = address_of(reference))
            at_ = *address;
        else
            throw Failure(place_ + L" has a cell \"" + reference + L"\", which no sheet has");
        type_ = attributes.text(L"t");
        const auto style = number_of<std::size_t>(attributes.text(L"s")).value_or(0);
        cell_.is_date = style < tables_.date_styles.size() && tables_.date_styles[style];
    }

    void finish_cell() {
        const std::u16string gathered = gatherer_.take();
        if (type_ == L"inlineStr")
            take_text(gathered);
        else if (!value_.empty())
            take_value();
        sheet_.cells[at_] = std::move(cell_);
        cell_ = {};
    }

    void take_text(std::u16string text) {
        if (text.empty()) return;
        cell_.kind = SheetCell::Kind::text;
        cell_.text = std::move(text);
    }

    void take_value() {
        using Kind = SheetCell::Kind;
        if (type_ == L"s") {
            const auto index = number_of<std::size_t>(value_);
            if (!index || *index >= tables_.shared_texts.size())
                fail(L"refers to a text that there is not");
            take_text(tables_.shared_texts[*index]);
        } else if (type_ == L"str" || type_ == L"d") {
            take_text(tessera::office_string(unescaped_cell_text(as_u16(value_))));
        } else if (type_ == L"e") {
            cell_.kind = Kind::error;
            cell_.text = as_u16(value_);
        } else {
            const auto number = number_of<double>(value_);
            if (!number) fail(L"has \"" + value_ + L"\" for a number");
            cell_.kind = type_ == L"b" ? Kind::boolean : Kind::number;
            cell_.number = *number;
        }
    }

    void add_merged(std::wstring_view reference) {
        const std::size_t mark = std::min(reference.find(L':'), reference.size());
        const auto first = address_of(reference.substr(0, mark));
        const auto last = address_of(reference.substr(std::min(mark + 1, reference.size())));
        if (first && last) sheet_.merged.push_back({*first, *last});
    }

    [[noreturn]] void fail(const std::wstring& problem) const {
        throw Failure(place_ + L": the cell " + std::wstring(automation::as_wide(cell_name(at_))) +
                      L" " + problem + save_anew);
    }

    const CellTables& tables_;
    const std::wstring& place_;
    SheetCells sheet_;
    CellAddress at_;
    SheetCell cell_;
    std::wstring type_;
    std::wstring value_;
    TextGatherer gatherer_;
    bool is_value_ = false;
    bool is_sheet_ = false;
};

}  // namespace

bool CellRange::holds(const CellAddress& cell) const noexcept {
    return cell.row >= first.row && cell.row <= last.row && cell.column >= first.column &&
           cell.column <= last.column;
}

const SheetCell* SheetCells::find(const CellAddress& cell) const {
    const auto found = cells.find(cell);
    return found == cells.end() ? nullptr : &found->second;
}

const CellRange* SheetCells::merged_over(const CellAddress& cell) const {
    const auto found = std::ranges::find_if(
        merged, [&](const CellRange& range) { return range.holds(cell) && cell != range.first; });
    return found == merged.end() ? nullptr : &*found;
}

CellTables read_cell_tables(const PackageReader& package,
                            const std::vector<Relationship>& of_workbook) {
    CellTables tables;
    if (const auto* const part = find_relationship(of_workbook, L"sharedStrings")) {
        SharedTextHandler handler;
        package.read_part(part->target, handler);
        tables.shared_texts = std::move(handler.texts);
    }
    if (const auto* const part = find_relationship(of_workbook, L"styles")) {
        StyleHandler handler;
        package.read_part(part->target, handler);
        tables.date_styles = std::move(handler.date_styles);
    }
    return tables;
}

SheetCells read_sheet(const PackageReader& package, std::string_view part,
                      const CellTables& tables) {
    const std::wstring place =
        L"\"" + package.path() + L"\", part \"" + std::wstring(part.begin(), part.end()) + L"\"";
    SheetHandler handler(tables, place);
    package.read_part(part, handler);
    return handler.take();
}

std::u16string shown_value(const SheetCell& cell) {
    switch (cell.kind) {
        case SheetCell::Kind::blank:
            break;
        case SheetCell::Kind::number: {
            char digits[32];
            const auto end = std::to_chars(digits, digits + sizeof digits, cell.number).ptr;
            return std::u16string(digits, end);
        }
        case SheetCell::Kind::boolean:
            return cell.number != 0 ? u"TRUE" : u"FALSE";
        case SheetCell::Kind::text:
        case SheetCell::Kind::error:
            return cell.text;
    }
    return {};
}

}  // namespace cli
