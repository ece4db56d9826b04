// The kit's object model through its automation objects.
#include "automation/conversion.h"
#include "hostkit/literal_project.h"

using namespace test;

namespace {

constexpr char plant[] = R"(
<project name='Werk' uid='PRJ' type='project' current='yes' description='Werk Süd'>
  <object type='area' name='A' label='A1' alias='N1' sign='=' description='Bereich' status='neu'>
    <translation language='English' description='Area' label='R1' status='new'/>
    <rights user='gast' mask='3'/>
    <object type='pump' name='P1' uid='U1' label='P1' sign='-' description='Pumpe' login='anna' file='p1.dwg'>
      <attribute name='Process.Pressure' type='double' unit='PRESSURE.BAR' decimals='2' value='16' product='20'
                 label='p' description='Druck'/>
      <attribute name='Process.Temperature' type='double' unit='TEMPERATURE.C'>
        <item value='20'/><item value='-40'/>
      </attribute>
      <attribute name='Process.Stages' type='long' value='3'/>
      <attribute name='Process.Medium' value='Öl'><translation language='English' value='Oil'/></attribute>
      <attribute name='Process.State' type='long' list='State' value='2'/>
      <attribute name='Process.Odd' type='long' list='State' value='7'/>
      <attribute name='Process.Empty' type='double'/>
      <attribute name='Buy.Date' type='date' value='2026-12-31T14:05:00'/>
      <attribute name='Buy.Price' type='currency' decimals='2' value='1234.5'/>
      <attribute name='Buy.Done' type='boolean' value='true'/>
    </object>
    <object type='pump' name='P2' uid='U2'>
      <rights user='gast' mask='0'/>
      <rights user='anna' mask='0'/>
      <attribute name='Process.Medium' value='Wasser'/>
    </object>
  </object>
</project>)";

ComPtr<IKelosAttribute> attribute(const ComPtr<IKelosObject>& object, const wchar_t* name) {
    return get(object, &IKelosObject::AttributeByFullName, Bstr(name).get());
}

std::wstring uid(const ComPtr<IKelosObject>& object) {
    return get(object, &IKelosObject::get_SystemUID).str();
}

std::wstring value(const ComPtr<IKelosAttribute>& attribute, long index = 1) {
    return automation::to_text(get(attribute, &IKelosAttribute::get_Value, index)).str();
}

}  // namespace

TEST_CASE("values are converted into the unit that is asked for") {
    const LiteralProject project(plant);
    const auto pressure = project.object(L"A|P1|Process.Pressure");
    const auto temperature = project.object(L"A|P1|Process.Temperature");
    struct Conversion {
        ComPtr<IKelosObject> object;
        const wchar_t* unit;
        const wchar_t* entries;
        const wchar_t* reported;
    };
    const Conversion conversions[] = {
        {pressure, L"", L"16=16", L"PRESSURE.BAR"},
        {pressure, L"PRESSURE.BAR", L"16=16", L"PRESSURE.BAR"},
        {pressure, L"PRESSURE.KPA", L"1600=1600", L"PRESSURE.KPA"},
        {pressure, L"PRESSURE.PA", L"1600000=1600000", L"PRESSURE.PA"},
        {temperature, L"TEMPERATURE.K", L"293.15=293,15", L"TEMPERATURE.K"},
        {temperature, L"TEMPERATURE.F", L"68=68", L"TEMPERATURE.F"},
    };
    for (const Conversion& wanted : conversions) {
        CAPTURE(wanted.unit);
        const Evaluation found = evaluate(wanted.object, kqpValue, L"", 1031, wanted.unit);
        CHECK(found.entries == wanted.entries);
        CHECK(found.unit == wanted.reported);
    }
    // Both scales meet at -40.
    CHECK(evaluate(temperature, kqpGetXValue, L"2", 1031, L"TEMPERATURE.F").entries == L"-40=-40");
    // Shown as precisely as in the attribute's own unit, 0.01 bar.
    CHECK(evaluate(pressure, kqpDisplayValue, L"", 1031, L"PRESSURE.KPA").entries == L"1600=1600");
    CHECK(evaluate(pressure, kqpDisplayValue, L"", 1031, L"PRESSURE.MPA").entries == L"1.6=1,600");
    // A number without unit stays what it is, whatever is asked for.
    const Evaluation stages =
        evaluate(project.object(L"A|P1|Process.Stages"), kqpValue, L"", 1031, L"PRESSURE.PA");
    CHECK(stages.entries == L"3=3");
    CHECK(stages.unit.empty());
}

TEST_CASE("a unit of another group is refused with both units named") {
    const LiteralProject project(plant);
    const auto pressure = project.object(L"A|P1|Process.Pressure");
    CHECK(error_of([&] { evaluate(pressure, kqpValue, L"", 0, L"TEMPERATURE.K"); }) ==
          L"The unit \"TEMPERATURE.K\" does not suit \"Werk|A|P1|Process.Pressure\", which is in "
          L"\"PRESSURE.BAR\"");
}

TEST_CASE("texts come in the language asked for, else in the project's") {
    const LiteralProject project(plant);
    const auto area = project.object(L"A");
    const auto medium = project.object(L"A|P1|Process.Medium");
    struct Choice {
        ComPtr<IKelosObject> object;
        long constant;
        const wchar_t* parameter;
        long lcid;
        const wchar_t* entries;
        long reported;
    };
    const Choice choices[] = {
        {area, kqpDescription, L"", 1033, L"Area=Area", 1033},
        {area, kqpDescription, L"", 1031, L"Bereich=Bereich", 1031},
        {area, kqpDescription, L"", 0, L"Bereich=Bereich", 1031},
        // A language that the project does not have, and one that has no text of its own.
        {area, kqpDescription, L"", 1036, L"Bereich=Bereich", 1031},
        {area, kqpDescription, L"", 1045, L"Bereich=Bereich", 1045},
        {area, kqpGetStatus, L"", 1033, L"new=new", 1033},
        {area, kqpSignedLabel, L"", 1033, L"=R1==R1", 1033},
        // By number: it goes before the language of the column.
        {area, kqpGetInternationalDescription, L"2", 1031, L"Area=Area", 1033},
        {area, kqpGetInternationalDescription, L"9", 1033, L"Area=Area", 1033},
        {area, kqpGetInternationalDescription, L"x", 1031, L"Bereich=Bereich", 1031},
        {medium, kqpGetInternationalValue, L"2", 1031, L"Oil=Oil", 1033},
        {medium, kqpValue, L"", 1033, L"Oil=Oil", 1033},
        {medium, kqpGetInternationalXValue, L"2;1", 1031, L"Oil=Oil", 1033},
        {medium, kqpGetInternationalXValue, L"2;2", 1031, L"", 1033},
    };
    for (const Choice& wanted : choices) {
        CAPTURE(wanted.constant);
        CAPTURE(wanted.lcid);
        const Evaluation found =
            evaluate(wanted.object, wanted.constant, wanted.parameter, wanted.lcid);
        CHECK(found.entries == wanted.entries);
        CHECK(found.lcid == wanted.reported);
    }
}

TEST_CASE("the project's language is the one of the texts that scripts read and write") {
    const LiteralProject project(plant);
    const auto area = project.object(L"A");
    const auto work = get(area, &IKelosObject::get_Project);
    automation::put_property(work.get(), L"CurrentLanguageNumber", Variant(2L));
    CHECK(automation::get_property(area.get(), L"Description").text() == L"Area");
    automation::put_property(area.get(), L"Description", Variant(L"Zone"));
    CHECK(evaluate(area, kqpDescription, L"", 1033).entries == L"Zone=Zone");
    CHECK(evaluate(area, kqpDescription, L"", 1031).entries == L"Bereich=Bereich");
    CHECK(get(get(work, &IKelosProject::get_CurrentLanguage), &IKelosLanguage::get_LCID) == 1033);
}

TEST_CASE("values are shown in the form of their language") {
    const LiteralProject project(plant);
    struct Shown {
        const wchar_t* path;
        long constant;
        const wchar_t* german;
        const wchar_t* english;
    };
    const Shown all[] = {
        {L"A|P1|Process.Pressure", kqpDisplayValue, L"16=16,00", L"16=16.00"},
        {L"A|P1|Process.Pressure", kqpProductValue, L"20=20,00", L"20=20.00"},
        {L"A|P1|Process.Pressure", kqpValue, L"16=16", L"16=16"},
        {L"A|P1|Buy.Price", kqpDisplayValue, L"1234.5=1234,50", L"1234.5=1234.50"},
        {L"A|P1|Buy.Done", kqpDisplayValue, L"True=Wahr", L"True=True"},
        {L"A|P1|Process.Empty", kqpDisplayValue, L"", L""},
        {L"A|P1|Process.Stages", kqpProductValue, L"", L""},
    };
    for (const Shown& wanted : all) {
        CAPTURE(wanted.path);
        const auto object = project.object(wanted.path);
        CHECK(evaluate(object, wanted.constant, L"", 1031).entries == wanted.german);
        CHECK(evaluate(object, wanted.constant, L"", 1033).entries == wanted.english);
    }
    const auto date = project.object(L"A|P1|Buy.Date");
    const std::wstring german = evaluate(date, kqpDisplayValue, L"", 1031).entries;
    CHECK(german.substr(german.find(L'=')) == L"=31.12.2026 14:05:00");
}

TEST_CASE("a value list is delivered whole, the current value first") {
    const LiteralProject project(plant);
    const auto state = project.object(L"A|P1|Process.State");
    const Evaluation english = evaluate(state, kqpDisplayValue, L"", 1033);
    CHECK(english.entries == L"2=off, 1=on, 3=defekt");
    CHECK(english.presentation == kprOptionButtons);
    CHECK(evaluate(state, kqpValue, L"", 1031).entries == L"2=aus, 1=an, 3=defekt");
    // A value that is none of the list stands for itself.
    const auto odd = project.object(L"A|P1|Process.Odd");
    CHECK(evaluate(odd, kqpValue, L"", 1031).entries == L"7=7, 1=an, 2=aus, 3=defekt");
}

TEST_CASE("indexed values beyond the last one are no values") {
    const LiteralProject project(plant);
    const auto temperature = project.object(L"A|P1|Process.Temperature");
    CHECK(evaluate(temperature, kqpGetXValue, L"1").entries == L"20=20");
    CHECK(evaluate(temperature, kqpGetDisplayXValue, L"2").entries == L"-40=-40");
    CHECK(evaluate(temperature, kqpGetXValue, L"").entries == L"20=20");
    for (const wchar_t* const index : {L"0", L"-1", L"3", L"99999"})
        CHECK(evaluate(temperature, kqpGetXValue, index).entries == L"");
}

TEST_CASE("an object's parameter names the attribute whose value is meant") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    CHECK(evaluate(pump, kqpValue, L"Process.Pressure").entries == L"16=16");
    CHECK(evaluate(pump, kqpGetXValue, L"2;Process.Temperature").entries == L"-40=-40");
    CHECK(evaluate(pump, kqpGetInternationalXValue, L"2;1;Process.Medium").entries == L"Oil=Oil");
    CHECK(evaluate(pump, kqpValue, L"Process.Unknown").entries == L"nothing");
    CHECK(evaluate(pump, kqpValue).entries == L"nothing");
    CHECK(evaluate(pump, 99).entries == L"nothing");
    CHECK(evaluate({}, kqpName).entries == L"nothing");
}

TEST_CASE("names, labels and paths are put together from the tree") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto pressure = project.object(L"A|P1|Process.Pressure");
    struct Part {
        long constant;
        const wchar_t* of_pump;
        const wchar_t* of_pressure;
    };
    const Part parts[] = {
        {kqpName, L"P1", L"Pressure"},
        {kqpFullName, L"A|P1", L"Process.Pressure"},
        {kqpSystemFullName, L"Werk|A|P1", L"Werk|A|P1|Process.Pressure"},
        {kqpNestedName, L"A.P1", L"P1.Process.Pressure"},
        {kqpLabel, L"P1", L"p"},
        {kqpFullLabel, L"=A1-P1", L"=A1-P1.p"},
        {kqpAliasFullLabel, L"=N1-P1", L"=N1-P1.p"},
        {kqpAliasSignedLabel, L"-P1", L".p"},
        {kqpLogin, L"anna", L""},
        {kqpFileName, L"p1.dwg", L""},
    };
    for (const Part& part : parts) {
        CAPTURE(part.constant);
        const std::wstring pump_text(part.of_pump);
        const std::wstring pressure_text(part.of_pressure);
        CHECK(evaluate(pump, part.constant).entries == pump_text + L"=" + pump_text);
        CHECK(evaluate(pressure, part.constant).entries == pressure_text + L"=" + pressure_text);
    }
}

TEST_CASE("objects are found by path and by identifier") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto work = get(pump, &IKelosObject::get_Project);
    const auto path = [&](const ComPtr<IKelosObject>& object, IKelosProject* from) {
        return get(object, &IKelosObject::get_PathFullName, from).str();
    };
    const auto below = [](const auto& top, const wchar_t* wanted) {
        return get(top, &IKelosObject::FindByPathFullName, Bstr(wanted).get());
    };
    const auto load = [&](long type, const wchar_t* wanted) {
        return get(project.workset, &IKelosWorkset::LoadObject, type, Bstr(wanted).get());
    };
    CHECK(path(pump, nullptr) == L"Werk|A|P1");
    CHECK(path(pump, work.get()) == L"A|P1");
    CHECK(uid(below(work, L"A|P1")) == L"U1");
    CHECK(uid(below(project.object(L"A"), L"P2")) == L"U2");
    CHECK(uid(project.object(L"Werk|A|P2")) == L"U2");
    for (const wchar_t* const missing : {L"", L"A|", L"|A", L"A|P9", L"A|P1|", L"P1"})
        CHECK_FALSE(below(work, missing));

    CHECK(path(load(120, L"U1"), nullptr) == L"Werk|A|P1");
    CHECK_FALSE(load(100, L"U1"));
    CHECK_FALSE(load(120, L"u1"));
    // An attribute without identifier has its path for one, and is an object of its own.
    const auto pressure = project.object(L"A|P1|Process.Pressure");
    CHECK(get(pressure, &IKelosObject::get_SystemType) == kstAttribute);
    CHECK(path(load(kstAttribute, uid(pressure).c_str()), work.get()) == L"A|P1|Process.Pressure");
}

TEST_CASE("rights are the object's, else those of the objects above, else the user's") {
    const LiteralProject project(plant);
    const auto rights = [&](const wchar_t* login, const wchar_t* path) {
        automation::put_property(project.workset.get(), L"CurrentLogin", Variant(login));
        const auto user = get(project.workset, &IKelosWorkset::get_CurrentUser);
        return get(project.object(path), &IKelosObject::GetRights, user.get());
    };
    CHECK(rights(L"anna", L"A|P1") == 1);
    CHECK(rights(L"anna", L"A|P2") == 0);
    CHECK(rights(L"gast", L"Werk") == 0);
    CHECK(rights(L"gast", L"A") == 3);
    CHECK(rights(L"gast", L"A|P1|Process.Pressure") == 3);
    CHECK(rights(L"gast", L"A|P2|Process.Medium") == 0);
    CHECK(error_of([&] { rights(L"nobody", L"A"); }) == L"There is no user \"nobody\"");
}

TEST_CASE("nothing is written without the right to write") {
    const LiteralProject project(plant);
    const auto locked = project.object(L"A|P2");
    const auto medium = attribute(locked, L"Process.Medium");
    const auto attributes = get(locked, &IKelosObject::get_Attributes);
    const std::wstring refused = L"The user \"anna\" may not change \"Werk|A|P2";
    const Variant sand(L"Sand");
    CHECK(error_of([&] {
              call(medium, &IKelosAttribute::put_Value, 1L, static_cast<VARIANT>(sand));
          }) == refused + L"|Process.Medium\"");
    CHECK(error_of([&] { call(medium, &IKelosAttribute::put_Marker, Bstr(L"~").get()); }) ==
          refused + L"|Process.Medium\"");
    CHECK(error_of([&] { get(attributes, &IKelosAttributes::Add, Bstr(L"Vex").get()); }) ==
          refused + L"\"");
    CHECK(value(medium) == L"Wasser");
    CHECK(get(attributes, &IKelosAttributes::get_Count) == 1);
}

TEST_CASE("a value that is written takes the attribute's type, or nothing changes") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto pressure = attribute(pump, L"Process.Pressure");
    const auto put = [&](long index, const Variant& given) {
        return error_of([&] {
            call(pressure, &IKelosAttribute::put_Value, index, static_cast<VARIANT>(given));
        });
    };
    CHECK(put(1, Variant(L"17.25")).empty());
    CHECK(get(pressure, &IKelosAttribute::get_Value, 1L).vt == VT_R8);
    CHECK(put(2, Variant(18L)).empty());
    CHECK(value(pressure, 2) == L"18");
    CHECK(put(1, Variant(L"high")) == L"Type mismatch");
    CHECK(put(4, Variant(1L)) == L"Subscript out of range");
    CHECK(put(0, Variant(1L)) == L"Subscript out of range");
    CHECK(value(pressure) == L"17.25");
    CHECK(get(pressure, &IKelosAttribute::get_Value, 3L).vt == VT_EMPTY);
    // Writing a text drops its translations.
    const auto medium = attribute(pump, L"Process.Medium");
    const Variant sand(L"Sand");
    call(medium, &IKelosAttribute::put_Value, 1L, static_cast<VARIANT>(sand));
    CHECK(evaluate(medium, kqpValue, L"", 1033).entries == L"Sand=Sand");
    // A Boolean as text is the platform's plain form.
    CHECK(get(attribute(pump, L"Buy.Done"), &IKelosAttribute::get_ValueText).view() == L"-1");
}

TEST_CASE("attributes are found by name and position and added once") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto attributes = get(pump, &IKelosObject::get_Attributes);
    const auto item = [&](const Variant& index) {
        return get(attributes, &IKelosAttributes::get_Item, static_cast<VARIANT>(index));
    };
    const long count = get(attributes, &IKelosAttributes::get_Count);
    CHECK(uid(item(Variant(1L))) == uid(attribute(pump, L"Process.Pressure")));
    CHECK(uid(item(Variant(L"Buy.Done"))) == uid(item(Variant(static_cast<double>(count)))));
    CHECK_FALSE(item(Variant(L"Vex")));
    CHECK_FALSE(item(Variant(0L)));
    CHECK_FALSE(item(Variant(count + 1)));

    const auto added = get(attributes, &IKelosAttributes::Add, Bstr(L"Vex").get());
    CHECK(uid(get(attributes, &IKelosAttributes::Add, Bstr(L"Vex").get())) == uid(added));
    CHECK(get(attributes, &IKelosAttributes::get_Count) == count + 1);
    const auto loaded = get(project.workset, &IKelosWorkset::LoadObject,
                            static_cast<long>(kstAttribute), Bstr(uid(added)).get());
    CHECK(uid(loaded) == uid(added));
    CHECK_FALSE(
        error_of([&] { get(attributes, &IKelosAttributes::Add, Bstr(L"a|b").get()); }).empty());
}

TEST_CASE("a unit leads to its group and back") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto unit = get(attribute(pump, L"Process.Temperature"), &IKelosAttribute::get_Unit);
    const auto group = get(unit, &IKelosUnit::get_Group);
    CHECK(get(unit, &IKelosUnit::get_Label).view() == L"\u00B0C");
    CHECK(get(unit, &IKelosUnit::get_UnitText).view() == L"TEMPERATURE.C");
    CHECK(get(group, &IKelosUnitGroup::get_Count) == 3);
    CHECK(get(get(group, &IKelosUnitGroup::get_Item, 3L), &IKelosUnit::get_UnitText).view() ==
          L"TEMPERATURE.F");
    CHECK_FALSE(get(group, &IKelosUnitGroup::get_Item, 4L));
    CHECK_FALSE(get(attribute(pump, L"Process.Medium"), &IKelosAttribute::get_Unit));
}

TEST_CASE("objects outlive the kit that opened them and the file stays closed") {
    const LiteralProject project(plant);
    const auto kit = create<IHostKit>(L"Kelos.HostKit");
    const TemporaryFile file(project_text(plant));
    auto workset = get(kit, &IHostKit::Open, Bstr(file.path()).get());
    auto pump = get(kit, &IHostKit::get_Object, Bstr(L"A|P1").get());
    workset.reset();
    call(kit, &IHostKit::Close);
    CHECK(uid(pump) == L"U1");
    CHECK(get(get(pump, &IKelosObject::get_WorkSet), &IKelosWorkset::get_CurrentLCID) == 1031);
    CHECK(error_of([&] { get(kit, &IHostKit::get_Object, Bstr(L"A").get()); }) ==
          L"No project file is open");
    CHECK_FALSE(get(kit, &IHostKit::get_WorkSet));
}

TEST_CASE("the workset opened last is the application's, until its kit closes it") {
    const LiteralProject project(plant);
    const auto application = get(project.service(), &IHostKitService::get_Application);
    const auto current = [&] { return get(application, &IKelosApplication::get_CurrentWorkset); };
    CHECK(automation::same_object(current().get(), project.workset.get()));
    {
        const TemporaryFile file(project_text(plant));
        const auto other = create<IHostKit>(L"Kelos.HostKit");
        const auto workset = get(other, &IHostKit::Open, Bstr(file.path()).get());
        CHECK(automation::same_object(current().get(), workset.get()));
        // A file that cannot be opened changes nothing.
        CHECK_FALSE(
            error_of([&] { get(other, &IHostKit::Open, Bstr(L"missing.xml").get()); }).empty());
        CHECK(automation::same_object(current().get(), workset.get()));
    }
    CHECK_FALSE(current());
}

TEST_CASE("handles keep COM's identity rules and release what they hold") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    const auto pressure = attribute(pump, L"Process.Pressure");
    CHECK(pressure.try_as<IKelosObject>());
    CHECK_FALSE(pump.try_as<IKelosAttribute>());
    CHECK_FALSE(pump.try_as<IKelosMappingTable>());
    CHECK_FALSE(get(pump, &IKelosObject::get_XObj));
    CHECK(automation::same_object(pressure.get(), pressure.as<IKelosAttribute>().get()));
    const ULONG before = reference_count(pump.get());
    const auto children = automation::object_as<IKelosObjects>(
        automation::get_property(project.object(L"A").get(), L"Children"));
    CHECK(get(children, &IKelosObjects::get_Count) == 2);
    CHECK_FALSE(get(children, &IKelosObjects::get_Item, 3L));
    CHECK(reference_count(pump.get()) == before);
    CHECK(automation::type_name(Variant(pressure.get())).view() == L"IHostKitAttribute");
}

TEST_CASE("exactly the chosen call fails, with the chosen code") {
    const LiteralProject project(plant);
    const auto pump = project.object(L"A|P1");
    call(project.kit, &IHostKit::FailCall, 2L, static_cast<long>(E_ACCESSDENIED));
    Bstr text;
    CHECK(pump->get_SystemUID(text.put()) == S_OK);
    CHECK(pump->get_SystemUID(text.put()) == E_ACCESSDENIED);
    CHECK(text.get() == nullptr);
    CHECK(pump->get_SystemUID(text.put()) == S_OK);
    CHECK(get(project.kit, &IHostKit::get_CountedCalls) == 3);
    call(project.kit, &IHostKit::FailCall, 0L, 0L);
    // Late-bound, the failure arrives with its description.
    call(project.kit, &IHostKit::FailCall, 1L, static_cast<long>(E_FAIL));
    CHECK(error_of([&] { automation::get_property(pump.get(), L"Description"); }) ==
          L"Failed on request");
    call(project.kit, &IHostKit::FailCall, 0L, 0L);
}

TEST_CASE("null out-parameters are refused and undo steps are kept as they were given") {
    const LiteralProject project(plant);
    CHECK(project.object(L"A")->get_SystemUID(nullptr) == E_POINTER);
    CHECK(project.workset->get_CurrentUser(nullptr) == E_POINTER);
    const auto step = get(project.workset, &IKelosWorkset::get_CurrentUndoState);
    const auto outer = get(project.workset, &IKelosWorkset::get_OuterUndoState);
    CHECK(step != outer);
    call(project.workset, &IKelosWorkset::putref_CurrentUndoState, outer.get());
    CHECK(get(project.workset, &IKelosWorkset::get_CurrentUndoState) == outer);
    call(project.workset, &IKelosWorkset::putref_CurrentUndoState,
         static_cast<IDispatch*>(nullptr));
    CHECK_FALSE(get(project.workset, &IKelosWorkset::get_CurrentUndoState));
}
