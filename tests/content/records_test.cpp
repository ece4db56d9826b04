// Through the DLL: the records of a content element, and how they follow each other and the host.

#include "support/com_fixture.h"

using namespace test;

namespace {

class PropertyFixture : public ComFixture {
  public:
    ComPtr<ITesseraProperty> property = create<ITesseraProperty>(L"Tessera.Property");

    void put_get_name(const wchar_t* name) {
        call(property, &ITesseraProperty::put_GetName, Bstr(name).get());
    }
    void put_set_name(const wchar_t* name) {
        call(property, &ITesseraProperty::put_SetName, Bstr(name).get());
    }
    std::wstring get_name() { return get(property, &ITesseraProperty::get_GetName).str(); }
    std::wstring set_name() { return get(property, &ITesseraProperty::get_SetName).str(); }
    VARTYPE set_parameter_type() { return get(property, &ITesseraProperty::get_SetParameter).vt; }
};

Variant null() {
    Variant result;
    result.vt = VT_NULL;
    return result;
}

}  // namespace

TEST_CASE_FIXTURE(PropertyFixture, "a name fills its counterpart while that is empty") {
    put_get_name(L"Label");
    CHECK(set_name() == L"Label");
    put_set_name(L"Text");
    CHECK(get_name() == L"Label");
    put_get_name(L"");
    CHECK(set_name() == L"Text");
    put_set_name(L"Other");
    CHECK(get_name() == L"Other");
}

TEST_CASE_FIXTURE(PropertyFixture, "a parameter fills its counterpart while that is empty") {
    struct Row {
        Variant given;
        VARTYPE paired;
    };
    const Row rows[] = {{Variant(), VT_EMPTY},
                        {Variant(L""), VT_EMPTY},
                        {Variant(0L), VT_I4},
                        {Variant(false), VT_BOOL},
                        {null(), VT_EMPTY},
                        {Variant(L"x"), VT_BSTR},
                        {Variant(property.get()), VT_DISPATCH}};
    for (const Row& row : rows) {
        call(property, &ITesseraProperty::put_SetParameter, static_cast<VARIANT>(Variant()));
        call(property, &ITesseraProperty::put_GetParameter, static_cast<VARIANT>(row.given));
        CHECK(set_parameter_type() == row.paired);
    }
    call(property, &ITesseraProperty::put_GetParameter, static_cast<VARIANT>(Variant(1L)));
    CHECK(set_parameter_type() == VT_DISPATCH);  // it was there already
    call(property, &ITesseraProperty::put_SetParameter, static_cast<VARIANT>(null()));
    call(property, &ITesseraProperty::put_GetParameter, static_cast<VARIANT>(Variant(2L)));
    CHECK(set_parameter_type() == VT_NULL);  // neither empty nor not
    CHECK(error_count() == 0);
    call(property, &ITesseraProperty::put_GetParameter, static_cast<VARIANT>(Variant()));
}

TEST_CASE_FIXTURE(PropertyFixture, "a unit is what automation makes a text of") {
    call(property, &ITesseraProperty::put_PhysUnit, static_cast<VARIANT>(Variant(1.5)));
    CHECK(get(property, &ITesseraProperty::get_PhysUnit).text() == L"1.5");
    call(property, &ITesseraProperty::put_PhysUnit, static_cast<VARIANT>(Variant()));
    CHECK(get(property, &ITesseraProperty::get_PhysUnit).vt == VT_BSTR);
    call(property, &ITesseraProperty::put_PhysUnit, static_cast<VARIANT>(null()));
    CHECK(error(1) == L"Tessera.Property|Property Let 'PhysUnit'");
    CHECK(error_code(1) == CTL_E_INVALIDUSEOFNULL);
    Variant variable = null();
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &variable;
    call(property, &ITesseraProperty::put_PhysUnit, reference);
    CHECK(error_code(2) == CTL_E_INVALIDUSEOFNULL);
    CHECK(error_count() == 2);
}

TEST_CASE_FIXTURE(ComFixture, "values change their form only as strings in host form") {
    const auto value = create<ITesseraValue>(L"Tessera.Value");
    const auto put = [&](uceDataType type, const Variant& given) {
        call(value, &ITesseraValue::put_KelosValue, type, static_cast<VARIANT>(given));
    };
    const auto given = [&](uceDataType type) {
        return get(value, &ITesseraValue::get_KelosValue, type);
    };
    put(uccVBString, Variant(L"a\r\nb"));
    CHECK(given(uccDefault).text() == L"a\nb");
    CHECK(given(uccMSOfficeString).text() == L"a\nb");
    CHECK(given(uccVBString).text() == L"a\r\nb");
    put(uccDefault, Variant(L"a\r\nb"));
    CHECK(given(uccDefault).text() == L"a\r\nb");
    CHECK(given(uccVBString).text() == L"a\r\r\nb");
    put(uccVBString, Variant(3.5));
    CHECK(given(uccVBString).dblVal == 3.5);
    put(uccVBString, null());
    CHECK(given(uccVBString).vt == VT_NULL);

    call(value, &ITesseraValue::put_DocumentValue, uccVBString,
         static_cast<VARIANT>(Variant(L"\xE4\r\n")));
    call(value, &ITesseraValue::put_LCID, short{1031});
    call(value, &ITesseraValue::put_LCID, short{1049});
    CHECK(get(value, &ITesseraValue::get_DocumentValue, uccDefault).text() == L"\x0434\n");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProjectFixture, "a host object fills the record, nothing empties it") {
    const auto source = object(L"Anlage|Pumpe");
    const auto record = create<ITesseraKelosObject>(L"Tessera.KelosObject");
    call(record, &ITesseraKelosObject::putref_Object, source.get());
    CHECK(get(record, &ITesseraKelosObject::get_SystemUID).view() ==
          get(source, &IKelosObject::get_SystemUID).view());
    CHECK(get(record, &ITesseraKelosObject::get_SystemType) ==
          get(source, &IKelosObject::get_SystemType));
    CHECK(get(record, &ITesseraKelosObject::get_PathFullName).view() == L"Anlage|Pumpe");
    call(record, &ITesseraKelosObject::put_Object, static_cast<IKelosObject*>(nullptr));
    CHECK(get(record, &ITesseraKelosObject::get_SystemUID).empty());
    CHECK(get(record, &ITesseraKelosObject::get_PathFullName).empty());
    CHECK(get(record, &ITesseraKelosObject::get_SystemType) == 0);
    CHECK_FALSE(get(record, &ITesseraKelosObject::get_Object));
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProjectFixture,
                  "a record finds its object by identifier, else by path, given a type") {
    const auto source = object(L"Anlage|Pumpe");
    const auto content = create<ITessera>(L"Tessera.Tessera");
    call(content, &ITessera::putref_WorkSet, workset.get());
    const auto record = get(content, &ITessera::get_KelosObject);
    const auto found = [&] { return get(record, &ITesseraKelosObject::get_Object); };
    const auto uid = get(source, &IKelosObject::get_SystemUID);

    CHECK_FALSE(found());  // no identifier
    call(record, &ITesseraKelosObject::put_SystemUID, uid.get());
    CHECK_FALSE(found());  // no type
    call(record, &ITesseraKelosObject::put_SystemType, get(source, &IKelosObject::get_SystemType));
    REQUIRE(found());
    CHECK(get(found(), &IKelosObject::get_SystemUID).view() == uid.view());

    call(record, &ITesseraKelosObject::put_Object, static_cast<IKelosObject*>(nullptr));
    call(record, &ITesseraKelosObject::put_SystemUID, Bstr(L"gone").get());
    call(record, &ITesseraKelosObject::put_SystemType, 1L);
    CHECK_FALSE(found());  // neither identifier nor path lead anywhere
    call(record, &ITesseraKelosObject::put_PathFullName, Bstr(L"Anlage|Pumpe").get());
    CHECK(found());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ProjectFixture, "a host that fails is reported with the member that asked it") {
    const auto source = object(L"Anlage|Pumpe");
    const auto record = create<ITesseraKelosObject>(L"Tessera.KelosObject");
    call(kit, &IHostKit::FailCall, 2L, static_cast<long>(E_ACCESSDENIED));
    call(record, &ITesseraKelosObject::putref_Object, source.get());
    CHECK(error(1) == L"Tessera.KelosObject|Property Set 'Object'");
    CHECK(error_code(1) == E_ACCESSDENIED);
    CHECK(error_count() == 1);
}
