#include "cli/workbook/drop_downs.h"

#include <algorithm>

#include "cli/package/markup.h"

namespace cli {
namespace {

constexpr std::size_t longest_plain_list = 255;
constexpr std::string_view list_name = "TesseraList";

bool is_plain(std::u16string_view text) {
    return text.find_first_of(u",\"\n\t") == text.npos && !text.starts_with(u' ') &&
           !text.ends_with(u' ') && !text.starts_with(u'=');
}

// The texts in one, parted by commas; empty when they cannot be written so.
std::u16string plain_list(const std::vector<std::u16string>& texts) {
    std::u16string joined;
    for (const std::u16string& text : texts) {
        if (!is_plain(text)) return {};
        if (!joined.empty()) joined += u',';
        joined += text;
    }
    return joined.size() > longest_plain_list ? std::u16string() : joined;
}

std::u16string numbered(std::u16string_view text, std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::u16string(text).append(digits.begin(), digits.end());
}

// Cells that come row by row, gathered into one range for each run down a column.
class Ranges {
  public:
    void add(const CellAddress& cell) {
        const auto [run, is_new] = open_.try_emplace(cell.column, Run{cell.row, cell.row});
        if (is_new) return;
        if (run->second.last + 1 != cell.row) {
            close(cell.column, run->second);
            run->second.first = cell.row;
        }
        run->second.last = cell.row;
    }

    std::u16string finish() {
        for (const auto& [column, run] : open_)
            close(column, run);
        return std::move(text_);
    }

  private:
    struct Run {
        std::int32_t first;
        std::int32_t last;
    };

    void close(std::int32_t column, const Run& run) {
        if (!text_.empty()) text_ += u' ';
        text_ += cell_name({column, run.first});
        if (run.last != run.first) text_.append(u":").append(cell_name({column, run.last}));
    }

    std::map<std::int32_t, Run> open_;
    std::u16string text_;
};

}  // namespace

void DropDowns::avoid_names_in(std::string_view book) {
    markup::Scanner scanner(book);
    while (const auto tag = scanner.next()) {
        if (!tag->is_start_of("definedName")) continue;
        const std::string_view name = markup::attribute(*tag, "name").value_or("");
        const std::string_view number = name.substr(std::min(name.size(), list_name.size()));
        if (!name.starts_with(list_name) || number.empty() || number.size() > 9) continue;
        if (number.find_first_not_of("0123456789") != number.npos) continue;
        last_name_ = std::max<std::size_t>(last_name_, std::stoul(std::string(number)));
    }
}

std::u16string DropDowns::formula_of(const std::vector<std::u16string>& texts) {
    const auto [known, is_new] = formulas_.try_emplace(texts);
    if (!is_new) return known->second;
    const std::u16string plain = plain_list(texts);
    if (!plain.empty()) {
        known->second = u"\"" + plain + u"\"";
        return known->second;
    }
    const std::size_t number = named_.size() + 1;
    const std::u16string column = column_letters(static_cast<std::int32_t>(number));
    known->second = numbered(std::u16string(list_name.begin(), list_name.end()), ++last_name_);
    named_.push_back(
        {known->second, numbered(u"$" + column + u"$1:$" + column + u"$", texts.size()), texts});
    return known->second;
}

std::map<std::vector<std::u16string>, std::u16string> offered_lists(const PlannedSheet& sheet) {
    std::map<std::vector<std::u16string>, Ranges> ranges;
    for (const PlannedCell& cell : sheet.cells) {
        if (cell.role != CellRole::input) continue;
        const std::vector<std::u16string> texts = list_texts(*cell.record);
        if (!texts.empty()) ranges[texts].add(cell.at);
    }
    std::map<std::vector<std::u16string>, std::u16string> cells;
    for (auto& [texts, range] : ranges)
        cells.emplace(texts, range.finish());
    return cells;
}

}  // namespace cli
