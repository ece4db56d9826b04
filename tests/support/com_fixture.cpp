#include "support/com_fixture.h"

#include "automation/module.h"
#include "text/utf8.h"

namespace doctest {

String StringMaker<std::wstring>::convert(const std::wstring& text) {
    return ("\"" + tessera::to_utf8(automation::as_u16(text)) + "\"").c_str();
}

String StringMaker<automation::Bstr>::convert(const automation::Bstr& text) {
    return StringMaker<std::wstring>::convert(text.str());
}

}  // namespace doctest

namespace test {

ComFixture::ComFixture() : service_(create<IHostKitService>(L"Kelos.Service")) {
    // Stands for the object through which a caller would reach the functions under test: what the
    // component shares per thread is let go when it dies.
    automation::object_born();
    call(service_, &IHostKitService::Clear);
    call(service_, &IHostKitService::put_Language, hklGerman);
}

ComFixture::~ComFixture() {
    service_.reset();
    automation::object_died();
    if (shares_process_) return;
    CHECK(is_idle(L"Tessera.dll"));
    CHECK(is_idle(L"KelosHostKit.dll"));
    CHECK(automation::live_count() == 0);
}

long ComFixture::error_count() const {
    return get(get(service_, &IHostKitService::get_Errors), &IHostKitErrors::get_Count);
}

long ComFixture::message_count() const {
    return get(get(service_, &IHostKitService::get_Messages), &IHostKitMessages::get_Count);
}

std::wstring ComFixture::error(long n) const {
    const auto errors = get(service_, &IHostKitService::get_Errors);
    const auto item = get(errors, &IHostKitErrors::get_Item, n);
    return get(item, &IHostKitError::get_Source).str() + L"|" +
           get(item, &IHostKitError::get_Label).str();
}

HRESULT ComFixture::error_code(long n) const {
    const auto errors = get(service_, &IHostKitService::get_Errors);
    return get(get(errors, &IHostKitErrors::get_Item, n), &IHostKitError::get_Number);
}

std::wstring ComFixture::message(long n) const {
    const auto messages = get(service_, &IHostKitService::get_Messages);
    const auto item = get(messages, &IHostKitMessages::get_Item, n);
    return get(item, &IHostKitMessage::get_Title).str() + L"|" +
           std::to_wstring(get(item, &IHostKitMessage::get_Style)) + L"|" +
           get(item, &IHostKitMessage::get_Text).str();
}

std::wstring ComFixture::trace(long n) const {
    const auto traces = get(service_, &IHostKitService::get_Traces);
    return get(traces, &IHostKitTraces::get_Item, n).str();
}

std::wstring sample(std::wstring_view name) {
    return TESSERA_SAMPLES + std::wstring(name);
}

std::wstring test_data(std::wstring_view name) {
    return TESSERA_TEST_DATA + std::wstring(name);
}

ProjectFixture::ProjectFixture(const std::wstring& path) : kit(create<IHostKit>(L"Kelos.HostKit")) {
    const Bstr file(path);
    workset = get(kit, &IHostKit::Open, file.get());
}

ComPtr<IKelosDocument> ProjectFixture::document(const wchar_t* name) const {
    return get(kit, &IHostKit::get_Document, Bstr(name).get());
}

ComPtr<IKelosObject> ProjectFixture::object(const wchar_t* path) const {
    return get(kit, &IHostKit::get_Object, Bstr(path).get());
}

bool is_idle(const wchar_t* dll) {
    const HMODULE module = GetModuleHandleW(dll);
    if (!module) return true;
    const auto can_unload = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
    return can_unload && can_unload() == S_OK;
}

ULONG reference_count(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

}  // namespace test
