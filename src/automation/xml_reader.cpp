#include "automation/xml_reader.h"

#include "automation/error.h"

namespace automation {

// The reader's one function is looked up by name, because not every tool chain has its import
// library.
ComPtr<IXmlReader> create_xml_reader() {
    const HMODULE library = LoadLibraryExW(L"xmllite.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library) fail(HRESULT_FROM_WIN32(GetLastError()));
    const auto found = reinterpret_cast<void (*)()>(GetProcAddress(library, "CreateXmlReader"));
    if (!found) fail(HRESULT_FROM_WIN32(GetLastError()));
    ComPtr<IXmlReader> reader;
    check(reinterpret_cast<decltype(&CreateXmlReader)>(found)(
        __uuidof(IXmlReader), reinterpret_cast<void**>(reader.put()), nullptr));
    check(reader->SetProperty(XmlReaderProperty_MaxElementDepth, 0));
    check(reader->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Prohibit));
    return reader;
}

}  // namespace automation
