// The walk of "For Each", as the platform calls it.

#include "automation/enumerator.h"
#include "automation/error.h"
#include "support/com_fixture.h"

using namespace test;

namespace {

ComPtr<IEnumVARIANT> walk_over(std::initializer_list<const wchar_t*> texts) {
    std::vector<Variant> items;
    for (const wchar_t* text : texts)
        items.emplace_back(text);
    return automation::make_enumerator(std::move(items)).as<IEnumVARIANT>();
}

// What the next so many are, and whether there were as many.
std::wstring next(const ComPtr<IEnumVARIANT>& walk, ULONG count) {
    std::vector<Variant> items(count + 1);
    ULONG fetched = 77;
    const HRESULT code = walk->Next(count, items.data(), &fetched);
    std::wstring text = code == S_OK ? L"" : code == S_FALSE ? L"short " : L"failed ";
    for (ULONG i = 0; i < fetched; ++i)
        text += items[i].text();
    return text;
}

}  // namespace

TEST_CASE("a walk gives what is left, skips, begins again, and is cloned where it stands") {
    const auto walk = walk_over({L"a", L"b", L"c", L"d"});
    CHECK(next(walk, 0) == L"");
    CHECK(next(walk, 2) == L"ab");
    ComPtr<IEnumVARIANT> clone;
    CHECK(walk->Clone(clone.put()) == S_OK);
    CHECK(next(walk, 3) == L"short cd");
    CHECK(next(walk, 1) == L"short ");
    CHECK(walk->Skip(0) == S_OK);
    CHECK(walk->Skip(1) == S_FALSE);
    CHECK(walk->Reset() == S_OK);
    CHECK(walk->Skip(3) == S_OK);
    CHECK(next(walk, 1) == L"d");
    CHECK(next(clone, 1) == L"c");
    CHECK(clone->Skip(0xFFFFFFFF) == S_FALSE);
    CHECK(next(clone, 1) == L"short ");
}

TEST_CASE("a walk takes one item without a place for the number, and says what is missing") {
    const auto walk = walk_over({L"a", L"b"});
    Variant items[2];
    CHECK(walk->Next(1, items, nullptr) == S_OK);
    CHECK(items[0].text() == L"a");
    CHECK(walk->Next(2, items, nullptr) == E_POINTER);
    ULONG fetched = 77;
    CHECK(walk->Next(1, nullptr, &fetched) == E_POINTER);
    CHECK(fetched == 0);
    CHECK(walk->Clone(nullptr) == E_POINTER);
    CHECK(next(walk, 1) == L"b");
}

// A type that there is not cannot be copied; what was copied before it is given back.
TEST_CASE("a walk that fails gives nothing and stays where it is") {
    std::vector<Variant> items;
    ComPtr<IStream> shared;
    CreateStreamOnHGlobal(nullptr, TRUE, shared.put());
    items.emplace_back();
    items[0].vt = VT_UNKNOWN;
    items[0].punkVal = ComPtr<IUnknown>(shared).detach();
    items.emplace_back();
    items[1].vt = 0x0FFF;
    const auto walk = automation::make_enumerator(std::move(items)).as<IEnumVARIANT>();
    const ULONG references = reference_count(shared.get());
    Variant given[2];
    ULONG fetched = 77;
    CHECK(FAILED(walk->Next(2, given, &fetched)));
    CHECK(fetched == 0);
    CHECK(reference_count(shared.get()) == references);
    CHECK(walk->Next(1, given, &fetched) == S_OK);
    CHECK(given[0].object().get() == shared.as<IUnknown>().get());
}
