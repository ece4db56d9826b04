#include "cli/workbook/cell_content.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <functional>
#include <tuple>

#include "automation/bstr.h"
#include "automation/windows_headers.h"
#include "host/known_properties.h"

namespace cli {
namespace {

using Kind = CellContent::Kind;

// Serial numbers of workbooks and of automation are the same from 1 March 1900 on. Before it, those
// of workbooks are one less, for a 29 February 1900 that was none.
std::optional<double> date_serial(const std::u16string& text) {
    constexpr double first_common = 61;
    const automation::Bstr archived(text);
    DATE date = 0;
    if (FAILED(VarDateFromStr(archived.get(), LOCALE_USER_DEFAULT, 0, &date))) return {};
    if (date >= first_common) return date;
    const bool is_time = date >= 0 && date < 1;
    if (is_time) return date;
    if (date < 2) return {};
    return date - 1;
}

char16_t decimal_separator(long lcid) {
    wchar_t separator[8] = L".";
    GetLocaleInfoW(lcid == 0 ? LOCALE_USER_DEFAULT : static_cast<LCID>(lcid), LOCALE_SDECIMAL,
                   separator, static_cast<int>(std::size(separator)));
    return static_cast<char16_t>(separator[0]);
}

// Only what is a number without a doubt: the other locale's separator may group digits.
std::optional<double> number_in_locale(const std::u16string& text, long lcid) {
    const std::size_t separator = text.find_first_of(u".,");
    if (separator != text.npos && text[separator] != decimal_separator(lcid)) return {};
    return archived_number(text);
}

CellContent as_text(const std::u16string& text) {
    if (text.empty()) return {};
    return {Kind::text, 0, text};
}

CellContent as_number(std::optional<double> number, const std::u16string& text) {
    return number ? CellContent{Kind::number, *number, {}} : as_text(text);
}

const std::u16string& display_of(const ListItem& item) {
    return item.display.text.empty() ? item.value.text : item.display.text;
}

std::u16string list_text(const ContentRecord& record) {
    const ArchivedValue& value = record.cell_value();
    const auto current = std::ranges::find_if(
        record.items, [&](const ListItem& item) { return item.value.text == value.text; });
    return current == record.items.end() ? value.text : display_of(*current);
}

bool can_be_written(const ContentRecord& record) {
    const std::u16string& name = record.property.name;
    const kelos::KnownProperty* known = nullptr;
    if (record.property_kind() == PropertyKind::numbered)
        known =
            kelos::find_property(std::wcstol(automation::Bstr(name).str().c_str(), nullptr, 10));
    else
        known = kelos::find_property_if([&](std::u16string_view candidate) {
            return CompareStringOrdinal(automation::as_wide(candidate).data(),
                                        static_cast<int>(candidate.size()),
                                        automation::as_wide(name).data(),
                                        static_cast<int>(name.size()), TRUE) == CSTR_EQUAL;
        });
    return !known || !known->set_name.empty();
}

}  // namespace

CellContent cell_content(const ContentRecord& record) {
    const ArchivedValue& value = record.cell_value();
    if (!value.holds_value()) return {};
    if (record.is_value_list()) return as_text(list_text(record));
    if (value.is_number()) return as_number(archived_number(value.text), value.text);
    if (value.type == u"Boolean")
        return {Kind::boolean, value.text == u"0" || value.text == u"False" ? 0.0 : 1.0, {}};
    if (value.type == u"Date") {
        const auto serial = date_serial(value.text);
        return serial ? CellContent{Kind::date, *serial, {}} : as_text(value.text);
    }
    if (record.all_values_numeric)
        return as_number(number_in_locale(value.text, record.lcid), value.text);
    return as_text(value.text);
}

std::vector<std::u16string> list_texts(const ContentRecord& record) {
    if (!record.is_value_list()) return {};
    struct Entry {
        std::optional<double> number;
        std::u16string text;
    };
    std::vector<Entry> entries;
    for (const ListItem& item : record.items)
        entries.push_back({item.value.is_number() ? archived_number(item.value.text) : std::nullopt,
                           display_of(item)});
    std::ranges::sort(entries, std::less<>(),
                      [](const Entry& entry) { return std::tie(entry.number, entry.text); });
    std::vector<std::u16string> texts;
    for (Entry& entry : entries)
        if (!entry.text.empty()) texts.push_back(std::move(entry.text));
    return texts;
}

CellRole cell_role(const ContentRecord& record) {
    if (record.property_kind() == PropertyKind::none) return CellRole::heading;
    return record.comes_in() && can_be_written(record) ? CellRole::input : CellRole::output;
}

std::optional<double> archived_number(std::u16string_view text) {
    std::string digits;
    for (const char16_t letter : text)
        digits += letter == u',' ? '.' : letter < 0x80 ? static_cast<char>(letter) : '?';
    std::string_view rest = digits;
    if (rest.starts_with('+')) rest.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc() || end != rest.data() + rest.size() || !std::isfinite(number))
        return {};
    return number;
}

}  // namespace cli
