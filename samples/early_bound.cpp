// An early-bound client: reads one property of one object into a content element of its own.
// Build it with the interfaces that the IDL compiler makes of tessera.idl and hostkit.idl.

#include <cstdio>

#include "hostkit.h"
#include "tessera.h"

namespace {

template <class Interface>
Interface* create(const wchar_t* program_name) {
    CLSID class_id;
    Interface* object = nullptr;
    if (SUCCEEDED(CLSIDFromProgID(program_name, &class_id)))
        CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                         reinterpret_cast<void**>(&object));
    return object;
}

}  // namespace

extern "C" int wmain() {
    CoInitialize(nullptr);
    ITessera* const content = create<ITessera>(L"Tessera.Tessera");
    ITesseraDocument* position = nullptr;
    content->get_Document(&position);
    BSTR pointer = SysAllocString(L"Sheet1!B7");
    position->put_Pointer(pointer);

    IXMLDOMNode* element = nullptr;
    BSTR xml = nullptr;
    content->get_XMLNode(nullptr, &element);  // nothing as owner: a new document
    element->get_xml(&xml);
    std::printf("%ls\n", xml);

    SysFreeString(xml);
    SysFreeString(pointer);
    element->Release();
    position->Release();
    content->Release();
    CoUninitialize();
    return 0;
}
