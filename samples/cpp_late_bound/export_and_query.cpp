// Exports a document of the sample project, saves the content document, reads it back and prints
// its cells; then walks a query. Every folder of samples does the same in its language.
//
//     export_and_query samples\plant.xml Kurzliste.content.xml
//
// Late bound: nothing of the component is needed to compile it, members are called by their names.
#include <cstdio>
#include <string>

#include "late_object.h"

namespace {

constexpr int ucc_default = 0;
constexpr int ucc_state_abort = 3;

void print(const _bstr_t& text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(size, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    std::fputs(utf8.c_str(), stdout);
}

// A failing member of the component reports to the host and returns what it has.
[[noreturn]] void fail(const _bstr_t& sentence) {
    print(sentence + L"\n");
    const LateObject errors = create(L"Kelos.Service").object(L"Errors");
    const long count = errors.get(L"Count");
    for (long i = 1; i <= count; ++i)
        print(_bstr_t(errors.object(L"Item", i).get(L"Description")) + L"\n");
    throw _com_error(E_FAIL);
}

// The document's own script, or, when it has none, the one that maps the rows of its mapping table.
LateObject export_document(const LateObject& kit, const _bstr_t& name) {
    const LateObject runner = create(L"Tessera.VexScript");
    const LateObject document = kit.object(L"Document", name);
    runner.set_object(L"WorkSet", kit.get(L"WorkSet"));
    runner.set_object(L"Document", document.value());
    const LateObject contents(
        runner.call(L"Execute", runner.call(L"GetVexScript", document.value())));
    if (contents.is_nothing()) fail(L"There is no content document of " + name);
    return contents;
}

LateObject empty_document() {
    const LateObject document(create(L"Tessera.Tessera").call(L"CreateDOMDocument"));
    document.set(L"async", false);
    return document;
}

// Without the declaration, which says UCS-2, the parser saves the document as UTF-8.
void save_contents(const LateObject& contents, const _bstr_t& path) {
    const LateObject copy = empty_document();
    copy.call(L"loadXML", contents.object(L"documentElement").get(L"xml"));
    copy.call(L"save", path);
}

// Values of objects are items, the first one is the current value; fixed values have no items.
_variant_t displayed_value(const LateObject& content) {
    const LateObject items = content.object(L"ValueItems");
    if (long(items.get(L"Count")) > 0)
        return items.object(L"Item", 1).get(L"DisplayValue", ucc_default);
    return content.object(L"Value").get(L"KelosValue", ucc_default);
}

void print_cell(const _variant_t& node) {
    const LateObject content = create(L"Tessera.Tessera");
    content.set_object(L"XMLNode", nothing(), node);
    const _bstr_t pointer(content.object(L"Document").get(L"Pointer"));
    const _bstr_t path(content.object(L"KelosObject").get(L"PathFullName"));
    const _bstr_t name(content.object(L"Property").get(L"GetName"));
    print(pointer + L"  " + path + L"  " + name + L" = " + _bstr_t(displayed_value(content)) +
          L"\n");
}

void print_cells(const _bstr_t& path) {
    const LateObject contents = empty_document();
    if (!bool(contents.call(L"load", path))) fail(path + L" cannot be read");
    const LateObject nodes(contents.call(L"selectNodes", L"Contents/Content"));
    const long count = nodes.get(L"length");
    for (long i = 0; i < count; ++i)
        print_cell(nodes.get(L"item", i));
}

// The cursor shows the host's progress form while it walks; its button ends the walk.
void print_rows(const LateObject& kit, const _bstr_t& name) {
    const LateObject query = kit.object(L"Query", name);
    if (query.is_nothing()) fail(L"There is no query " + name);
    query.call(L"Run");
    const LateObject cursor = create(L"Tessera.HQuery");
    cursor.set_object(L"WorkSet", kit.get(L"WorkSet"));
    cursor.set_object(L"Query", query.value());
    const long column_count = cursor.get(L"ColumnCount");
    cursor.call(L"MoveFirst");
    while (!bool(cursor.get(L"EOF"))) {
        for (long i = 1; i <= column_count; ++i) {
            const _bstr_t heading(cursor.object(L"ColumnItem", i).get(L"Heading"));
            const _bstr_t text(cursor.get(L"CellText", i, ucc_default));
            print((i > 1 ? L", " : L"") + heading + L": " + text);
        }
        print(L"\n");
        cursor.call(L"MoveNext");
        if (long(cursor.get(L"State")) == ucc_state_abort) break;
    }
}

// Every object is released when this returns, before COM ends.
void run(const _bstr_t& project, const _bstr_t& content_file) {
    const LateObject kit = create(L"Kelos.HostKit");
    kit.call(L"Open", project);
    save_contents(export_document(kit, L"Kurzliste"), content_file);
    print_cells(content_file);
    print_rows(kit, L"Pumpenliste");
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
