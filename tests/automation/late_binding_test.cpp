// Tests of internals: late-bound calls, against an object that writes down how it was called.

#include "automation/dispatch.h"
#include "support/com_fixture.h"

using automation::Bstr;
using automation::ComPtr;
using automation::Error;
using automation::Variant;

namespace {

constexpr DISPID known_member = 17;

class Callee : public IDispatch {
  public:
    std::wstring record;
    HRESULT answer = S_OK;
    EXCEPINFO exception{};
    UINT references = 1;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch;
        *result = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        *ids = std::wstring_view(*names) == L"Known" ? known_member : DISPID_UNKNOWN;
        return count == 1 && *ids == known_member ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* left, UINT*) override {
        record = std::to_wstring(member) + L" kind " + std::to_wstring(kind) + L":";
        for (UINT i = 0; i < parameters->cArgs; ++i)
            record += L' ' + std::to_wstring(parameters->rgvarg[i].lVal);
        for (UINT i = 0; i < parameters->cNamedArgs; ++i)
            record += L" named " + std::to_wstring(parameters->rgdispidNamedArgs[i]);
        if (result) record += L" result";
        if (result && SUCCEEDED(answer)) *result = Variant(L"given").detach();
        if (answer == DISP_E_EXCEPTION) *left = exception;
        return answer;
    }
};

HRESULT STDMETHODCALLTYPE fill_in(EXCEPINFO* info) {
    info->bstrDescription = SysAllocString(L"filled in");
    info->bstrSource = SysAllocString(L"late");
    info->scode = E_ABORT;
    return S_OK;
}

template <class Action>
std::wstring failure(Action&& action) {
    try {
        action();
        return L"";
    } catch (const Error& error) {
        wchar_t code[16];
        swprintf(code, 16, L"%08X", static_cast<unsigned>(error.code()));
        return std::wstring(code) + L"|" + error.source().str() + L"|" + error.description().str();
    }
}

}  // namespace

TEST_CASE("late-bound calls pass name, kind and arguments as the platform wants them") {
    Callee callee;
    const Variant first(1L);
    const Variant second(2L);
    const Variant third(3L);

    CHECK(automation::call_method(&callee, L"Known", {first, second, third}).text() == L"given");
    CHECK(callee.record == L"17 kind 1: 3 2 1 result");
    CHECK(automation::get_property(&callee, L"Known", {first, second}).text() == L"given");
    CHECK(callee.record == L"17 kind 3: 2 1 result");
    automation::put_property(&callee, L"Known", first);
    CHECK(callee.record == L"17 kind 4: 1 named -3");
    // An indexed property: its value is the last argument and the one that is named.
    automation::invoke(&callee, 5, DISPATCH_PROPERTYPUTREF, {first, second});
    CHECK(callee.record == L"5 kind 8: 2 1 named -3");
    CHECK(callee.references == 1);
}

TEST_CASE("a late-bound call that fails says what the callee said") {
    Callee callee;
    CHECK(failure([&] { automation::call_method(&callee, L"Unknown"); }) == L"80020006||");
    CHECK(callee.record.empty());
    CHECK(failure([] { automation::call_method(nullptr, L"Known"); }) == L"800A005B||");
    CHECK(failure([] { automation::invoke(nullptr, 1, DISPATCH_METHOD); }) == L"800A005B||");

    const auto call = [&] { automation::call_method(&callee, L"Known"); };
    callee.answer = DISP_E_MEMBERNOTFOUND;
    CHECK(failure(call) == L"80020003||");

    callee.answer = DISP_E_EXCEPTION;
    callee.exception.wCode = 0x5B;
    callee.exception.bstrDescription = SysAllocString(L"words");
    callee.exception.bstrSource = SysAllocString(L"who");
    CHECK(failure(call) == L"800A005B|who|words");
    callee.exception = {};
    callee.exception.scode = E_ACCESSDENIED;
    CHECK(failure(call) == L"80070005||");
    callee.exception = {};
    callee.exception.pfnDeferredFillIn = fill_in;
    CHECK(failure(call) == L"80004004|late|filled in");
}

TEST_CASE("results are asked for a role, and objects created by name") {
    Callee callee;
    CHECK(automation::object_as<IDispatch>(Variant(&callee)).get() == &callee);
    CHECK_FALSE(automation::object_as<IStream>(Variant(&callee)));
    CHECK_FALSE(automation::object_as<IDispatch>(Variant(L"text")));
    CHECK_FALSE(automation::object_as<IDispatch>(Variant(static_cast<IDispatch*>(nullptr))));
    CHECK(callee.references == 1);
    CHECK(failure([] { automation::create_unknown(L"No.Such.Name"); }) == L"800401F3||");
    CHECK(failure([] { automation::create_object<IStream>(L"Tessera.Document"); }) ==
          L"80004002||");
}
