#include "cli/records/cell_pointer.h"

#include <algorithm>
#include <limits>

#include "cli/records/ascii.h"

namespace cli {
namespace {

constexpr std::int64_t letter_count = 26;
constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();

// 1 for "A" and "a"; 0 for what is no letter.
std::int32_t letter_number(char16_t letter) noexcept {
    if (letter >= u'A' && letter <= u'Z') return letter - u'A' + 1;
    return letter >= u'a' && letter <= u'z' ? letter - u'a' + 1 : 0;
}

// Takes letters, or digits, off the front of the text: a number in the system of that base. Nothing
// when there are none or too many.
template <class DigitValue>
std::optional<std::int32_t> take_number(std::u16string_view& text, std::int64_t base,
                                        DigitValue&& value_of) {
    std::int64_t number = 0;
    const auto end =
        std::ranges::find_if(text, [&](char16_t digit) { return value_of(digit) < 0; });
    const auto length = static_cast<std::size_t>(end - text.begin());
    for (const char16_t digit : text.substr(0, length)) {
        number = number * base + value_of(digit);
        if (number > greatest) return {};
    }
    text.remove_prefix(length);
    if (number == 0) return {};
    return static_cast<std::int32_t>(number);
}

std::optional<CellAddress> parse_cell(std::u16string_view text) {
    const auto column = take_number(text, letter_count, [](char16_t letter) {
        const std::int32_t number = letter_number(letter);
        return number == 0 ? -1 : number;
    });
    text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
    const auto row = take_number(text, 10, [](char16_t digit) {
        return digit >= u'0' && digit <= u'9' ? digit - u'0' : -1;
    });
    if (!column || !row || !text.empty()) return {};
    return CellAddress{*column, *row};
}

}  // namespace

CellPointer parse_pointer(std::u16string_view text) {
    CellPointer pointer{std::u16string(text), {}, std::u16string(text), {}};
    const std::size_t mark = text.find(u'!');
    if (mark == text.npos) return pointer;
    pointer.sheet = text.substr(0, mark);
    pointer.cell_text = text.substr(mark + 1);
    const std::u16string_view cell = text.substr(mark + 1);
    pointer.cell = parse_cell(cell.substr(0, cell.find(u'!')));
    return pointer;
}

bool is_on_sheet(const CellAddress& cell) noexcept {
    return cell.column <= last_cell.column && cell.row <= last_cell.row;
}

std::u16string column_letters(std::int32_t column) {
    std::u16string letters;
    for (; column > 0; column = (column - 1) / 26)
        letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (column - 1) % 26));
    return letters;
}

std::u16string cell_name(const CellAddress& cell) {
    return column_letters(cell.column) + decimal(cell.row);
}

}  // namespace cli
