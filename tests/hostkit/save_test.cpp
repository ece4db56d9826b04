// Through the DLL: properties that are written back, and project files that are saved.
#include <fstream>
#include <sstream>

#include "kelos.h"
#include "support/com_fixture.h"
#include "support/literal_project.h"

using namespace test;

namespace {

constexpr char body[] = R"(<!-- types --><attribute-types>
  <attribute-type name="P.Pressure" type="double" unit="PRESSURE.BAR" decimals="1"/>
  <attribute-type name="P.State" type="long" list="State"/>
  <attribute-type name="P.Count" type="long"/>
  <attribute-type name="P.Date" type="date"/>
  <attribute-type name="P.Ready" type="boolean"/>
</attribute-types>
<project name="Plant" type="project" current="yes">
  <!-- a comment with value="1" and <attribute> -->
  <object type='pump'  name='P1' description="F&#xF6;rder&amp;pumpe">
    <translation language="English" description="Feed pump"/>
    <attribute name="P.Pressure" value = '2.5' ><item value="3"/></attribute>
    <attribute name="P.State" value="1"/>
    <attribute name="P.Count" value="7"/>
    <attribute name="P.Date" value="2026-03-31"/>
    <attribute name="P.Ready" value="yes"/>
    <attribute name="P.Text" value="a&#10;b"><translation language="English" value="c"/></attribute>
    <attribute name="P.Empty"/>
  </object>
  <object type="pump" name="P2"/>
  <object type="pump" name="P3">
    <attribute name="P.Text" value=""/>
  </object>
</project>)";

std::string bytes_of(const std::wstring& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class SavedProject : public ComFixture {
  public:
    explicit SavedProject(const std::string& text = project_text(body))
        : file_(text), original_(text) {
        call(kit_, &IHostKit::Open, Bstr(file_.path()).get(), workset_.put());
    }
    ~SavedProject() { DeleteFileW(backup().c_str()); }

    void write(const wchar_t* path, long constant, const Variant& value,
               const wchar_t* parameter = L"", const wchar_t* unit = L"", long lcid = 1031) const {
        const auto object = get(kit_, &IHostKit::get_Object, Bstr(path).get());
        call(kit_, &IHostKit::WriteProperty, object.get(), constant, Bstr(parameter).get(),
             Bstr(unit).get(), lcid, static_cast<VARIANT>(value));
    }
    std::wstring read(const wchar_t* path, long constant, const wchar_t* parameter = L"",
                      const wchar_t* unit = L"", long lcid = 1031) const {
        const auto object = get(kit_, &IHostKit::get_Object, Bstr(path).get());
        return evaluate(object, constant, parameter, lcid, unit).entries;
    }
    // The original with replacements made in it is what the file holds after saving.
    void check_saved(std::initializer_list<std::pair<std::string, std::string>> replacements) {
        call(kit_, &IHostKit::Save, Bstr(backup()).get());
        std::string expected = original_;
        for (const auto& [before, after] : replacements) {
            const std::size_t at = expected.find(before);
            REQUIRE_MESSAGE(at != expected.npos, before);
            expected.replace(at, before.size(), after);
        }
        CHECK(bytes_of(file_.path()) == expected);
        CHECK(bytes_of(backup()) == original_);
    }
    const std::wstring& path() const noexcept { return file_.path(); }
    std::wstring backup() const { return file_.path() + L".bak"; }
    void save() const { call(kit_, &IHostKit::Save, static_cast<BSTR>(nullptr)); }

  private:
    const TemporaryFile file_;
    const std::string original_;
    const ComPtr<IHostKit> kit_ = create<IHostKit>(L"Kelos.HostKit");
    ComPtr<IKelosWorkset> workset_;
};

Variant date(double day) {
    Variant value(day);
    value.vt = VT_DATE;
    return value;
}

}  // namespace

TEST_CASE_FIXTURE(SavedProject, "properties go back by the way on which they were read") {
    write(L"P1|P.Pressure", kqpValue, Variant(350.0), L"", L"PRESSURE.KPA");
    CHECK(read(L"P1|P.Pressure", kqpValue) == L"3.5=3,5");
    write(L"P1", kqpGetXValue, Variant(4.0), L"2;P.Pressure");
    CHECK(read(L"P1|P.Pressure", kqpGetXValue, L"2") == L"4=4");
    write(L"P1|P.Pressure", kqpGetXValue, Variant(5.0), L"3");
    CHECK(read(L"P1|P.Pressure", kqpGetXValue, L"3") == L"5=5");
    write(L"P1|P.Pressure", kqpDisplayValue, Variant(L"1,25"));
    CHECK(read(L"P1|P.Pressure", kqpValue) == L"1.25=1,25");
    write(L"P1|P.State", kqpDisplayValue, Variant(L"off"), L"", L"", 1033);
    CHECK(read(L"P1|P.State", kqpValue).starts_with(L"2=aus"));
    write(L"P1", kqpDescription, Variant(L"Neu"));
    write(L"P1", kqpGetInternationalDescription, Variant(L"Pompa"), L"3");
    CHECK(read(L"P1", kqpDescription) == L"Neu=Neu");
    CHECK(read(L"P1", kqpGetInternationalDescription, L"2") == L"Feed pump=Feed pump");
    CHECK(read(L"P1", kqpGetInternationalDescription, L"3") == L"Pompa=Pompa");
    write(L"P1|P.Text", kqpValue, Variant(L"neu"));
    CHECK(read(L"P1|P.Text", kqpGetInternationalValue, L"2") == L"c=c");
}

TEST_CASE_FIXTURE(SavedProject, "what cannot be written is told, and stays as it is") {
    const auto problem = [&](const wchar_t* path, long constant, const Variant& value,
                             const wchar_t* unit = L"", const wchar_t* parameter = L"") {
        return error_of([&] { write(path, constant, value, parameter, unit); });
    };
    CHECK(problem(L"P1|P.Pressure", kqpValue, Variant(L"2,5")) == L"\"2,5\" is no number");
    CHECK(problem(L"P1|P.Pressure", kqpDisplayValue, Variant(L"2.5")) == L"\"2.5\" is no number");
    CHECK(problem(L"P1|P.Count", kqpValue, Variant(2.5)) == L"\"2.5\" is no whole number");
    CHECK(problem(L"P1|P.Date", kqpValue, Variant(2.5)) == L"\"2.5\" is no date");
    CHECK(problem(L"P1|P.Ready", kqpValue, Variant(L"x")) == L"\"x\" is no yes or no");
    CHECK(problem(L"P1|P.Pressure", kqpValue, Variant(1.0), L"TEMPERATURE.K")
              .starts_with(L"The unit \"TEMPERATURE.K\" does not suit"));
    CHECK(problem(L"P1|P.Pressure", kqpGetXValue, Variant(1.0), L"", L"4") != L"");
    CHECK(problem(L"P1", kqpFullLabel, Variant(L"x")) ==
          L"The property \"FullLabel\" cannot be written");
    CHECK(problem(L"P1", kqpName, Variant(L"x")).starts_with(L"A name is not changed"));
    CHECK(problem(L"P1", kqpValue, Variant(1.0)) == L"\"Plant|P1\" has no such property");
    CHECK(read(L"P1|P.Pressure", kqpValue) == L"2.5=2,5");
    save();
    CHECK(bytes_of(path()) == project_text(body));
}

TEST_CASE_FIXTURE(SavedProject, "a saved file differs in what was changed only") {
    write(L"P1|P.Pressure", kqpValue, Variant(1e-7));
    write(L"P1|P.Pressure", kqpGetXValue, Variant(4.25), L"2");
    write(L"P1|P.Pressure", kqpGetXValue, Variant(5.0), L"3");
    write(L"P1|P.State", kqpDisplayValue, Variant(L"defekt"));
    write(L"P1|P.Date", kqpValue, date(46113.5));
    write(L"P1|P.Ready", kqpValue, Variant(false));
    write(L"P1|P.Text", kqpValue, Variant(L"<\"'&\r\n\xE4\x20AC"));
    write(L"P1|P.Empty", kqpValue, Variant(L"x"));
    write(L"P2", kqpGetInternationalDescription, Variant(L"Pump 2"), L"2");
    write(L"P2", kqpLabel, Variant(L"B"));
    write(L"P3|P.Text", kqpGetInternationalValue, Variant(L"on"), L"2");
    check_saved({
        {"'2.5' ><item value=\"3\"/>",
         "'1e-07' ><item value=\"4.25\"/>\n      <item value=\"5\"/>"},
        {"name=\"P.State\" value=\"1\"", "name=\"P.State\" value=\"3\""},
        {"2026-03-31", "2026-04-01T12:00:00"},
        {"value=\"yes\"", "value=\"false\""},
        {"a&#10;b", "&#60;&#34;&#39;&#38;&#13;&#10;\xC3\xA4\xE2\x82\xAC"},
        {"\"P.Empty\"/>", "\"P.Empty\" value=\"x\"/>"},
        {"name=\"P2\"/>",
         "name=\"P2\" label=\"B\">\n    <translation language=\"English\" "
         "description=\"Pump 2\"/>\n  </object>"},
        {"\"P.Text\" value=\"\"/>",
         "\"P.Text\" value=\"\">\n      <translation language=\"English\" value=\"on\"/>\n    "
         "</attribute>"},
    });
}

TEST_CASE("files keep their encoding") {
    const std::string text = project_text("<project name='Plant' type='project' current='yes'/>");
    std::string wide = "\xFF\xFE";
    for (const char character : text)
        wide.append({character, '\0'});
    const std::pair<std::string, std::string> files[] = {
        {"\xEF\xBB\xBF" + text, "description=\"\xE2\x82\xAC\xF0\x9F\x98\x80\"/>"},
        {"<?xml version='1.0' encoding='windows-1252'?>" + text, "description=\"\x80"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?>" + text, "description=\"&#8364;"},
        {wide, std::string("\xAC\x20\x3D\xD8\x00\xDE", 6)},
    };
    for (const auto& [bytes, expected] : files) {
        const SavedProject project(bytes);
        const bool has_all = bytes.starts_with("\xEF") || bytes.starts_with("\xFF");
        project.write(L"Plant", kqpDescription,
                      Variant(has_all ? L"\x20AC\xD83D\xDE00" : L"\x20AC"));
        project.save();
        CHECK(bytes_of(project.path()).find(expected) != std::string::npos);
    }
}

TEST_CASE_FIXTURE(SavedProject,
                  "a file that cannot hold the change, or is another one now, stays") {
    write(L"P1", kqpDescription,
          Variant(L"a\x1"
                  L"b"));
    CHECK(error_of([&] { save(); }).find(L"that no project file can hold") != std::wstring::npos);
    CHECK(bytes_of(path()) == project_text(body));

    write(L"P1", kqpDescription, Variant(L"b"));
    std::ofstream(path().c_str(), std::ios::binary) << project_text(body) << "<!-- later -->";
    CHECK(error_of([&] { save(); }).find(L"was changed by somebody else") != std::wstring::npos);
    CHECK(bytes_of(path()).ends_with("<!-- later -->"));
}
