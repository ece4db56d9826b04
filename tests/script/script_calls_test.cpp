// Through the DLL: what the script runner calls on its host, in order.

#include "script/runner_fixture.h"

using namespace test;

namespace {

// Who asks for a delegate asks whether the user may write there.
const std::wstring delegate =
    LR"(DocumentObject.get_Delegate
PlainObject.get_WorkSet "Anlage"
WorksetObject.get_CurrentUser
PlainObject.GetRights "Anlage", IHostKitUser
UserObject.get_Login
)";

}  // namespace

TEST_CASE_FIXTURE(RunnerFixture, "a script that is looked for and stored") {
    const auto empty = document(L"Leer");
    log_calls();
    SUBCASE("nothing without a table") {
        CHECK(stored(empty) == L"");
        CHECK(calls() ==
              LR"(
DocumentObject.get_Delegate
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Objects
ObjectList.get_Count
)");
    }
    SUBCASE("stored") {
        CHECK(store(empty, L"new"));
        CHECK(calls() ==
              LR"(
DocumentObject.get_Delegate
DocumentObject.get_Attributes "Leer"
AttributeList.get_Item "Vex"
DocumentObject.get_Attributes "Leer"
AttributeList.Add "Vex"
AttributeObject.put_Value "Vex", 1, "new"
AttributeObject.get_Marker "Vex"
AttributeObject.put_Marker "Vex", "~"
)");
        CHECK(stored(empty) == L"new");
        CHECK_FALSE(store({}, L"x"));
        CHECK(take_errors() == L"Tessera.VexScript|SetVexScript\n");
    }
}

TEST_CASE_FIXTURE(RunnerFixture, "a script that a delegate keeps") {
    const auto delegating = document(L"Delegiert");
    const auto login = [&](const wchar_t* name) {
        call(workset.as<IHostKitWorkset>(), &IHostKitWorkset::put_CurrentLogin, Bstr(name).get());
    };
    SUBCASE("neither for who may not write there") {
        login(L"ben");
        log_calls();
        CHECK(stored(delegating) == L"");
        CHECK(calls() == L"\n" + delegate +
                             LR"(DocumentObject.get_Attributes "Delegiert"
AttributeList.get_Item "Vex"
DocumentObject.get_Objects
ObjectList.get_Count
ObjectList.get_Item 1
MappingObject.get_XObj "Tabelle"
)" + delegate + delegate);
        CHECK_FALSE(store(delegating, L"x"));
        CHECK(calls() == L"\n" + delegate);
    }
}
