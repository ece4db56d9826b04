// Through the DLLs: a process that loads, uses and unloads them again and again.
#include "support/com_fixture.h"

using namespace test;

namespace {

struct FreeSlots {
    DWORD thread = TlsAlloc();
    DWORD fiber = FlsAlloc(nullptr);
    FreeSlots() {
        TlsFree(thread);
        FlsFree(fiber);
    }
    bool operator==(const FreeSlots&) const = default;
};

// The file of the module that an object's code is in.
std::wstring file_of(IUnknown* object) {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        **reinterpret_cast<const wchar_t***>(object), &module);
    wchar_t path[MAX_PATH];
    return std::wstring(path, GetModuleFileNameW(module, path, MAX_PATH));
}

// A failure goes through the component, the host and the run-time of both.
void use_and_unload() {
    std::wstring path;
    {
        const auto service = create<IHostKitService>(L"Kelos.Service");
        call(service, &IHostKitService::Clear);
        const auto functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");
        path = file_of(functions.get());
        const Bstr wrong(L"@@UU@@C@@?");
        CHECK(get(functions, &ITesseraGFunctions::Decode, wrong.get()).empty());
        const auto errors = get(service, &IHostKitService::get_Errors);
        CHECK(get(errors, &IHostKitErrors::get_Count) == 1);
        CHECK_THROWS_AS(get(errors, &IHostKitErrors::get_Item, 2L), automation::Error);
        call(service, &IHostKitService::Clear);
    }
    CoFreeUnusedLibrariesEx(0, 0);
    CHECK_FALSE(GetModuleHandleW(L"Tessera.dll"));
    CHECK_FALSE(GetModuleHandleW(L"KelosHostKit.dll"));
    // Nobody has the file any more, so that it can be replaced.
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    CHECK(file != INVALID_HANDLE_VALUE);
    CloseHandle(file);
}

}  // namespace

TEST_CASE("a DLL lets go of its type libraries with its last object") {
    for (const wchar_t* resource : {L"\\1", L"\\2"}) {
        for (const wchar_t* program_name : {L"Tessera.GFunctions", L"Kelos.HostKit"}) {
            CAPTURE(std::wstring(program_name) + resource);
            auto object = create<IDispatch>(program_name);
            ComPtr<ITypeInfo> info;
            CHECK(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()) == S_OK);
            info.reset();
            // The platform loads a library once, for all who ask for it.
            ComPtr<ITypeLib> library;
            const std::wstring file = file_of(object.get());
            automation::check(
                LoadTypeLibEx((file + resource).c_str(), REGKIND_NONE, library.put()));
            const auto references = [&] { return library->AddRef(), library->Release(); };
            CHECK(references() > 1);
            object.reset();
            CHECK(references() == 1);
        }
    }
}

TEST_CASE("the DLLs may be loaded and unloaded as often as a process likes") {
    use_and_unload();
    const FreeSlots before;
    for (int i = 0; i < 100; ++i)
        use_and_unload();
    CHECK(FreeSlots() == before);
}
