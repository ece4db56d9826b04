// Tests of internals: conversions, numeric test and type names of variants, and the owners of
// strings and variants.

#include "automation/conversion.h"
#include "automation/error.h"
#include "support/com_fixture.h"

using automation::Bstr;
using automation::Error;
using automation::Variant;

namespace {

Variant of_type(VARTYPE type, const wchar_t* text) {
    return automation::to_type(Variant(text), type);
}
Variant null() {
    Variant value;
    value.vt = VT_NULL;
    return value;
}
Variant array_of(VARTYPE type) {
    Variant value;
    value.vt = VT_ARRAY | type;
    value.parray = SafeArrayCreateVector(type, 0, 2);
    return value;
}
Variant reference_to(VARIANT& target) {
    Variant value;
    value.vt = VT_BYREF | VT_VARIANT;
    value.pvarVal = &target;
    return value;
}
Variant reference_to(long& target) {
    Variant value;
    value.vt = VT_BYREF | VT_I4;
    value.plVal = &target;
    return value;
}

// The converted value, or the error's code.
template <class Value>
struct Outcome {
    HRESULT code = S_OK;
    Value value{};
    bool is(HRESULT expected_code, const Value& expected) const {
        return code == expected_code && (FAILED(code) || value == expected);
    }
};
template <class Convert>
auto outcome(Convert&& convert) {
    Outcome<decltype(convert())> result;
    try {
        result.value = convert();
    } catch (const Error& error) {
        result.code = error.code();
    }
    return result;
}

}  // namespace

TEST_CASE("values convert, are numeric and have names as the platform's run-time says") {
    constexpr HRESULT no_null = CTL_E_INVALIDUSEOFNULL;
    constexpr HRESULT mismatch = DISP_E_TYPEMISMATCH;
    constexpr HRESULT no_object = DISP_E_BADVARTYPE;
    constexpr HRESULT overflow = DISP_E_OVERFLOW;
    long by_reference = 70000;
    Variant held(L" 12 ");
    Variant date;
    date.vt = VT_DATE;
    date.date = 1.0;
    Variant error;
    error.vt = VT_ERROR;
    Variant nothing(static_cast<IDispatch*>(nullptr));

    struct Case {
        Variant value;
        std::wstring text;
        HRESULT text_code;
        HRESULT long_code;
        long as_long;
        HRESULT short_code;
        HRESULT bool_code;
        bool as_bool;
        bool numeric;
        const wchar_t* name;
    };
    const Case cases[] = {
        {Variant(), L"", S_OK, S_OK, 0, S_OK, S_OK, false, true, L"Empty"},
        {null(), L"", no_null, no_null, 0, no_null, no_null, false, false, L"Null"},
        {Variant(true), L"True", S_OK, S_OK, -1, S_OK, S_OK, true, true, L"Boolean"},
        {Variant(false), L"False", S_OK, S_OK, 0, S_OK, S_OK, false, true, L"Boolean"},
        {Variant(std::int16_t{-7}), L"-7", S_OK, S_OK, -7, S_OK, S_OK, true, true, L"Integer"},
        {Variant(70000L), L"70000", S_OK, S_OK, 70000, overflow, S_OK, true, true, L"Long"},
        {Variant(2.5), L"2.5", S_OK, S_OK, 2, S_OK, S_OK, true, true, L"Double"},
        {Variant(3.5), L"3.5", S_OK, S_OK, 4, S_OK, S_OK, true, true, L"Double"},
        {Variant(-2.5), L"-2.5", S_OK, S_OK, -2, S_OK, S_OK, true, true, L"Double"},
        {Variant(1e10), L"10000000000", S_OK, overflow, 0, overflow, S_OK, true, true, L"Double"},
        {of_type(VT_CY, L"1.5"), L"1.5", S_OK, S_OK, 2, S_OK, S_OK, true, true, L"Currency"},
        {of_type(VT_DECIMAL, L"0.5"), L"0.5", S_OK, S_OK, 0, S_OK, S_OK, true, true, L"Decimal"},
        {of_type(VT_UI1, L"255"), L"255", S_OK, S_OK, 255, S_OK, S_OK, true, true, L"Byte"},
        {of_type(VT_R4, L"0.25"), L"0.25", S_OK, S_OK, 0, S_OK, S_OK, true, true, L"Single"},
        {date, L"12/31/1899", S_OK, S_OK, 1, S_OK, S_OK, true, false, L"Date"},
        {Variant(L""), L"", S_OK, mismatch, 0, mismatch, mismatch, false, false, L"String"},
        {Variant(L"1e2"), L"1e2", S_OK, S_OK, 100, S_OK, S_OK, true, true, L"String"},
        {Variant(L"True"), L"True", S_OK, mismatch, 0, mismatch, S_OK, true, false, L"String"},
        {Variant(std::wstring_view(L"1\0x", 3)), std::wstring(L"1\0x", 3), S_OK, S_OK, 1, S_OK,
         S_OK, true, false, L"String"},
        {error, L"", mismatch, mismatch, 0, mismatch, mismatch, false, false, L"Error"},
        {nothing, L"", no_object, no_object, 0, no_object, no_object, false, false, L"Nothing"},
        {array_of(VT_I4), L"", mismatch, mismatch, 0, mismatch, mismatch, false, false, L"Long()"},
        {reference_to(by_reference), L"70000", S_OK, S_OK, 70000, overflow, S_OK, true, true,
         L"Long"},
        {reference_to(held), L" 12 ", S_OK, S_OK, 12, S_OK, S_OK, true, true, L"String"},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        CAPTURE(i);
        CHECK(automation::type_name(c.value).view() == c.name);
        CHECK(automation::is_numeric(c.value) == c.numeric);
        CHECK(outcome([&] { return automation::to_text(c.value).str(); }).is(c.text_code, c.text));
        CHECK(outcome([&] { return automation::to_long(c.value); }).is(c.long_code, c.as_long));
        CHECK(outcome([&] {
                  return long{automation::to_short(c.value)};
              }).is(c.short_code, c.as_long));
        CHECK(outcome([&] { return automation::to_bool(c.value); }).is(c.bool_code, c.as_bool));
    }
}

TEST_CASE("strings and variants own what they hold, once") {
    Bstr text(std::wstring_view(L"a\0b", 3));
    CHECK(text.view().size() == 3);
    const Bstr copy = text;
    CHECK(copy.get() != text.get());
    CHECK(copy.view() == text.view());
    const BSTR before = text.get();
    Bstr moved = std::move(text);
    CHECK(moved.get() == before);
    CHECK(text.get() == nullptr);
    CHECK(text.empty());
    CHECK(text.view().empty());
    CHECK(*moved.put() == nullptr);
    CHECK(Bstr(L"").get() == nullptr);

    // Copies of strings and arrays are deep; a moved-from variant holds nothing.
    Variant array = array_of(VT_UI1);
    const Variant array_copy = array;
    CHECK(array_copy.parray != array.parray);
    Variant taken = std::move(array);
    CHECK(array.vt == VT_EMPTY);
    CHECK(taken.vt == (VT_ARRAY | VT_UI1));
    CHECK(taken.put()->vt == VT_EMPTY);

    // A value is never a reference, also behind two of them.
    long number = 3;
    Variant inner = reference_to(number);
    const Variant value = Variant::value_of(reference_to(inner));
    CHECK(value.vt == VT_I4);
    number = 4;
    CHECK(value.lVal == 3);

    CHECK(Variant(L"x").text() == L"x");
    CHECK(Variant(1L).text().empty());
    CHECK_FALSE(Variant(1L).object());
    CHECK(Variant::missing().vt == VT_ERROR);
    CHECK(Variant::missing().scode == DISP_E_PARAMNOTFOUND);
}
