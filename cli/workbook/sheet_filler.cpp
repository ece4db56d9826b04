#include "cli/workbook/sheet_filler.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "cli/fragment.h"
#include "cli/package/markup.h"
#include "cli/workbook/sheet_writer.h"

namespace cli {
namespace {

using markup::Tag;

struct Range {
    CellAddress first;
    CellAddress last;

    bool contains(const CellAddress& cell) const noexcept {
        return cell.column >= first.column && cell.column <= last.column && cell.row >= first.row &&
               cell.row <= last.row;
    }
};

CellAddress address_in(std::string_view text) {
    const std::u16string wide(text.begin(), text.end());
    return parse_pointer(u"!" + wide).cell.value_or(CellAddress{});
}

Range range_in(std::string_view text) {
    const std::size_t colon = text.find(':');
    const CellAddress first = address_in(text.substr(0, colon));
    return {first, colon == text.npos ? first : address_in(text.substr(colon + 1))};
}

std::wstring wide(std::string_view ascii) {
    return std::wstring(ascii.begin(), ascii.end());
}

// Some programs save a boolean as one of these, which is no formula of a user's.
bool has_formula(std::string_view cell) {
    const auto formula = markup::find(cell, "f");
    if (!formula) return false;
    const std::string_view text = cell.substr(formula->end);
    return !text.starts_with("TRUE()") && !text.starts_with("FALSE()");
}

class Filler {
  public:
    Filler(std::string_view xml, const PlannedSheet& sheet, StyleSheet& styles,
           const LeftOut& left_out)
        : xml_(xml), styles_(styles), left_out_(left_out), data_(markup::find(xml, "sheetData")) {
        find_merged_cells();
        find_columns();
        for (const PlannedCell& cell : sheet.cells)
            if (has_place(cell)) cells_.push_back(&cell);
    }

    std::string fill() {
        if (!data_) return std::string(xml_);
        copy_head();
        const std::size_t end = markup::end_of(xml_, *data_);
        result_.append(data_->text.substr(0, data_->text.size() - (data_->is_empty ? 2 : 1))) +=
            '>';
        if (!data_->is_empty) fill_rows(end);
        while (!is_done())
            add_row(cells_[next_]->at.row);
        result_.append("</").append(data_->prefix).append("sheetData>").append(xml_.substr(end));
        return std::move(result_);
    }

  private:
    // Of a row that says nothing of its cells' style.
    static constexpr long no_style = -1;

    struct Column {
        long first;
        long last;
        std::size_t style;
    };

    void find_merged_cells() {
        markup::Scanner scanner(xml_, data_ ? markup::end_of(xml_, *data_) : 0);
        while (const auto tag = scanner.next())
            if (tag->is_start_of("mergeCell"))
                if (const auto range = markup::attribute(*tag, "ref"))
                    merged_.push_back({range_in(*range), wide(*range)});
    }

    void find_columns() {
        markup::Scanner scanner(xml_);
        for (auto tag = scanner.next(); tag && data_ && tag->begin < data_->begin;
             tag = scanner.next())
            if (const auto style = markup::number(*tag, "style"); style && tag->is_start_of("col"))
                columns_.push_back({markup::number(*tag, "min").value_or(0),
                                    markup::number(*tag, "max").value_or(0),
                                    static_cast<std::size_t>(*style)});
    }

    bool has_place(const PlannedCell& cell) {
        if (!data_) {
            left_out_(cell, L"the template's sheet has no place for cells");
            return false;
        }
        for (const auto& [range, name] : merged_)
            if (range.contains(cell.at) && cell.at != range.first) {
                left_out_(cell, L"the template's merged cells " + name + L" cover it");
                return false;
            }
        return true;
    }

    // What a sheet says of its own size would be wrong now, and need not be said.
    void copy_head() {
        const auto dimension = markup::find(xml_.substr(0, data_->begin), "dimension");
        const std::size_t begin = dimension ? dimension->begin : data_->begin;
        const std::size_t end = dimension ? markup::end_of(xml_, *dimension) : data_->begin;
        result_.append(xml_.substr(0, begin)).append(xml_.substr(end, data_->begin - end));
    }

    bool is_done() const noexcept { return next_ == cells_.size(); }
    bool stands_in(long row) const noexcept { return !is_done() && cells_[next_]->at.row == row; }

    void fill_rows(std::size_t end) {
        std::size_t position = data_->end;
        long row = 0;
        markup::Scanner scanner(xml_, position);
        for (auto tag = scanner.next(); tag && !tag->is_end && tag->begin < end;
             tag = scanner.next()) {
            const std::size_t row_end = markup::end_of(xml_, *tag);
            row = markup::number(*tag, "r").value_or(row + 1);
            while (!is_done() && cells_[next_]->at.row < row)
                add_row(cells_[next_]->at.row);
            result_.append(xml_.substr(position, tag->begin - position));
            if (stands_in(row))
                fill_row(*tag, row_end, row);
            else
                result_.append(xml_.substr(tag->begin, row_end - tag->begin));
            position = row_end;
            scanner = markup::Scanner(xml_, position);
        }
    }

    void add_row(std::int32_t row) {
        const std::string name = std::string(data_->prefix) + "row";
        result_.append("<").append(name).append(" r=\"" + std::to_string(row) + "\">");
        while (stands_in(row))
            add_cell(no_style);
        result_.append("</").append(name).append(">");
    }

    // A row's own note of its columns would be wrong, as the sheet's of its size.
    void fill_row(const Tag& tag, std::size_t end, long row) {
        std::string start = markup::without_attribute(tag, "spans");
        if (tag.is_empty) start.erase(start.size() - 2, 1);
        result_ += start;
        const bool has_style = markup::number(tag, "customFormat").value_or(0) != 0;
        const long style = has_style ? markup::number(tag, "s").value_or(no_style) : no_style;
        std::size_t position = tag.end;
        if (!tag.is_empty) position = fill_cells(tag.end, row, style);
        while (stands_in(row))
            add_cell(style);
        if (tag.is_empty)
            result_.append("</").append(tag.prefix).append("row>");
        else
            result_.append(xml_.substr(position, end - position));
    }

    // Answers where the first thing stands that is no cell.
    std::size_t fill_cells(std::size_t position, long row, long row_style) {
        std::int32_t column = 0;
        markup::Scanner scanner(xml_, position);
        for (auto tag = scanner.next(); tag && tag->is_start_of("c"); tag = scanner.next()) {
            const std::size_t end = markup::end_of(xml_, *tag);
            const auto reference = markup::attribute(*tag, "r");
            column = reference ? address_in(*reference).column : column + 1;
            while (stands_in(row) && cells_[next_]->at.column < column)
                add_cell(row_style);
            result_.append(xml_.substr(position, tag->begin - position));
            if (stands_in(row) && cells_[next_]->at.column == column)
                fill_cell(*tag, xml_.substr(tag->begin, end - tag->begin));
            else
                result_.append(xml_.substr(tag->begin, end - tag->begin));
            position = end;
            scanner = markup::Scanner(xml_, position);
        }
        return position;
    }

    void fill_cell(const Tag& tag, std::string_view existing) {
        const PlannedCell& cell = *cells_[next_];
        const bool has_value =
            markup::find(existing, "v").has_value() || markup::find(existing, "is").has_value();
        if (has_formula(existing))
            left_out_(cell, L"the template has a formula there");
        else if (cell.role != CellRole::input || cell.record->goes_out() || !has_value)
            return add_cell(markup::number(tag, "s").value_or(0));
        result_.append(existing);
        ++next_;
    }

    void add_cell(long given_style) {
        const PlannedCell& cell = *cells_[next_++];
        std::size_t style = given_style < 0 ? style_of_column(cell.at.column)
                                            : static_cast<std::size_t>(given_style);
        const std::u16string format = style_of(cell).format;
        if (is_number_format(format)) style = styles_.showing(style, format);
        result_ += markup::prefixed(
            fragment([&](XmlWriter& writer) { write_cell(writer, cell, style); }), data_->prefix);
    }

    std::size_t style_of_column(long column) const {
        const auto found = std::ranges::find_if(columns_, [&](const Column& known) {
            return column >= known.first && column <= known.last;
        });
        return found == columns_.end() ? 0 : found->style;
    }

    std::string_view xml_;
    StyleSheet& styles_;
    const LeftOut& left_out_;
    std::optional<Tag> data_;
    std::vector<std::pair<Range, std::wstring>> merged_;
    std::vector<Column> columns_;
    std::vector<const PlannedCell*> cells_;
    std::size_t next_ = 0;  // of the cells
    std::string result_;
};

}  // namespace

std::string filled_sheet(std::string_view xml, const PlannedSheet& sheet, StyleSheet& styles,
                         const LeftOut& left_out) {
    return Filler(xml, sheet, styles, left_out).fill();
}

}  // namespace cli
