// Through the DLL: the log of the kit's calls, and calls that fail by their names.

#include "support/watched_host.h"

using namespace test;

TEST_CASE_FIXTURE(WatchedProject,
                  "calls are written down with their arguments, and fail by their name") {
    const auto pump = object(L"Anlage|Pumpe");
    const auto pressure =
        get(pump, &IKelosObject::AttributeByFullName, Bstr(L"Process.Pressure").get());
    get(pump, &IKelosObject::get_SystemUID);
    log_calls();
    fail(L"PlainObject.get_SystemUID", 2);
    const auto control = create<IDispatch>(L"Kelos.TextBox");
    BSTR text = nullptr;
    for (const HRESULT code : {S_OK, failure, S_OK}) {
        CHECK(pump->get_SystemUID(&text) == code);
        SysFreeString(text);
    }
    call(pressure, &IKelosAttribute::put_Value, 1L, static_cast<VARIANT>(Variant(2.5)));
    call(pressure, &IKelosAttribute::put_Marker, Bstr(L"a\r\n\"b\"").get());
    get(service(), &IKelosService::get_ControlWrapper, control.get());
    service()->ReportError(E_FAIL, nullptr, Bstr(L"S").get(), Bstr(L"L").get());
    call(workset, &IKelosWorkset::putref_OuterUndoState, nullptr);
    fail(L"new Kelos.TextBox");
    CHECK_THROWS_AS(create<IDispatch>(L"Kelos.TextBox"), automation::Error);
    fail_nothing();
    CHECK(calls() ==
          LR"(
new Kelos.TextBox
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemUID "Pumpe"
AttributeObject.put_Value "Process.Pressure", 1, 2.5
AttributeObject.put_Marker "Process.Pressure", "a\r\n"b""
Service.get_ControlWrapper IHostKitTextBox
Service.ReportError &H80004005, "", "S", "L"
WorksetObject.putref_OuterUndoState Nothing
new Kelos.TextBox
)");
    // Without a log nothing is kept, and the kit's own members are in none.
    call(kit, &IHostKit::put_LogsCalls, VARIANT_FALSE);
    get(pump, &IKelosObject::get_SystemUID);
    CHECK(calls() == L"\n");
}
