// The class table, the type library and the early-bound contract agree.

#include <cstring>
#include <set>
#include <vector>

#include "automation/conversion.h"
#include "automation/dom.h"
#include "automation/module.h"
#include "support/com_fixture.h"

using namespace test;

namespace {

ComPtr<ITypeLib> type_library(const wchar_t* file = L"Tessera.dll") {
    ComPtr<ITypeLib> library;
    automation::check(LoadTypeLibEx(file, REGKIND_NONE, library.put()));
    return library;
}

std::wstring name_of(ITypeLib* library, INT index) {
    Bstr name;
    library->GetDocumentation(index, name.put(), nullptr, nullptr, nullptr);
    return name.str();
}

// The library of the type that a parameter or result refers to goes into the set.
void add_library(std::set<std::wstring>& names, ITypeInfo* info, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return add_library(names, info, *type.lptdesc);
    if (type.vt != VT_USERDEFINED) return;
    ComPtr<ITypeInfo> found;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    automation::check(info->GetRefTypeInfo(type.hreftype, found.put()));
    automation::check(found->GetContainingTypeLib(library.put(), &index));
    names.insert(name_of(library.get(), -1));
}

// The libraries whose types the members of a library's interfaces refer to.
std::set<std::wstring> referred_libraries(ITypeLib* library) {
    std::set<std::wstring> names;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        library->GetTypeInfo(i, info.put());
        FUNCDESC* member = nullptr;
        for (UINT m = 0; SUCCEEDED(info->GetFuncDesc(m, &member)); ++m) {
            add_library(names, info.get(), member->elemdescFunc.tdesc);
            for (SHORT p = 0; p < member->cParams; ++p)
                add_library(names, info.get(), member->lprgelemdescParam[p].tdesc);
            info->ReleaseFuncDesc(member);
        }
    }
    return names;
}

// The names of the types whose identifiers are not of the library's own range. Such a type would be
// registered as the library's and taken out with it.
std::wstring copied_types(ITypeLib* library) {
    std::wstring copied;
    TLIBATTR* own = nullptr;
    library->GetLibAttr(&own);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        library->GetTypeInfo(i, info.put());
        info->GetTypeAttr(&attributes);
        if (std::memcmp(&attributes->guid, &own->guid, sizeof(GUID) - 2) != 0)
            copied += name_of(library, static_cast<INT>(i)) + L' ';
        info->ReleaseTypeAttr(attributes);
    }
    library->ReleaseTLibAttr(own);
    return copied;
}

std::set<std::wstring> coclasses() {
    const auto library = type_library();
    std::set<std::wstring> names;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        TYPEKIND kind;
        library->GetTypeInfoType(i, &kind);
        if (kind != TKIND_COCLASS) continue;
        names.insert(name_of(library.get(), static_cast<INT>(i)));
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

TEST_CASE_FIXTURE(ComFixture, "all sixteen public classes of the type library are creatable") {
    CHECK(coclasses().size() == 16);
    for (const std::wstring& name : coclasses()) {
        CAPTURE(name);
        for (const wchar_t* version : {L"", L".1"}) {
            const std::wstring program_name = L"Tessera." + name + version;
            const auto object = create<IDispatch>(program_name.c_str());
            REQUIRE(object);
            CHECK(automation::type_name(Variant(object.get())).view() == name);
        }
    }
}

TEST_CASE_FIXTURE(ComFixture, "a type library holds its own types and refers to those of others") {
    using Names = std::set<std::wstring>;
    const auto contract = type_library(L"Kelos.tlb");
    CHECK(copied_types(contract.get()) == L"");
    CHECK(referred_libraries(contract.get()) == Names{L"Kelos", L"MSXML2", L"stdole"});
    const auto component = type_library();
    CHECK(copied_types(component.get()) == L"");
    CHECK(referred_libraries(component.get()) ==
          Names{L"Kelos", L"KelosTessera", L"MSXML2", L"stdole"});
    const auto kit = type_library(L"KelosHostKit.dll");
    CHECK(copied_types(kit.get()) == L"");
    CHECK(referred_libraries(kit.get()) == Names{L"Kelos", L"KelosHostKit", L"MSXML2", L"stdole"});

    // Without registration the manifests say where the contract's library is.
    TLIBATTR* attributes = nullptr;
    contract->GetLibAttr(&attributes);
    Bstr path;
    CHECK(QueryPathOfRegTypeLib(attributes->guid, 1, 0, 0, path.put()) == S_OK);
    contract->ReleaseTLibAttr(attributes);
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
