// Through the DLL: the records of a content element, and how they follow each other and the host.

#include "support/transcript.h"
#include "support/watched_host.h"

using namespace test;

TEST_CASE_FIXTURE(ComFixture, "a name or parameter fills its counterpart while that is empty") {
    check_transcript(
        LR"(
    Set P = Make("Tessera.Property")
    P.GetName = "Label"
    ? P.SetName -> Label
    P.SetName = "Text"
    ? P.GetName -> Label
    P.GetName = ""
    ? P.SetName -> Text
    P.SetName = "Other"
    ? P.GetName -> Other
    Function Paired(Given) : Set A = Make("Tessera.Property") : A.GetParameter = Given : _
        Set B = Make("Tessera.Property") : B.SetParameter = Given : _
        Paired = TypeName(A.SetParameter) & " " & TypeName(B.GetParameter) : End Function
    ? Paired(Empty) -> Empty Empty
    ? Paired("") -> Empty Empty
    ? Paired(0) -> Integer Integer
    ? Paired(False) -> Boolean Boolean
    ? Paired(Null) -> Empty Empty
    ? Paired("x") -> String String
    P.GetParameter = 1
    P.GetParameter = 2
    ? P.SetParameter -> 1
    ' Null is neither empty nor not.
    P.SetParameter = Null
    P.GetParameter = 3
    ? IsNull(P.SetParameter) -> True
    P.PhysUnit = 1.5
    ? TypeName(P.PhysUnit) & P.PhysUnit -> String1.5
    P.PhysUnit = Empty
    ? TypeName(P.PhysUnit) -> String
    )",
        {});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ComFixture, "values change their form only as strings, and follow the locale") {
    const std::pair<std::wstring, std::wstring> members[] = {{L"Value", L"KelosValue"},
                                                             {L"Value", L"DocumentValue"},
                                                             {L"ValueItem", L"Value"},
                                                             {L"ValueItem", L"DisplayValue"}};
    for (const auto& [name, member] : members) {
        CAPTURE(member);
        check_transcript(L"Set V = Make(\"Tessera." + name + L"\")\nSub Take(T, X) : V." + member +
                             L"(T) = X : End Sub\nFunction Given(T) : Given = V." + member +
                             L"(T) : End Function\nlatin = \"\xE4\"\ncyrillic = \"\x0434\"" +
                             LR"(
    Function Lines(T) : Lines = Replace(Replace(Given(T), vbCr, "\r"), vbLf, "\n") : End Function
    Take 1, "a" & vbCrLf & "b"
    ? Lines(0) -> a\nb
    ? Lines(2) -> a\nb
    ? Lines(1) -> a\r\nb
    Take 0, "a" & vbCrLf & "b"
    ? Lines(0) -> a\r\nb
    ? Lines(1) -> a\r\r\nb
    Take 1, 3.5
    ? Given(1) -> 3.5
    Take 1, Null
    ? IsNull(Given(1)) -> True
    ' From no locale: line breaks only.
    Take 0, latin & vbCrLf
    V.LCID = 1031
    ? Lines(0) = latin & "\n" -> True
    ' The same byte, read as Cyrillic.
    V.LCID = 1049
    ? Lines(0) = cyrillic & "\n" -> True
    V.LCID = 1031
    ? Lines(0) = latin & "\n" -> True
    ' No such locale.
    V.LCID = 32767
    ? Lines(1) = latin & "\r\n" -> True
    ? V.LCID -> 32767)",
                         {});
        CHECK(error(error_count()) == L"Tessera.GFunctions|Friend Function 'GetOfficeFromOffice'");
    }
    CHECK(error_count() == 4);
}

TEST_CASE_FIXTURE(ProjectFixture, "a host object fills the record, nothing empties it") {
    check_transcript(
        LR"(
    Set R = Make("Tessera.KelosObject")
    Set R.Object = Kit.Object("Anlage|Pumpe")
    ? R.SystemUID & R.SystemType & R.PathFullName -> P13Anlage|Pumpe
    Set R.Object = Nothing
    ? R.SystemUID & R.SystemType & R.PathFullName -> 0
    ? R.Object -> Nothing
    )",
        {{L"Kit", kit.get()}});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(WatchedProject, "a record looks for its object by identifier, else by path") {
    const auto host =
        make_object({{L"Looks", [&](const auto&) {
                          std::wstring looks = calls({L"LoadObject", L"FindBy"}).substr(1);
                          std::ranges::replace(looks, L'\n', L' ');
                          return Variant(looks);
                      }}});
    log_calls();
    check_transcript(
        LR"(
    Function Found(Record) : Dim O : Set O = Record.Object : Found = "nothing" : _
        If Not O Is Nothing Then Found = O.SystemUID : End If : _
        Found = Looks & Found : End Function
    Dim Node
    Function Asked(UID, Number, Path) : Set C = Make("Tessera.Tessera") : _
        C.KelosObject.SystemUID = UID : C.KelosObject.SystemType = Number : _
        C.KelosObject.PathFullName = Path : Set Node = C.XMLNode(Nothing) : _
        Set C.WorkSet = Work : Asked = Found(C.KelosObject) : End Function
    ' What a record held before it is read counts no more.
    Function Read() : Set C = Make("Tessera.Tessera") : Set C.WorkSet = Work : _
        Set C.KelosObject.Object = Kit.Object("Anlage|Tabelle") : _
        Set C.XMLNode(Nothing) = Node : Read = Found(C.KelosObject) : End Function
    ? Asked("P1", 3, "") -> WorksetObject.LoadObject 3, "P1" P1
    ? Read -> WorksetObject.LoadObject 3, "P1" P1
    ? Asked("P1", 0, "Anlage") -> nothing
    ? Read -> WorksetObject.LoadObject 0, "P1" ProjectObject.FindByPathFullName "Werk", "Anlage" A1
    ? Asked("?", 3, "Anlage") -> WorksetObject.LoadObject 3, "?" ProjectObject.FindByPathFullName "Werk", "Anlage" A1
    ? Read -> WorksetObject.LoadObject 3, "?" ProjectObject.FindByPathFullName "Werk", "Anlage" A1
    ? Asked("?", 3, "") -> WorksetObject.LoadObject 3, "?" nothing
    ' Who asks then looks once more.
    ? Read -> WorksetObject.LoadObject 3, "?" ProjectObject.FindByPathFullName "Werk", "" WorksetObject.LoadObject 3, "?" nothing
    ? Asked("", 3, "Anlage") -> nothing
    ? Read -> nothing
    )",
        {{L"Kit", kit.get()}, {L"Host", host->dispatch()}, {L"Work", workset.get()}});
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(WatchedProject, "a host that fails is reported with the member that asked it") {
    const auto source = object(L"Anlage|Pumpe");
    const auto content = create<ITessera>(L"Tessera.Tessera");
    call(content, &ITessera::putref_WorkSet, workset.get());
    const auto record = get(content, &ITessera::get_KelosObject);
    fail(L"PlainObject.get_SystemType");
    call(record, &ITesseraKelosObject::putref_Object, source.get());
    call(record, &ITesseraKelosObject::put_Object, source.get());
    const auto node = get(content, &ITessera::get_XMLNode, static_cast<IXMLDOMNode*>(nullptr));
    call(record, &ITesseraKelosObject::put_Object, static_cast<IKelosObject*>(nullptr));
    call(record, &ITesseraKelosObject::put_SystemUID, Bstr(L"P1").get());
    call(record, &ITesseraKelosObject::put_SystemType, 3L);
    fail(L"WorksetObject.LoadObject");
    CHECK_FALSE(get(record, &ITesseraKelosObject::get_Object));
    call(content, &ITessera::put_XMLNode, static_cast<IXMLDOMNode*>(nullptr), node.get());
    CHECK(take_errors() ==
          L"Tessera.KelosObject|Property Set 'Object'\n"
          L"Tessera.KelosObject|Property Let 'Object'\n"
          L"Tessera.KelosObject|Property Get 'Object'\n"
          L"Tessera.KelosObject|Property Let 'XMLNode'\n");
}
