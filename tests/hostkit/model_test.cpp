// Through the DLL: the kit's object model, as scripts reach it.
#include "automation/conversion.h"
#include "support/literal_project.h"
#include "support/transcript.h"

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
      <attribute name='Buy.Much' type='double' decimals='99' unit='PRESSURE.PA' value='-1e308'/>
    </object>
  </object>
</project>)";

constexpr wchar_t names[] =
    LR"(
    Const kqpDescription = 1, kqpDisplayValue = 30, kqpValue = 32, kqpGetXValue = 33
    Const kqpProductValue = 34, kqpInternationalDescription = 50, kqpInternationalValue = 51
    Const kqpInternationalXValue = 54
    Set area = Object("A")
    Set pump = Object("A|P1")
    Set pressure = Object("A|P1|Process.Pressure")
    Set temperature = Object("A|P1|Process.Temperature")
    Set stages = Object("A|P1|Process.Stages")
    Set medium = Object("A|P1|Process.Medium")
    Set werk = area.Project
)";

// The plant for scripts, which also have Shown(Object, Constant, [Parameter, LCID, Unit]), what a
// column shows of the object, and Told(…), which adds the language and unit that it reports.
class Plant : public LiteralProject {
  public:
    Plant() : LiteralProject(plant) {}

    void check(const std::wstring& transcript) const {
        const auto columns = make_object(
            {{L"Shown", [](const auto& all) { return Variant(shown(all).entries); }},
             {L"Told", [](const auto& all) {
                  const Evaluation found = shown(all);
                  return Variant(found.entries + L" (" + std::to_wstring(found.lcid) +
                                 (found.unit.empty() ? L")" : L" " + found.unit + L")"));
              }}});
        check_transcript(names + transcript,
                         {{L"Kit", kit.get()}, {L"Columns", columns->dispatch()}});
    }

  private:
    static Evaluation shown(std::vector<Variant> all) {
        all.resize(5);
        return evaluate(automation::object_as<IKelosObject>(all[0]), automation::to_long(all[1]),
                        std::wstring(all[2].text()).c_str(), automation::to_long(all[3]),
                        std::wstring(all[4].text()).c_str());
    }
};

}  // namespace

TEST_CASE_FIXTURE(Plant, "values are converted into the unit that is asked for") {
    check(
        LR"(
    ? Told(pressure, kqpValue, "", 1031) -> 16=16 (1031 PRESSURE.BAR)
    ? Told(pressure, kqpValue, "", 1031, "PRESSURE.BAR") -> 16=16 (1031 PRESSURE.BAR)
    ? Told(pressure, kqpValue, "", 1031, "PRESSURE.KPA") -> 1600=1600 (1031 PRESSURE.KPA)
    ? Told(pressure, kqpValue, "", 1031, "PRESSURE.PA") -> 1600000=1600000 (1031 PRESSURE.PA)
    ? Told(temperature, kqpValue, "", 1031, "TEMPERATURE.K") -> 293.15=293,15 (1031 TEMPERATURE.K)
    ? Told(temperature, kqpValue, "", 1031, "TEMPERATURE.F") -> 68=68 (1031 TEMPERATURE.F)
    ' Both scales meet at -40.
    ? Shown(temperature, kqpGetXValue, "2", 1031, "TEMPERATURE.F") -> -40=-40
    ' Shown as precisely as in the attribute's own unit, 0.01 bar.
    ? Shown(pressure, kqpDisplayValue, "", 1031, "PRESSURE.KPA") -> 1600=1600
    ? Shown(pressure, kqpDisplayValue, "", 1031, "PRESSURE.MPA") -> 1.6=1,600
    ? Len(Object("A|P2").AttributeText("Buy.Much")) -> 410
    ? Len(Shown(Object("A|P2|Buy.Much"), kqpDisplayValue, "", 1031, "PRESSURE.MPA")) -> 412
    ' A number without unit stays what it is, whatever is asked for.
    ? Told(stages, kqpValue, "", 1031, "PRESSURE.PA") -> 3=3 (1031)
    ? Shown(pressure, kqpValue, "", 0, "TEMPERATURE.K") -> ! The unit "TEMPERATURE.K" does not suit "Werk|A|P1|Process.Pressure", which is in "PRESSURE.BAR"
    ' A unit leads to its group and back.
    Set unit = temperature.Unit
    ? unit.Label -> °C
    ? unit.UnitText -> TEMPERATURE.C
    ? unit.Group.Count -> 3
    ? unit.Group.Item(3).UnitText -> TEMPERATURE.F
    ? unit.Group.Item(4) -> Nothing
    ? medium.Unit -> Nothing
)");
}

TEST_CASE_FIXTURE(Plant, "texts come in the language asked for, else in the project's") {
    check(
        LR"(
    ? Told(area, kqpDescription, "", 1033) -> Area=Area (1033)
    ? Told(area, kqpDescription, "", 1031) -> Bereich=Bereich (1031)
    ? Told(area, kqpDescription, "", 0) -> Bereich=Bereich (1031)
    ' A language that the project does not have, and one that has no text of its own.
    ? Told(area, kqpDescription, "", 1036) -> Bereich=Bereich (1031)
    ? Told(area, kqpDescription, "", 1045) -> Bereich=Bereich (1045)
    ? Told(area, 40, "", 1033) -> new=new (1033)
    ? Told(area, 13, "", 1033) -> =R1==R1 (1033)
    ' By number: it goes before the language of the column.
    ? Told(area, kqpInternationalDescription, "2", 1031) -> Area=Area (1033)
    ? Told(area, kqpInternationalDescription, "9", 1033) -> Area=Area (1033)
    ? Told(area, kqpInternationalDescription, "x", 1031) -> Bereich=Bereich (1031)
    ? Told(medium, kqpInternationalValue, "2", 1031) -> Oil=Oil (1033)
    ? Told(medium, kqpValue, "", 1033) -> Oil=Oil (1033)
    ? Told(medium, kqpInternationalXValue, "2;1", 1031) -> Oil=Oil (1033)
    ? Told(medium, kqpInternationalXValue, "2;2", 1031) ->  (1033)
    ' Scripts read and write the texts of the project's language.
    werk.CurrentLanguageNumber = 2
    ? werk.CurrentLanguage.LCID -> 1033
    ? area.Description -> Area
    area.Description = "Zone"
    ? Shown(area, kqpDescription, "", 1033) -> Zone=Zone
    ? Shown(area, kqpDescription, "", 1031) -> Bereich=Bereich
)");
}

TEST_CASE_FIXTURE(Plant, "values are shown in the form of their language, by index, and in lists") {
    check(
        LR"(
    ? Shown(pressure, kqpDisplayValue, "", 1031) & " " & Shown(pressure, kqpDisplayValue, "", 1033) -> 16=16,00 16=16.00
    ? Shown(pressure, kqpProductValue, "", 1031) & " " & Shown(pressure, kqpProductValue, "", 1033) -> 20=20,00 20=20.00
    ? Shown(pressure, kqpValue, "", 1031) & " " & Shown(pressure, kqpValue, "", 1033) -> 16=16 16=16
    Set price = Object("A|P1|Buy.Price")
    ? Shown(price, kqpDisplayValue, "", 1031) & " " & Shown(price, kqpDisplayValue, "", 1033) -> 1234.5=1234,50 1234.5=1234.50
    Set done = Object("A|P1|Buy.Done")
    ? Shown(done, kqpDisplayValue, "", 1031) & " " & Shown(done, kqpDisplayValue, "", 1033) -> True=Wahr True=True
    ? Shown(Object("A|P1|Process.Empty"), kqpDisplayValue, "", 1031) -> ""
    ? Shown(stages, kqpProductValue, "", 1031) -> ""
    ? Right(Shown(Object("A|P1|Buy.Date"), kqpDisplayValue, "", 1031), 20) -> =31.12.2026 14:05:00
    ' A value list is delivered whole, the current value first; one that is not in it stands for itself.
    Set state = Object("A|P1|Process.State")
    ? Shown(state, kqpDisplayValue, "", 1033) -> 2=off, 1=on, 3=defekt
    ? Shown(state, kqpValue, "", 1031) -> 2=aus, 1=an, 3=defekt
    ? Shown(Object("A|P1|Process.Odd"), kqpValue, "", 1031) -> 7=7, 1=an, 2=aus, 3=defekt
    ' Indexed values beyond the last one are no values.
    ? Shown(temperature, kqpGetXValue, "1") & Shown(temperature, kqpGetXValue, "") -> 20=2020=20
    ? Shown(temperature, 31, "2") -> -40=-40
    ? Shown(temperature, kqpGetXValue, "0") & Shown(temperature, kqpGetXValue, "-1") -> ""
    ? Shown(temperature, kqpGetXValue, "3") & Shown(temperature, kqpGetXValue, "99999") -> ""
    ' An object's parameter names the attribute whose value is meant.
    ? Shown(pump, kqpValue, "Process.Pressure") -> 16=16
    ? Shown(pump, kqpGetXValue, "2;Process.Temperature") -> -40=-40
    ? Shown(pump, kqpInternationalXValue, "2;1;Process.Medium") -> Oil=Oil
    ? Shown(pump, kqpValue, "Process.Unknown") & " " & Shown(pump, kqpValue) -> nothing nothing
    ? Shown(pump, 99) & " " & Shown(Nothing, 2) -> nothing nothing
)");
    CHECK(evaluate(object(L"A|P1|Process.State"), kqpDisplayValue).presentation ==
          kprOptionButtons);
}

TEST_CASE_FIXTURE(Plant, "names, labels and paths are put together from the tree") {
    const auto texts = [&](const wchar_t* path) {
        std::wstring result;
        for (const long constant :
             {kqpName, kqpFullName, kqpSystemFullName, kqpNestedName, kqpLabel, kqpFullLabel,
              kqpAliasFullLabel, kqpAliasSignedLabel, kqpLogin, kqpFileName})
            result += evaluate(object(path), constant).entries + L"; ";
        return result;
    };
    CHECK(texts(L"A|P1") ==
          L"P1=P1; A|P1=A|P1; Werk|A|P1=Werk|A|P1; A.P1=A.P1; P1=P1; =A1-P1==A1-P1; "
          L"=N1-P1==N1-P1; -P1=-P1; anna=anna; p1.dwg=p1.dwg; ");
    CHECK(texts(L"A|P1|Process.Pressure") ==
          L"Pressure=Pressure; Process.Pressure=Process.Pressure; "
          L"Werk|A|P1|Process.Pressure=Werk|A|P1|Process.Pressure; "
          L"P1.Process.Pressure=P1.Process.Pressure; p=p; =A1-P1.p==A1-P1.p; =N1-P1.p==N1-P1.p; "
          L".p=.p; =; =; ");
}

TEST_CASE_FIXTURE(Plant, "objects are found by path and by identifier") {
    check(
        LR"(
    ? pump.PathFullName(Nothing) & " " & pump.PathFullName(werk) -> Werk|A|P1 A|P1
    ? werk.FindByPathFullName("A|P1").SystemUID -> U1
    ? area.FindByPathFullName("P2").SystemUID -> U2
    ? Object("Werk|A|P2").SystemUID -> U2
    ? werk.FindByPathFullName("") -> Nothing
    ? werk.FindByPathFullName("A|") -> Nothing
    ? werk.FindByPathFullName("|A") -> Nothing
    ? werk.FindByPathFullName("A|P9") -> Nothing
    ? werk.FindByPathFullName("A|P1|") -> Nothing
    ? werk.FindByPathFullName("P1") -> Nothing
    ? WorkSet.LoadObject(120, "U1").PathFullName(Nothing) -> Werk|A|P1
    ? WorkSet.LoadObject(100, "U1") -> Nothing
    ? WorkSet.LoadObject(120, "u1") -> Nothing
    ' An attribute without identifier has its path for one, and is an object of its own.
    ? WorkSet.LoadObject(pressure.SystemType, pressure.SystemUID).PathFullName(werk) -> A|P1|Process.Pressure
    ? area.Children.Count -> 2
    ? area.Children.Item(3) -> Nothing
    ? pump.XObj -> Nothing
    ? pressure -> [HostKitAttribute]
)");
    CHECK(get(object(L"A|P1|Process.Pressure"), &IKelosObject::get_SystemType) == kstAttribute);
}

TEST_CASE_FIXTURE(Plant, "rights are the object's, else those above it, and rule what is written") {
    check(
        LR"(
    ? pump.GetRights(WorkSet.CurrentUser) & Object("A|P2").GetRights(WorkSet.CurrentUser) -> 10
    WorkSet.CurrentLogin = "gast"
    Set gast = WorkSet.CurrentUser
    ? werk.GetRights(gast) & area.GetRights(gast) -> 03
    ? pressure.GetRights(gast) & Object("A|P2|Process.Medium").GetRights(gast) -> 30
    WorkSet.CurrentLogin = "nobody" -> ! There is no user "nobody"
    WorkSet.CurrentLogin = "anna"
    Set locked = Object("A|P2|Process.Medium")
    locked.Value(1) = "Sand" -> ! The user "anna" may not change "Werk|A|P2|Process.Medium"
    locked.Marker = "~" -> ! The user "anna" may not change "Werk|A|P2|Process.Medium"
    ? Object("A|P2").Attributes.Add("Vex") -> ! The user "anna" may not change "Werk|A|P2"
    ? locked.Value(1) -> Wasser
    ? Object("A|P2").Attributes.Count -> 2
)");
}

TEST_CASE_FIXTURE(Plant, "a value that is written takes the attribute's type, or nothing changes") {
    check(
        LR"(
    pressure.Value(1) = "17.25"
    ? TypeName(pressure.Value(1)) -> Double
    pressure.Value(2) = 18
    ? pressure.Value(2) -> 18
    pressure.Value(1) = "high" -> ! Type mismatch
    pressure.Value(4) = 1 -> ! Subscript out of range
    pressure.Value(0) = 1 -> ! Subscript out of range
    ? pressure.Value(1) -> 17.25
    ? pressure.Value(3) -> Empty
    ' Writing a text drops its translations.
    medium.Value(1) = "Sand"
    ? Shown(medium, kqpValue, "", 1033) -> Sand=Sand
    ' A Boolean as text is the platform's plain form.
    ? Object("A|P1|Buy.Done").ValueText -> -1
)");
}

TEST_CASE_FIXTURE(Plant, "attributes are found by name and position and added once") {
    check(
        LR"(
    Set attributes = pump.Attributes
    ? attributes.Count -> 10
    ? attributes.Item(1).FullName -> Process.Pressure
    ? attributes.Item("Buy.Done").FullName & " " & attributes.Item(10.0).FullName -> Buy.Done Buy.Done
    ? attributes.Item("Vex") -> Nothing
    ? attributes.Item(0) -> Nothing
    ? attributes.Item(11) -> Nothing
    Set added = attributes.Add("Vex")
    ? attributes.Add("Vex").SystemUID = added.SystemUID -> True
    ? attributes.Count -> 11
    ? WorkSet.LoadObject(added.SystemType, added.SystemUID).FullName -> Vex
    ? attributes.Add("a|b") -> ! This is no name for an attribute
)");
}

TEST_CASE_FIXTURE(Plant, "the workset opened last is the application's, until its kit closes it") {
    const auto application = get(service(), &IHostKitService::get_Application);
    const auto current = [&] { return get(application, &IKelosApplication::get_CurrentWorkset); };
    CHECK(automation::same_object(current().get(), workset.get()));
    ComPtr<IKelosObject> pump;
    {
        const auto other = create<IHostKit>(L"Kelos.HostKit");
        const auto opened = [&] {
            const TemporaryFile file(project_text(plant));
            return get(other, &IHostKit::Open, Bstr(file.path()).get());
        }();
        CHECK(automation::same_object(current().get(), opened.get()));
        // A file that cannot be opened changes nothing.
        CHECK_FALSE(
            error_of([&] { get(other, &IHostKit::Open, Bstr(L"missing.xml").get()); }).empty());
        CHECK(automation::same_object(current().get(), opened.get()));
        pump = get(other, &IHostKit::get_Object, Bstr(L"A|P1").get());
    }
    CHECK_FALSE(current());
    // Objects outlive the kit that opened them, the closed kit has none.
    CHECK(get(pump, &IKelosObject::get_SystemUID).view() == L"U1");
    CHECK(get(get(pump, &IKelosObject::get_WorkSet), &IKelosWorkset::get_CurrentLCID) == 1031);
    check(
        LR"(
    Kit.Close
    ? Object("A") -> ! No project file is open
    ? WorkSet -> Nothing
)");
}

TEST_CASE_FIXTURE(Plant, "handles keep COM's identity rules and release what they hold") {
    const auto pump = object(L"A|P1");
    const auto pressure = object(L"A|P1|Process.Pressure");
    CHECK(automation::same_object(pressure.get(), pressure.as<IKelosAttribute>().get()));
    CHECK_FALSE(pump.try_as<IKelosAttribute>());
    CHECK_FALSE(pump.try_as<IKelosMappingTable>());
    const ULONG before = reference_count(pump.get());
    check(L"? area.Children.Item(1).SystemUID -> U1");
    CHECK(reference_count(pump.get()) == before);
    CHECK(pump->get_SystemUID(nullptr) == E_POINTER);
    CHECK(workset->get_CurrentUser(nullptr) == E_POINTER);
}

TEST_CASE_FIXTURE(Plant, "exactly the chosen call fails, with the chosen code") {
    const auto pump = object(L"A|P1");
    call(kit, &IHostKit::FailCall, 2L, static_cast<long>(E_ACCESSDENIED));
    Bstr text;
    for (const HRESULT code : {S_OK, E_ACCESSDENIED, S_OK}) {
        CHECK(pump->get_SystemUID(text.put()) == code);
        CHECK(text.empty() == FAILED(code));
    }
    CHECK(get(kit, &IHostKit::get_CountedCalls) == 3);
    call(kit, &IHostKit::FailCall, 0L, 0L);
    // Late-bound, the failure arrives with its description.
    check(
        LR"(
    Kit.FailCall 1, &H80004005
    ? pump.Description -> ! Failed on request
    Kit.FailCall 0, 0
    ' Undo steps are kept as they were given.
    Set outer = WorkSet.OuterUndoState
    ? WorkSet.CurrentUndoState Is outer -> False
    Set WorkSet.CurrentUndoState = outer
    ? WorkSet.CurrentUndoState Is outer -> True
    Set WorkSet.CurrentUndoState = Nothing
    ? WorkSet.CurrentUndoState -> Nothing
)");
}
