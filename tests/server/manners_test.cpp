// What an automation object owes its clients besides its members: help texts, a type name, honest
// error information, named arguments.

#include <initializer_list>
#include <vector>

#include "automation/conversion.h"
#include "support/com_fixture.h"

using namespace test;

namespace {

std::wstring documented(ITypeLib* library, INT type) {
    Bstr name, help;
    automation::check(library->GetDocumentation(type, name.put(), help.put(), nullptr, nullptr));
    return help.empty() ? name.str() + L" " : L"";
}

// Names of members without a help text. A property's is that of the member which comes first.
std::wstring undocumented_members(ITypeLib* library, UINT type) {
    ComPtr<ITypeInfo> info;
    automation::check(library->GetTypeInfo(type, info.put()));
    std::wstring missing;
    FUNCDESC* member = nullptr;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &member)); ++i) {
        Bstr name, help;
        const bool is_own = (member->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0 || member->memid < 0;
        info->GetDocumentation(member->memid, name.put(), help.put(), nullptr, nullptr);
        info->ReleaseFuncDesc(member);
        if (is_own && help.empty()) missing += name.str() + L" ";
    }
    return missing;
}

// Calls a method with arguments by name.
struct Named {
    const wchar_t* name;
    Variant value;
};
HRESULT call_by_names(IDispatch* object, const wchar_t* method, std::vector<Named> arguments,
                      WORD kind = DISPATCH_METHOD) {
    std::vector<LPOLESTR> names{const_cast<LPOLESTR>(method)};
    std::vector<VARIANTARG> values;
    for (const Named& argument : arguments) {
        names.push_back(const_cast<LPOLESTR>(argument.name));
        values.push_back(argument.value);
    }
    std::vector<DISPID> ids(names.size());
    automation::check(object->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()),
                                            LOCALE_USER_DEFAULT, ids.data()));
    const auto count = static_cast<UINT>(values.size());
    DISPPARAMS parameters{values.data(), ids.data() + 1, count, count};
    Variant result;
    return object->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, &result,
                          nullptr, nullptr);
}

std::wstring type_name(IUnknown* object) {
    const auto dispatch = ComPtr<IUnknown>(object).as<IDispatch>();
    return std::wstring(automation::type_name(Variant(dispatch.get())).view());
}

}  // namespace

TEST_CASE("every library, type and member has a help text") {
    for (const wchar_t* file : {L"Kelos.tlb", L"Tessera.dll", L"KelosHostKit.dll"}) {
        CAPTURE(std::wstring(file));
        ComPtr<ITypeLib> library;
        automation::check(LoadTypeLibEx(file, REGKIND_NONE, library.put()));
        CHECK(documented(library.get(), -1) == L"");
        for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
            CHECK(documented(library.get(), static_cast<INT>(i)) == L"");
            CHECK(undocumented_members(library.get(), i) == L"");
        }
    }
}

TEST_CASE_FIXTURE(ProjectFixture, "an object's type name is its class") {
    for (const wchar_t* name : {L"Tessera", L"ValueItems", L"Document", L"Progress", L"XMLOptions"})
        CHECK(type_name(create<IUnknown>((L"Tessera." + std::wstring(name)).c_str()).get()) ==
              name);
    const auto pump = object(L"Anlage|Pumpe");
    const auto attributes = get(pump, &IKelosObject::get_Attributes);
    CHECK(type_name(kit.get()) == L"HostKit");
    CHECK(type_name(workset.get()) == L"HostKitWorkset");
    CHECK(type_name(document(L"Datenblatt").get()) == L"HostKitDocument");
    CHECK(type_name(pump.get()) == L"HostKitObject");
    CHECK(type_name(attributes.get()) == L"HostKitAttributes");
    CHECK(type_name(get(service(), &IHostKitService::get_Errors).get()) == L"HostKitErrors");
}

// Words may be asked for where they are left, and nowhere else: not of a window, and never those of
// an older error.
TEST_CASE_FIXTURE(ProjectFixture,
                  "an object supports error info for the interfaces that raise it") {
    const auto errors = get(service(), &IHostKitService::get_Errors);
    const auto support = errors.as<ISupportErrorInfo>();
    CHECK(support->InterfaceSupportsErrorInfo(__uuidof(IHostKitErrors)) == S_OK);
    CHECK(support->InterfaceSupportsErrorInfo(__uuidof(IHostKitMessages)) == S_FALSE);
    CHECK(create<ISupportErrorInfo>(L"Kelos.TextBox")
              ->InterfaceSupportsErrorInfo(__uuidof(IOleWindow)) == S_FALSE);

    const auto words = [] {
        ComPtr<IErrorInfo> info;
        Bstr text;
        if (GetErrorInfo(0, info.put()) == S_OK) info->GetDescription(text.put());
        return text.str();
    };
    ComPtr<IHostKitError> error;
    CHECK(errors->get_Item(7, error.put()) == DISP_E_BADINDEX);
    CHECK(words() == L"Subscript out of range");
    CHECK(errors->get_Item(7, error.put()) == DISP_E_BADINDEX);
    CHECK(errors->get_Count(nullptr) == E_POINTER);
    CHECK(words() == L"Invalid pointer");
    CHECK(errors->get_Item(7, error.put()) == DISP_E_BADINDEX);
    CHECK(create<ITesseraProgress>(L"Tessera.Progress")->get_Picture(nullptr) == E_POINTER);
    CHECK(words() == L"Invalid pointer");
}

TEST_CASE_FIXTURE(ComFixture, "arguments are given by name, in any order, and left out") {
    const auto items = create<ITesseraValueItems>(L"Tessera.ValueItems");
    const auto added = [&](std::vector<Named> arguments) {
        return call_by_names(items.get(), L"AddNew", std::move(arguments));
    };
    CHECK(added({{L"Value", Variant(1L)}, {L"DisplayValue", Variant(L"one")}}) == S_OK);
    CHECK(added({{L"Index", Variant(1L)},
                 {L"LCID", Variant(1031L)},
                 {L"displayvalue", Variant(L"zero")},
                 {L"Value", Variant(0L)}}) == S_OK);
    const auto first = get(items, &ITesseraValueItems::get_Item, 1L);
    CHECK(get(first, &ITesseraValueItem::get_DisplayValue, uccDefault).text() == L"zero");
    CHECK(get(first, &ITesseraValueItem::get_LCID) == 1031);
    CHECK(get(get(items, &ITesseraValueItems::get_Item, 2L), &ITesseraValueItem::get_LCID) == 0);
    CHECK(FAILED(added({{L"Index", Variant(1L)}})));
    // What means nothing does so by name, too.
    const auto content = create<ITessera>(L"Tessera.Tessera");
    CHECK(call_by_names(content.get(), L"CreateContentsRoot", {{L"xmlOwnerNode", Variant()}}) ==
          S_OK);
}
