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

// A failure goes through the component, the host and the run-time of both.
void use_and_unload() {
    {
        const auto service = create<IHostKitService>(L"Kelos.Service");
        call(service, &IHostKitService::Clear);
        const auto functions = create<ITesseraGFunctions>(L"Tessera.GFunctions");
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
}

}  // namespace

TEST_CASE("the DLLs may be loaded and unloaded as often as a process likes") {
    use_and_unload();
    const FreeSlots before;
    for (int i = 0; i < 100; ++i)
        use_and_unload();
    CHECK(FreeSlots() == before);
}
