#include "faults/scenarios.h"

#include <memory>

#include "script/script_text.h"
#include "support/content_text.h"

namespace test {
namespace {

// A row of every kind, a fixed value, and a query document.
constexpr wchar_t every_row[] =
    L"Sub DoVex()\r\n"
    L"Set P = MappingTableExcel.SourceObject(1)\r\n"
    L"Content \"S!A1\", P, \"Description\", \"\", \"\", \"IO\"\r\n"
    L"Content \"S!A2\", P, \"10\", \"\", \"\", \"O\"\r\n"
    L"Content \"S!A3\", P, \"SystemUID\", \"\", \"\", \"\"\r\n"
    L"Content \"S!A4\", P.AttributeByFullName(\"Process.Pressure\"), \"Value\", \"\", \"mbar\", "
    L"\"\"\r\n"
    L"Content \"S!A5\", P.AttributeByFullName(\"Build.Note\"), \"GetXValue\", 2, \"\", \"\"\r\n"
    L"Content \"S!A6\", P, \"GetInternationalDescription\", 2, \"\", \"\"\r\n"
    L"Content \"S!A7\", P.AttributeByFullName(\"Build.Material\"), \"DisplayValue\", \"\", \"\", "
    L"\"\"\r\n"
    L"Content \"S!A8\", P, \"Name & Description\", \"\", \"\", \"\"\r\n"
    L"ContentFix \"S!B1\", Project.SystemUID\r\n"
    L"ContentFix \"S!B2\", ReportObject\r\n"
    L"Content \"Q!A1\", WorkSet.LoadObject(8, \"D6\"), \"\", \"\", \"\", \"\"\r\n"
    L"End Sub";

std::wstring xml_of(const dom::Document& document) {
    if (!document) return L"nothing";
    const auto root = get(document, &IXMLDOMDocument::get_documentElement);
    return root ? get(root, &IXMLDOMElement::get_xml).str() : L"no root";
}

template <class T>
std::shared_ptr<T> shared(T value = {}) {
    return std::make_shared<T>(std::move(value));
}

}  // namespace

std::wstring wrong_in_contents(const std::wstring& xml) {
    if (!xml.starts_with(L"<Contents")) return {};
    const auto document = dom::create_document();
    if (!get(document, &IXMLDOMDocument::loadXML, Bstr(xml).get())) return L"not well-formed";
    for (const dom::Node& content : contents_of(document))
        for (const wchar_t* const record :
             {L"KelosObject", L"Property", L"Value", L"Document", L"ValueItems"})
            if (!dom::child_named(content, record)) return std::wstring(L"without ") + record;
    return {};
}

Scenario ScenarioFixture::script(const wchar_t* name, const wchar_t* document_name,
                                 std::wstring_view text, const wchar_t* editor) {
    return {name, [=, this, text = std::wstring(text)] {
                const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
                const auto sheet = document(document_name);
                call(runner, &ITesseraVexScript::putref_WorkSet, workset.get());
                call(runner, &ITesseraVexScript::putref_Document, sheet.get());
                ComPtr<IDispatch> control;
                if (editor) {
                    control = create<IDispatch>(editor);
                    const auto rich = control.try_as<IHostKitScriptControl>();
                    const ComPtr<IDispatch> with_text =
                        rich ? get(rich, &IHostKitScriptControl::get_Object) : control;
                    automation::put_property(with_text.get(), L"Text", Variant(text));
                }
                // Without a text the runner takes the control's.
                const Bstr given(editor ? std::wstring_view() : std::wstring_view(text));
                call(runner, &ITesseraVexScript::putref_EditControl, control.get());
                const auto result = shared<dom::Document>();
                return Run{[=] { *result = get(runner, &ITesseraVexScript::Execute, given.get()); },
                           [=] { return xml_of(*result); },
                           [=] {
                               runner->putref_EditControl(nullptr);
                               runner->putref_WorkSet(nullptr);
                               runner->putref_Document(nullptr);
                               get(runner, &ITesseraVexScript::Execute,
                                   Bstr(L"Sub DoVex()\r\nContentFix \"N!A1\", 1\r\nEnd Sub").get());
                           }};
            }};
}

Scenario ScenarioFixture::stored_script(const wchar_t* name, const wchar_t* document_name,
                                        const wchar_t* before) {
    return {
        name, [=, this] {
            const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
            const auto sheet = document(document_name);
            const auto attributes = get(sheet, &IKelosObject::get_Attributes);
            const auto stored = [=] {
                const auto script = get(attributes, &IKelosAttributes::get_Item,
                                        static_cast<VARIANT>(Variant(L"Vex")));
                return std::wstring(script ? get(script, &IKelosAttribute::get_Value, 1L).text()
                                           : L"");
            };
            get(runner, &ITesseraVexScript::SetVexScript, sheet.get(), Bstr(before).get());
            const auto read = shared<std::wstring>();
            return Run{
                [=] {
                    *read =
                        get(runner, &ITesseraVexScript::GetVexScript, sheet.get(), VARIANT_FALSE)
                            .str();
                    const Bstr mine(L"Sub DoVex()\r\n'mine\r\nEnd Sub");
                    get(runner, &ITesseraVexScript::SetVexScript, sheet.get(), mine.get());
                },
                [=] { return *read + L"|" + stored(); }, [=] { runner->putref_Document(nullptr); }};
        }};
}

Scenario ScenarioFixture::query(const wchar_t* name, ReadQuery read, ChangeQuery change) {
    return {name, [=, this] {
                const auto content = create<ITesseraQContent>(L"Tessera.QContent");
                const auto cursor = get(content, &ITesseraQContent::get_HQuery);
                const auto query = get(kit, &IHostKit::get_Query, Bstr(L"Plan").get());
                call(query, &IKelosQuery::Run);
                const auto text = shared<std::wstring>();
                return Run{[=, this] {
                               call(cursor, &ITesseraHQuery::putref_WorkSet, workset.get());
                               call(cursor, &ITesseraHQuery::putref_Query, query.get());
                               *text = read(content.get(), cursor.get());
                               cursor->putref_Query(nullptr);
                           },
                           [=] { return *text; }, [=] { change(cursor.get(), query.get()); }};
            }};
}

Scenario ScenarioFixture::query_texts() {
    return query(
        L"query texts",
        [](ITesseraQContent* content, ITesseraHQuery* cursor) {
            std::wstring text = xml_of(get(content, &ITesseraQContent::XMLColumns));
            for (int i = 0; i < 30 && !get(cursor, &ITesseraHQuery::get_EOF); ++i) {
                text += xml_of(get(content, &ITesseraQContent::XMLRow));
                Bstr row;
                get(content, &ITesseraQContent::XMLRowAsString, row.put(),
                    i % 2 ? VARIANT_TRUE : VARIANT_FALSE);
                text += row.str();
                get(cursor, &ITesseraHQuery::get_CellText, short{3}, uccMSOfficeString);
                cursor->MoveNext();
            }
            return text;
        },
        [](ITesseraHQuery* cursor, IKelosQuery*) {
            cursor->putref_WorkSet(nullptr);
            cursor->putref_Query(nullptr);
            cursor->MoveFirst();
        });
}

Scenario ScenarioFixture::query_document() {
    return query(
        L"query document",
        [](ITesseraQContent* content, ITesseraHQuery*) {
            return xml_of(get(content, &ITesseraQContent::XMLComplete));
        },
        [](ITesseraHQuery* cursor, IKelosQuery* query) { cursor->putref_Query(query); });
}

Scenario ScenarioFixture::reading() {
    return {L"reading", [this] {
                const auto writer = create<ITessera>(L"Tessera.Tessera");
                const auto pump = object(L"Anlage|Pumpe");
                const auto written = get(writer, &ITessera::get_KelosObject);
                call(written, &ITesseraKelosObject::putref_Object, pump.get());
                const auto list = get(writer, &ITessera::get_ValueItems);
                for (int i = 0; i < 3; ++i)
                    get(list, &ITesseraValueItems::AddNew,
                        static_cast<VARIANT>(Variant(pump.get())),
                        static_cast<VARIANT>(Variant(L"shown")), short{1031}, uccVBString,
                        uccVBString, -1L);
                const auto reader = create<ITessera>(L"Tessera.Tessera");
                call(reader, &ITessera::putref_WorkSet, workset.get());
                const auto host_object = get(reader, &ITessera::get_KelosObject);
                const auto text = shared<std::wstring>();
                return Run{
                    [=] {
                        const auto node = get(writer, &ITessera::get_XMLNode, dom::Node().get());
                        call(reader, &ITessera::putref_XMLNode, dom::Node().get(), node.get());
                        const auto found = get(host_object, &ITesseraKelosObject::get_Object);
                        *text = get(node, &IXMLDOMNode::get_xml).str() + (found ? L"found" : L"");
                    },
                    [=] { return *text; },
                    [=] {
                        get(list, &ITesseraValueItems::Remove, static_cast<VARIANT>(Variant(1L)));
                        written->putref_Object(nullptr);
                        host_object->putref_Object(nullptr);
                        host_object->put_SystemUID(Bstr(L"changed meanwhile").get());
                        host_object->put_PathFullName(Bstr(L"also changed").get());
                    }};
            }};
}

Scenario ScenarioFixture::progress() {
    return {L"progress", [this] {
                const auto shown = create<ITesseraProgress>(L"Tessera.Progress");
                return Run{[=, this] {
                               for (const short percentage : {0, 50, 100}) {
                                   shown->put_Percentage(percentage);
                                   if (form_count() > 0) {
                                       const auto form = get(this->form(), &IHostKitForm::get_Form);
                                       const auto embedded = form.as<IKelosVBUsercontrol>();
                                       get(embedded, &IKelosVBUsercontrol::get_WPFControl);
                                       embedded->UpdateLayout();
                                   }
                               }
                           },
                           [=, this] {
                               shown->StopProcess();
                               return std::to_wstring(form_count());
                           },
                           [=, this] {
                               if (form_count() > 0) DestroyWindow(form_window());
                               shown->StopProcess();
                           }};
            }};
}

Scenario ScenarioFixture::encoding() {
    return {L"encoding", [] {
                const auto functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");
                const auto text = shared<std::wstring>();
                return Run{[=] {
                               const Bstr encoded = get(functions, &ITesseraGFunctions::Encode,
                                                        Bstr(L"a text, a text").get());
                               *text =
                                   get(functions, &ITesseraGFunctions::Decode, encoded.get()).str();
                           },
                           [=] { return *text; }};
            }};
}

std::vector<Scenario> ScenarioFixture::scenarios() {
    const wchar_t* const good = L"Sub DoVex()\r\nContentFix \"S!A1\", 1\r\nEnd Sub";
    const wchar_t* const failing = L"Sub DoVex()\r\nContentFix \"S!A1\", 1\r\nx = 1 / 0\r\nEnd Sub";
    return {
        script(L"export", L"Datenblatt", automation::as_wide(tessera::default_mapping_script())),
        script(L"rows of every kind", L"Datenblatt", every_row),
        script(L"script in a text box", L"Rahmen", good, L"Kelos.TextBox"),
        script(L"script in the editor", L"Rahmen", good, L"Kelos.ScriptControl"),
        script(L"failing script", L"Leer", failing),
        script(L"failing script in a text box", L"Leer", failing, L"Kelos.TextBox"),
        script(L"failing script in the editor", L"Leer", failing, L"Kelos.ScriptControl"),
        stored_script(L"stored script", L"Gespeichert", L"Sub DoVex()\r\n'before\r\nEnd Sub"),
        stored_script(L"generated script", L"Rahmen", L"Sub DoVex()\r\nEnd Sub"),
        stored_script(L"delegated script", L"Delegiert", L""),
        query_texts(),
        query_document(),
        reading(),
        progress(),
        encoding()};
}

}  // namespace test
