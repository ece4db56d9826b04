// Through the DLL: the list of values and its items.

#include "automation/object.h"
#include "support/com_fixture.h"

using namespace test;

namespace {

class ItemsFixture : public ComFixture {
  public:
    ComPtr<ITesseraValueItems> items = create<ITesseraValueItems>(L"Tessera.ValueItems");

    static ComPtr<ITesseraValueItem> item(const wchar_t* value) {
        auto result = create<ITesseraValueItem>(L"Tessera.ValueItem");
        call(result, &ITesseraValueItem::put_Value, uccDefault,
             static_cast<VARIANT>(Variant(value)));
        return result;
    }
    long add(const wchar_t* value, long index) {
        return get(items, &ITesseraValueItems::Add, item(value).get(), index);
    }
    long count() { return get(items, &ITesseraValueItems::get_Count); }
    // The items' values, one after the other.
    std::wstring values() {
        std::wstring result;
        for (long i = 1; i <= count(); ++i)
            result += value_of(get(items, &ITesseraValueItems::get_Item, i));
        return result;
    }
    static std::wstring value_of(const ComPtr<ITesseraValueItem>& item) {
        return std::wstring(get(item, &ITesseraValueItem::get_Value, uccDefault).text());
    }
    ComPtr<ITesseraValueItem> remove(const Variant& ident) {
        return get(items, &ITesseraValueItems::Remove, static_cast<VARIANT>(ident));
    }
};

std::wstring text(const Variant& value) {
    return std::wstring(value.text());
}

// Somebody else's value item.
class ForeignItem : public automation::Object<ForeignItem, ITesseraValueItem> {
  public:
    STDMETHODIMP get_DisplayValue(uceDataType, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_DisplayValue(uceDataType, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP putref_DisplayValue(uceDataType, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP get_Value(uceDataType, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Value(uceDataType, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP putref_Value(uceDataType, VARIANT) override { return E_NOTIMPL; }
    STDMETHODIMP get_LCID(short*) override { return E_NOTIMPL; }
    STDMETHODIMP put_LCID(short) override { return E_NOTIMPL; }
};

}  // namespace

TEST_CASE_FIXTURE(ItemsFixture, "items are inserted before a position or appended") {
    CHECK(add(L"a", 5) == 1);  // the empty list takes every position
    CHECK(add(L"b", -1) == 2);
    CHECK(add(L"c", 3) == 3);  // beyond the end
    CHECK(add(L"d", 2) == 2);
    CHECK(add(L"e", 0) == 1);
    CHECK(add(L"f", -2) == 1);
    CHECK(add(L"g", 6) == 6);
    CHECK(values() == L"feadbgc");
    for (const long position : {-1L, 0L, 8L})
        CHECK_FALSE(get(items, &ITesseraValueItems::get_Item, position));
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ItemsFixture, "nothing is not inserted, and somebody else's item is refused") {
    CHECK(get(items, &ITesseraValueItems::Add, static_cast<ITesseraValueItem*>(nullptr), 7L) == 7);
    CHECK(error_count() == 0);
    const ComPtr<ITesseraValueItem> foreign = automation::make<ForeignItem>()->main_pointer();
    CHECK(get(items, &ITesseraValueItems::Add, foreign.get(), 7L) == 7);
    CHECK(error(1) == L"Tessera.ValueItems|Public Function 'Add'");
    CHECK(error_code(1) == DISP_E_TYPEMISMATCH);
    CHECK(count() == 0);
}

TEST_CASE_FIXTURE(ItemsFixture,
                  "items are removed by position, in every form that reads as a number") {
    for (const wchar_t* value : {L"a", L"b", L"c", L"d", L"e", L"f"})
        add(value, -1);
    CHECK(value_of(remove(Variant(L"2"))) == L"b");
    CHECK(value_of(remove(Variant(2.5))) == L"c");  // half to even
    CHECK(value_of(remove(Variant(L" 1 "))) == L"a");
    CHECK_FALSE(remove(Variant(true)));  // -1
    CHECK_FALSE(remove(Variant()));      // 0
    CHECK_FALSE(remove(Variant(L"x")));
    CHECK_FALSE(remove(Variant(99L)));
    CHECK(values() == L"def");
    CHECK(error_count() == 0);
    CHECK_FALSE(remove(Variant(1e10)));
    CHECK(error(1) == L"Tessera.ValueItems|Public Function 'Remove'");
    CHECK(error_code(1) == DISP_E_OVERFLOW);
}

TEST_CASE_FIXTURE(ItemsFixture, "an item is removed by itself, at the first place that holds it") {
    const auto twice = item(L"x");
    add(L"a", -1);
    get(items, &ITesseraValueItems::Add, twice.get(), -1L);
    add(L"b", -1);
    get(items, &ITesseraValueItems::Add, twice.get(), -1L);
    CHECK(remove(Variant(twice.get())) == twice);
    CHECK(values() == L"abx");
    CHECK_FALSE(remove(Variant(item(L"x").get())));  // equal, but not the same
    CHECK_FALSE(remove(Variant(items.get())));
    CHECK_FALSE(remove(Variant(static_cast<IDispatch*>(nullptr))));
    CHECK(values() == L"abx");
}

TEST_CASE_FIXTURE(ItemsFixture,
                  "a new item takes the display text in host form, the value as it is") {
    const auto added =
        get(items, &ITesseraValueItems::AddNew, static_cast<VARIANT>(Variant(L"1\r\n2")),
            static_cast<VARIANT>(Variant(L"a\r\nb")), short{1031}, uccDefault, uccVBString, -1L);
    CHECK(get(added, &ITesseraValueItem::get_LCID) == 1031);
    CHECK(text(get(added, &ITesseraValueItem::get_Value, uccDefault)) == L"1\r\n2");
    CHECK(text(get(added, &ITesseraValueItem::get_DisplayValue, uccDefault)) == L"a\nb");
    CHECK(text(get(added, &ITesseraValueItem::get_DisplayValue, uccMSOfficeString)) == L"a\nb");
    CHECK(text(get(added, &ITesseraValueItem::get_DisplayValue, uccVBString)) == L"a\r\nb");
    CHECK(count() == 1);
}

TEST_CASE_FIXTURE(ItemsFixture, "an item keeps objects by reference, what references refer to") {
    const auto holder = item(L"");
    const ULONG before = test::reference_count(items.get());
    const Variant object(items.get());
    call(holder, &ITesseraValueItem::putref_Value, uccVBString, static_cast<VARIANT>(object));
    CHECK(test::reference_count(items.get()) == before + 2);
    CHECK(automation::same_object(
        get(holder, &ITesseraValueItem::get_Value, uccVBString).object().get(), items.get()));

    VARIANT inner = Variant(L"later").detach();
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &inner;
    call(holder, &ITesseraValueItem::put_Value, uccDefault, reference);
    VariantClear(&inner);
    CHECK(value_of(holder) == L"later");
    CHECK(test::reference_count(items.get()) == before + 1);
}

TEST_CASE_FIXTURE(ItemsFixture, "a new locale re-reads the texts under its code page") {
    const std::tuple<short, short, const wchar_t*, const wchar_t*> rows[] = {
        {0, 1049, L"\xE4\r\n", L"\xE4\n"},       // from 0: line breaks only
        {1031, 1049, L"\xE4", L"\x0434"},        // the byte 0xE4, read as Cyrillic
        {1049, 0, L"\x0434", L"\xE4"},           // the system's code page
        {1049, -1, L"\x0434", L"\xE4"},          // as well
        {1031, 1041, L"\x0192\x41", L"\x30A2"},  // two bytes of one character
        {1041, 1031, L"\x30A2", L"\x0192\x41"}, {1031, 1033, L"\x0100", L"A"},  // the best fit
    };
    for (const auto& [from, to, text, expected] : rows) {
        const auto holder = item(text);
        call(holder, &ITesseraValueItem::put_LCID, from);
        call(holder, &ITesseraValueItem::put_LCID, to);
        CHECK(value_of(holder) == expected);
    }
    CHECK(error_count() == 0);
    const auto holder = item(L"\xE4");
    call(holder, &ITesseraValueItem::put_LCID, short{1031});
    call(holder, &ITesseraValueItem::put_LCID, short{0x7FFF});  // no such locale
    CHECK(error(1) == L"Tessera.GFunctions|Friend Function 'GetOfficeFromOffice'");
    CHECK(value_of(holder) == L"\xE4");
}
