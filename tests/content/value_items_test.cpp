// Through the DLL: the list of values and its items.

#include "automation/object.h"
#include "support/transcript.h"

using namespace test;

namespace {

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

TEST_CASE_FIXTURE(ComFixture, "a list takes items at positions, and gives them back") {
    check_transcript(
        LR"(
    Set L = Make("Tessera.ValueItems")
    Function Item(Text) : Set Item = Make("Tessera.ValueItem") : Item.Value(0) = Text : End Function
    Function Add(Text, Index) : Add = L.Add(Item(Text), Index) : End Function
    Function Values() : For N = 1 To L.Count : Values = Values & L.Item(N).Value(0) : Next : _
        End Function
    ' The empty list takes every position.
    ? Add("a", 5) -> 1
    ? Add("b", -1) -> 2
    ? Add("c", 3) -> 3
    ? Add("d", 2) -> 2
    ? Add("e", 0) -> 1
    ? Add("f", -2) -> 1
    ? Add("g", 6) -> 6
    ? Values -> feadbgc
    ? L.Item(-1) -> Nothing
    ? L.Item(0) -> Nothing
    ? L.Item(8) -> Nothing
    ? L.Add(Nothing, 7) -> 7
    ' What reads as a number is a position.
    ? L.Remove("2").Value(0) -> e
    ? L.Remove(2.5).Value(0) -> a
    ? L.Remove(" 1 ").Value(0) -> f
    ? L.Remove(True) -> Nothing
    ? L.Remove(Empty) -> Nothing
    ? L.Remove("x") -> Nothing
    ? L.Remove(99) -> Nothing
    ? Values -> dbgc
    ' An item is removed at the first place that holds it.
    Set Twice = Item("x")
    ? L.Add(Twice, 2) -> 2
    ? L.Add(Twice) -> 6
    ? L.Remove(Twice) Is Twice -> True
    ? L.Remove(Item("x")) -> Nothing
    ? L.Remove(L) -> Nothing
    ? L.Remove(Nothing) -> Nothing
    ? Values -> dbgcx
    ' The display text is given in host form, the value as it is.
    Set Added = L.AddNew("1" & vbCrLf & "2", "a" & vbCrLf & "b", 1031)
    ? Added Is L.Item(6) -> True
    ? Added.LCID -> 1031
    ? Added.Value(0) = "1" & vbCrLf & "2" -> True
    ? Added.DisplayValue(0) = "a" & vbLf & "b" -> True
    ? L.AddNew(1, 2, 0, 0, 0, 1) Is L.Item(1) -> True
    )",
        {});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ComFixture,
                  "somebody else's item is refused, as is a number beyond all positions") {
    const auto items = create<ITesseraValueItems>(L"Tessera.ValueItems");
    const ComPtr<ITesseraValueItem> foreign = automation::make<ForeignItem>()->main_pointer();
    CHECK(get(items, &ITesseraValueItems::Add, foreign.get(), 7L) == 7);
    CHECK(error_code(1) == DISP_E_TYPEMISMATCH);
    CHECK_FALSE(get(items, &ITesseraValueItems::Remove, static_cast<VARIANT>(Variant(1e10))));
    CHECK(error_code(2) == DISP_E_OVERFLOW);
    CHECK(get(items, &ITesseraValueItems::get_Count) == 0);
}

TEST_CASE_FIXTURE(ComFixture,
                  "a list is walked as it was when the walk began, and called with a position") {
    check_transcript(
        LR"(
    Set L = Make("Tessera.ValueItems")
    Function Values() : For Each Item In L : Values = Values & Item.Value(0) : Next : End Function
    Function Emptied() : For Each Item In L : L.Remove 1 : L.AddNew "n", "" : _
        Emptied = Emptied & Item.Value(0) : Next : End Function
    ? Values -> Empty
    L.AddNew "a", ""
    L.AddNew "b", ""
    L.AddNew "c", ""
    ? Values -> abc
    ? L(2).Value(0) -> b
    ? L(4) -> Nothing
    ? Emptied -> abc
    ? Values -> nnn
    )",
        {});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ComFixture, "an item keeps objects by reference, what references refer to") {
    const auto items = create<ITesseraValueItems>(L"Tessera.ValueItems");
    const auto holder = create<ITesseraValueItem>(L"Tessera.ValueItem");
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
    CHECK(get(holder, &ITesseraValueItem::get_Value, uccDefault).text() == L"later");
    CHECK(test::reference_count(items.get()) == before + 1);
}

TEST_CASE_FIXTURE(ComFixture, "a new locale re-reads the texts under its code page") {
    const auto reread = [](short from, short to, const wchar_t* text) {
        const auto holder = create<ITesseraValueItem>(L"Tessera.ValueItem");
        call(holder, &ITesseraValueItem::put_LCID, from);
        call(holder, &ITesseraValueItem::put_Value, uccDefault,
             static_cast<VARIANT>(Variant(text)));
        call(holder, &ITesseraValueItem::put_LCID, to);
        return std::wstring(get(holder, &ITesseraValueItem::get_Value, uccDefault).text());
    };
    CHECK(reread(0, 1049, L"\xE4\r\n") == L"\xE4\n");       // from 0: line breaks only
    CHECK(reread(1031, 1049, L"\xE4") == L"\x0434");        // the byte 0xE4, read as Cyrillic
    CHECK(reread(1049, 0, L"\x0434") == L"\xE4");           // the system's code page
    CHECK(reread(1049, -1, L"\x0434") == L"\xE4");          // as well
    CHECK(reread(1031, 1041, L"\x0192\x41") == L"\x30A2");  // two bytes of one character
    CHECK(reread(1041, 1031, L"\x30A2") == L"\x0192\x41");
    CHECK(reread(1031, 1033, L"\x0100") == L"A");  // the best fit
    CHECK(error_count() == 0);
    CHECK(reread(1031, 0x7FFF, L"\xE4") == L"\xE4");  // no such locale
    CHECK(error(1) == L"Tessera.GFunctions|Friend Function 'GetOfficeFromOffice'");
}
