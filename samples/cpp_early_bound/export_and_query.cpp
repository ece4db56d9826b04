// Exports a document of the sample project, saves the content document, reads it back and prints
// its cells; then walks a query. Every folder of samples does the same in its language.
//
//     export_and_query samples\plant.xml Kurzliste.content.xml
//
// Early bound: with the interfaces that the IDL compiler makes of tessera.idl and hostkit.idl.
#include <windows.h>

#include <comdef.h>
#include <wrl/client.h>

#include <cstdio>
#include <string>

#include "hostkit.h"
#include "tessera.h"

using Microsoft::WRL::ComPtr;

namespace {

// Only a call that cannot be made at all fails, with an exception; see `fail` for the others.
void check(HRESULT result) {
    _com_util::CheckError(result);
}

template <class Interface>
ComPtr<Interface> create(const wchar_t* program_name) {
    CLSID class_id;
    ComPtr<Interface> object;
    check(CLSIDFromProgID(program_name, &class_id));
    check(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                           reinterpret_cast<void**>(object.GetAddressOf())));
    return object;
}

void print(const _bstr_t& text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(size, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    std::fputs(utf8.c_str(), stdout);
}

// A failing member of the component reports to the host and returns what it has.
[[noreturn]] void fail(const _bstr_t& sentence) {
    print(sentence + L"\n");
    const auto service = create<IHostKitService>(L"Kelos.Service");
    ComPtr<IHostKitErrors> errors;
    long count = 0;
    check(service->get_Errors(&errors));
    check(errors->get_Count(&count));
    for (long i = 1; i <= count; ++i) {
        ComPtr<IHostKitError> error;
        _bstr_t description;
        check(errors->get_Item(i, &error));
        check(error->get_Description(description.GetAddress()));
        print(description + L"\n");
    }
    throw _com_error(E_FAIL);
}

// The document's own script, or, when it has none, the one that maps the rows of its mapping table.
ComPtr<IXMLDOMDocument> export_document(IHostKit* kit, const _bstr_t& name) {
    const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
    ComPtr<IKelosWorkset> workset;
    ComPtr<IKelosDocument> document;
    ComPtr<IXMLDOMDocument> contents;
    _bstr_t script;
    check(kit->get_WorkSet(&workset));
    check(kit->get_Document(name, &document));
    check(runner->putref_WorkSet(workset.Get()));
    check(runner->putref_Document(document.Get()));
    check(runner->GetVexScript(document.Get(), VARIANT_FALSE, script.GetAddress()));
    check(runner->Execute(script, &contents));
    if (!contents) fail(L"There is no content document of " + name);
    return contents;
}

ComPtr<IXMLDOMDocument> empty_document() {
    ComPtr<IXMLDOMDocument> document;
    check(create<ITessera>(L"Tessera.Tessera")->CreateDOMDocument(&document));
    check(document->put_async(VARIANT_FALSE));
    return document;
}

// Without the declaration, which says UCS-2, the parser saves the document as UTF-8.
void save_contents(IXMLDOMDocument* contents, const _bstr_t& path) {
    const auto copy = empty_document();
    ComPtr<IXMLDOMElement> root;
    _bstr_t xml;
    VARIANT_BOOL well_formed;
    check(contents->get_documentElement(&root));
    check(root->get_xml(xml.GetAddress()));
    check(copy->loadXML(xml, &well_formed));
    check(copy->save(_variant_t(path)));
}

// Values of objects are items, the first one is the current value; fixed values have no items.
_bstr_t displayed_value(ITessera* content) {
    ComPtr<ITesseraValueItems> items;
    ComPtr<ITesseraValueItem> item;
    ComPtr<ITesseraValue> value;
    _variant_t result;
    long count = 0;
    check(content->get_ValueItems(&items));
    check(items->get_Count(&count));
    if (count > 0) {
        check(items->get_Item(1, &item));
        check(item->get_DisplayValue(uccDefault, &result));
    } else {
        check(content->get_Value(&value));
        check(value->get_KelosValue(uccDefault, &result));
    }
    return _bstr_t(result);
}

void print_cell(IXMLDOMNode* node) {
    const auto content = create<ITessera>(L"Tessera.Tessera");
    ComPtr<ITesseraDocument> document;
    ComPtr<ITesseraKelosObject> object;
    ComPtr<ITesseraProperty> property;
    _bstr_t pointer, path, name;
    check(content->putref_XMLNode(nullptr, node));
    check(content->get_Document(&document));
    check(content->get_KelosObject(&object));
    check(content->get_Property(&property));
    check(document->get_Pointer(pointer.GetAddress()));
    check(object->get_PathFullName(path.GetAddress()));
    check(property->get_GetName(name.GetAddress()));
    print(pointer + L"  " + path + L"  " + name + L" = " + displayed_value(content.Get()) + L"\n");
}

void print_cells(const _bstr_t& path) {
    const auto contents = empty_document();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    check(contents->load(_variant_t(path), &loaded));
    if (!loaded) fail(path + L" cannot be read");
    ComPtr<IXMLDOMNodeList> nodes;
    ComPtr<IXMLDOMNode> node;
    check(contents->selectNodes(_bstr_t(L"Contents/Content"), &nodes));
    while (nodes->nextNode(node.ReleaseAndGetAddressOf()) == S_OK)
        print_cell(node.Get());
}

void print_row(ITesseraHQuery* cursor, short column_count) {
    for (short i = 1; i <= column_count; ++i) {
        ComPtr<IKelosQColumnDef> column;
        _bstr_t heading, text;
        check(cursor->get_ColumnItem(i, &column));
        check(column->get_Heading(heading.GetAddress()));
        check(cursor->get_CellText(i, uccDefault, text.GetAddress()));
        print((i > 1 ? L", " : L"") + heading + L": " + text);
    }
    print(L"\n");
}

// The cursor shows the host's progress form while it walks; its button ends the walk.
void print_rows(IHostKit* kit, const _bstr_t& name) {
    const auto cursor = create<ITesseraHQuery>(L"Tessera.HQuery");
    ComPtr<IKelosWorkset> workset;
    ComPtr<IKelosQuery> query;
    short column_count = 0;
    check(kit->get_WorkSet(&workset));
    check(kit->get_Query(name, &query));
    if (!query) fail(L"There is no query " + name);
    check(query->Run());
    check(cursor->putref_WorkSet(workset.Get()));
    check(cursor->putref_Query(query.Get()));
    check(cursor->get_ColumnCount(&column_count));

    VARIANT_BOOL ended = VARIANT_FALSE;
    uceProgressState state = uccStateClosed;
    check(cursor->MoveFirst());
    while (check(cursor->get_EOF(&ended)), !ended && state != uccStateAbort) {
        print_row(cursor.Get(), column_count);
        check(cursor->MoveNext());
        check(cursor->get_State(&state));
    }
}

// Every object is released when this returns, before COM ends.
void run(const _bstr_t& project, const _bstr_t& content_file) {
    const auto kit = create<IHostKit>(L"Kelos.HostKit");
    ComPtr<IKelosWorkset> workset;
    check(kit->Open(project, &workset));
    save_contents(export_document(kit.Get(), L"Kurzliste").Get(), content_file);
    print_cells(content_file);
    print_rows(kit.Get(), L"Pumpenliste");
}

}  // namespace

extern "C" int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        std::puts("usage: export_and_query PROJECT CONTENT_FILE");
        return 2;
    }
    SetConsoleOutputCP(CP_UTF8);
    CoInitialize(nullptr);
    int code = 0;
    try {
        run(arguments[1], arguments[2]);
    } catch (const _com_error& error) {
        std::printf("failed: 0x%08lX\n", error.Error());
        code = 1;
    }
    CoUninitialize();
    return code;
}
