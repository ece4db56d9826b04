// Typed values: how the project file spells them and how a user reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "hostkit/model/texts.h"

namespace hostkit {

enum class ValueType : VARTYPE {
    text = VT_BSTR,
    number = VT_R8,
    integer = VT_I4,
    boolean = VT_BOOL,
    date = VT_DATE,
    currency = VT_CY
};

// "string", "double", "long", "boolean", "date", "currency".
std::optional<ValueType> value_type_of(std::wstring_view name) noexcept;

// The value that the project file spells: numbers with a point, "true" and "false", dates as
// 2026-03-31 or 2026-03-31T14:30:00. Nothing when it is none of the type.
std::optional<automation::Variant> read_value(ValueType type, std::wstring_view text);

// How the project file spells a value that is not Empty.
std::wstring written_value(const VARIANT& value);

// So many a user reads at most.
inline constexpr int most_decimals = 99;

// What a user reads: in the given locale's form, numbers with the given decimals (negative: as many
// digits as the number has). The platform's own form of the locale, not the user's settings.
automation::Bstr display_text(const VARIANT& value, LCID locale, int decimals);

struct ListItem {
    automation::Variant value;
    LocalText text;
};

// The values that an attribute may have.
struct ValueList {
    std::wstring name;
    long presentation = 0;
    std::vector<ListItem> items;

    const ListItem* find(const VARIANT& value) const;
};

}  // namespace hostkit
