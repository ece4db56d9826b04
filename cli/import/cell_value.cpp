#include "cli/import/cell_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "automation/bstr.h"
#include "automation/conversion.h"
#include "cli/workbook/date_format.h"

namespace cli {
namespace {

using automation::as_u16;
using automation::as_wide;
using automation::Variant;
using Kind = CellContent::Kind;

constexpr double from_1900_to_1904 = 1462;

std::u16string with_line_feeds(std::u16string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool is_pair = text[i] == u'\r' && text.substr(i + 1, 1) == u"\n";
        if (!is_pair) result += text[i] == u'\r' ? u'\n' : text[i];
    }
    return result;
}

bool is_close(double left, double right, bool are_dates) {
    constexpr double half_a_second = 0.5 / 86400;
    constexpr double of_15_digits = 1e-14;
    const double greatest = std::max(std::abs(left), std::abs(right));
    return std::abs(left - right) <= (are_dates ? half_a_second : greatest * of_15_digits);
}

std::u16string shown_number(double number) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return std::u16string(digits, end);
}

std::u16string shown_date(double serial) {
    const auto date = automation_date(serial, false);
    SYSTEMTIME time{};
    if (!date || !VariantTimeToSystemTime(*date, &time)) return shown_number(serial);
    wchar_t text[32];
    const bool has_time = time.wHour != 0 || time.wMinute != 0 || time.wSecond != 0;
    const int length = swprintf(
        text, std::size(text), has_time ? L"%04u-%02u-%02uT%02u:%02u:%02u" : L"%04u-%02u-%02u",
        time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
    return std::u16string(text, text + std::max(length, 0));
}

EnteredValue problem(const CellContent& entered, const std::wstring& what) {
    return {{}, L"\"" + std::wstring(as_wide(shown(entered))) + L"\" is " + what};
}

// ---- One function for each type of value -----------------------------------------------------

EnteredValue as_list_value(const CellContent& entered, const ContentRecord& record) {
    const std::u16string text = shown(entered);
    for (const ListItem& item : record.items) {
        const std::u16string& display =
            item.display.text.empty() ? item.value.text : item.display.text;
        if (display != text) continue;
        if (const auto number =
                item.value.is_number() ? archived_number(item.value.text) : std::nullopt)
            return {Variant(*number), {}};
        if (item.value.type == u"Boolean") return {Variant(item.value.text != u"0"), {}};
        return {Variant(as_wide(item.value.text)), {}};
    }
    std::wstring texts;
    for (const std::u16string& known : list_texts(record))
        texts.append(texts.empty() ? L"\"" : L", \"").append(as_wide(known)).append(L"\"");
    return problem(entered, L"none of the list: " + texts);
}

EnteredValue as_number(const CellContent& entered, std::u16string_view type) {
    if (entered.kind == Kind::text) return problem(entered, L"a text, not a number");
    if (entered.kind == Kind::date) return problem(entered, L"a date, not a number");
    if (entered.kind == Kind::boolean) return problem(entered, L"yes or no, not a number");
    const bool is_whole = type == u"Byte" || type == u"Integer" || type == u"Long";
    if (is_whole && std::trunc(entered.number) != entered.number)
        return problem(entered, L"no whole number");
    return {Variant(entered.number), {}};
}

EnteredValue as_boolean(const CellContent& entered) {
    const bool is_flag = entered.kind == Kind::boolean ||
                         (entered.kind == Kind::number &&
                          (entered.number == 0 || entered.number == 1 || entered.number == -1));
    if (!is_flag) return problem(entered, L"neither TRUE nor FALSE");
    return {Variant(entered.number != 0), {}};
}

// A text is a date in the one form that everybody reads alike.
std::optional<double> date_in(std::u16string_view text) {
    const std::wstring copy(as_wide(text));
    SYSTEMTIME time{};
    int length = 0;
    const int fields =
        swscanf(copy.c_str(), L"%4hu-%2hu-%2hu%nT%2hu:%2hu:%2hu%n", &time.wYear, &time.wMonth,
                &time.wDay, &length, &time.wHour, &time.wMinute, &time.wSecond, &length);
    double date = 0;
    const bool is_whole =
        (fields == 3 || fields == 6) && static_cast<std::size_t>(length) == copy.size();
    if (!is_whole || !SystemTimeToVariantTime(&time, &date)) return {};
    return date;
}

EnteredValue as_date(const CellContent& entered) {
    std::optional<double> date;
    if (entered.kind == Kind::text)
        date = date_in(entered.text);
    else if (entered.kind != Kind::boolean)
        date = automation_date(entered.number, false);
    if (!date) return problem(entered, L"no date");
    EnteredValue result;
    result.value.vt = VT_DATE;
    result.value.date = *date;
    return result;
}

// Numbers as users of the record's language write them.
EnteredValue as_text(const CellContent& entered, const ContentRecord& record) {
    if (record.all_values_numeric && entered.kind == Kind::text && !archived_number(entered.text))
        return problem(entered, L"no number, which all values here must be");
    if (entered.kind != Kind::number)
        return {Variant(as_wide(with_line_feeds(shown(entered)))), {}};
    wchar_t separator[8] = L".";
    GetLocaleInfoW(static_cast<LCID>(record.lcid), LOCALE_SDECIMAL | LOCALE_NOUSEROVERRIDE,
                   separator, static_cast<int>(std::size(separator)));
    std::u16string text = shown(entered);
    std::ranges::replace(text, u'.', static_cast<char16_t>(separator[0]));
    return {Variant(as_wide(text)), {}};
}

// Where there was no value, what was entered says the type.
EnteredValue as_entered(const CellContent& entered) {
    switch (entered.kind) {
        case Kind::number:
            return {Variant(entered.number), {}};
        case Kind::boolean:
            return as_boolean(entered);
        case Kind::date:
            return as_date(entered);
        case Kind::blank:
        case Kind::text:
            break;
    }
    return {Variant(as_wide(entered.text)), {}};
}

}  // namespace

CellContent content_of(const SheetCell& cell, bool from_1904) {
    switch (cell.kind) {
        case SheetCell::Kind::blank:
            break;
        case SheetCell::Kind::number:
            if (!cell.is_date) return {Kind::number, cell.number, {}};
            return {Kind::date, cell.number + (from_1904 ? from_1900_to_1904 : 0), {}};
        case SheetCell::Kind::boolean:
            return {Kind::boolean, cell.number, {}};
        case SheetCell::Kind::text:
        case SheetCell::Kind::error:
            return {Kind::text, 0, cell.text};
    }
    return {};
}

bool is_same_content(const CellContent& left, const CellContent& right) {
    if (left.kind == Kind::blank || right.kind == Kind::blank) return left.kind == right.kind;
    if (left.kind == Kind::text || right.kind == Kind::text)
        return with_line_feeds(shown(left)) == with_line_feeds(shown(right));
    return is_close(left.number, right.number, left.kind == Kind::date || right.kind == Kind::date);
}

std::u16string shown(const CellContent& content) {
    switch (content.kind) {
        case Kind::blank:
            break;
        case Kind::number:
            return shown_number(content.number);
        case Kind::boolean:
            return content.number != 0 ? u"TRUE" : u"FALSE";
        case Kind::date:
            return shown_date(content.number);
        case Kind::text:
            return content.text;
    }
    return {};
}

EnteredValue entered_value(const CellContent& entered, const ContentRecord& record) {
    const ArchivedValue& there = record.host_value();
    if (record.is_value_list()) return as_list_value(entered, record);
    if (there.is_number()) return as_number(entered, there.type);
    if (there.type == u"Boolean") return as_boolean(entered);
    if (there.type == u"Date") return as_date(entered);
    if (there.is_text()) return as_text(entered, record);
    return as_entered(entered);
}

}  // namespace cli
