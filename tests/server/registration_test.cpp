// The class table, the type library and the early-bound contract agree.

#include <set>

#include "automation/conversion.h"
#include "automation/dom.h"
#include "automation/module.h"
#include "support/com_fixture.h"

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using test::ComFixture;
using test::create;

namespace {

constexpr const wchar_t* class_names[] = {
    L"Tessera",   L"KelosObject", L"Property",           L"Value",
    L"Document",  L"ValueItems",  L"ValueItem",          L"SCGlobal",
    L"VexScript", L"HQuery",      L"QContent",           L"GFunctions",
    L"Progress",  L"XMLOptions",  L"OptionMappingTable", L"SpecOptToCollConverter",
};

ComPtr<ITypeLib> type_library() {
    ComPtr<ITypeLib> library;
    automation::check(LoadTypeLibEx(L"Tessera.dll", REGKIND_NONE, library.put()));
    return library;
}

std::set<std::wstring> coclasses() {
    const auto library = type_library();
    std::set<std::wstring> names;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind;
        library->GetTypeInfoType(i, &kind);
        if (kind != TKIND_COCLASS) continue;
        Bstr name;
        library->GetDocumentation(static_cast<INT>(i), name.put(), nullptr, nullptr, nullptr);
        names.insert(name.str());
    }
    return names;
}

HRESULT invoke_named(IDispatch* object, const wchar_t* member, std::vector<const wchar_t*> names,
                     std::vector<Variant> values, Variant& result) {
    std::vector<LPOLESTR> all{const_cast<wchar_t*>(member)};
    for (const wchar_t* name : names)
        all.push_back(const_cast<wchar_t*>(name));
    std::vector<DISPID> ids(all.size());
    const HRESULT found = object->GetIDsOfNames(IID_NULL, all.data(), static_cast<UINT>(all.size()),
                                                LOCALE_USER_DEFAULT, ids.data());
    if (FAILED(found)) return found;
    DISPPARAMS parameters{values.data(), ids.data() + 1, static_cast<UINT>(values.size()),
                          static_cast<UINT>(names.size())};
    return object->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                          result.put(), nullptr, nullptr);
}

}  // namespace

TEST_CASE_FIXTURE(ComFixture, "all sixteen public classes are in the type library and creatable") {
    std::set<std::wstring> expected(std::begin(class_names), std::end(class_names));
    CHECK(coclasses() == expected);
    for (const std::wstring name : class_names) {
        CAPTURE(name);
        for (const wchar_t* version : {L"", L".1"}) {
            const std::wstring program_name = L"Tessera." + name + version;
            const auto object = create<IDispatch>(program_name.c_str());
            REQUIRE(object);
            CHECK(automation::type_name(Variant(object.get())).view() == name);
        }
    }
}

TEST_CASE_FIXTURE(ComFixture, "the library says what the product is") {
    Bstr name;
    Bstr help;
    type_library()->GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr);
    CHECK(name.view() == L"KelosTessera");
    CHECK(help.view() == L"Kelos Tessera (Import/Export)");
}

TEST_CASE_FIXTURE(ComFixture, "a class factory makes no aggregates and no unknown classes") {
    const HMODULE dll = GetModuleHandleW(L"Tessera.dll");
    REQUIRE(dll);
    const auto get_class_object =
        reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>(
            reinterpret_cast<void*>(GetProcAddress(dll, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    CHECK(get_class_object(__uuidof(::Tessera), IID_IClassFactory,
                           reinterpret_cast<void**>(factory.put())) == S_OK);
    CHECK_FALSE(test::is_idle(L"Tessera.dll"));
    void* object = reinterpret_cast<void*>(0x10);
    CHECK(factory->CreateInstance(service().get(), IID_IUnknown, &object) == CLASS_E_NOAGGREGATION);
    CHECK(object == nullptr);
    CHECK(get_class_object(IID_IUnknown, IID_IClassFactory, &object) == CLASS_E_CLASSNOTAVAILABLE);
    factory->LockServer(TRUE);
    factory.reset();
    CHECK_FALSE(test::is_idle(L"Tessera.dll"));
    get_class_object(__uuidof(::Tessera), IID_IClassFactory,
                     reinterpret_cast<void**>(factory.put()));
    factory->LockServer(FALSE);
}

TEST_CASE_FIXTURE(ComFixture, "arguments may be named, in any order, and left out") {
    const auto items = create<IDispatch>(L"Tessera.ValueItems");
    Variant added;
    CHECK(invoke_named(items.get(), L"AddNew", {L"DisplayValue", L"Value"},
                       {Variant(L"a\r\nb"), Variant(L"1\r\n")}, added) == S_OK);
    const auto item = automation::object_as<ITesseraValueItem>(added);
    REQUIRE(item);
    CHECK(get(item, &ITesseraValueItem::get_DisplayValue, uccDefault).text() == L"a\nb");
    CHECK(get(item, &ITesseraValueItem::get_Value, uccDefault).text() == L"1\r\n");

    CHECK(invoke_named(items.get(), L"AddNew", {L"Index", L"LCID", L"DisplayValue", L"Value"},
                       {Variant(1L), Variant(L"1031"), Variant(L"b"), Variant(2L)}, added) == S_OK);
    const auto first = get(items.as<ITesseraValueItems>(), &ITesseraValueItems::get_Item, 1L);
    CHECK(get(first, &ITesseraValueItem::get_LCID) == 1031);
    added = Variant();
    CHECK(invoke_named(items.get(), L"AddNew", {L"NoSuchArgument"}, {Variant(1L)}, added) ==
          DISP_E_UNKNOWNNAME);
}

TEST_CASE_FIXTURE(ComFixture, "what cannot be coerced is refused before the member is called") {
    const auto items = create<IDispatch>(L"Tessera.ValueItems");
    Variant result;
    // The platform says "type mismatch"; Wine says that there is no such interface.
    CHECK(
        FAILED(invoke_named(items.get(), L"Add", {L"VItem"}, {Variant(service().get())}, result)));
    CHECK(invoke_named(items.get(), L"Add", {L"Index", L"VItem"},
                       {Variant(1e10), Variant(static_cast<IDispatch*>(nullptr))},
                       result) == DISP_E_OVERFLOW);
    CHECK(error_count() == 0);
}
