// Through the DLL: its classes are created by a thread that is in no single-threaded apartment, for
// which the platform makes one. That lives as long as the process, so this test has one of its own.
#include <thread>

#include "support/com_fixture.h"

using namespace test;

namespace {

// Wine registers a library that it marshals by. What an earlier run has left would do in the place
// of the manifests.
struct WithoutRegistration {
    WithoutRegistration() { take_out(); }
    ~WithoutRegistration() { take_out(); }

    static void take_out() {
        const HMODULE module = LoadLibraryW(L"Tessera.dll");
        const auto unregister = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllUnregisterServer")));
        REQUIRE(unregister() == S_OK);
        FreeLibrary(module);
    }
};

}  // namespace

TEST_CASE("any thread can use an object, by the marshalling that the manifests name") {
    const WithoutRegistration only_manifests;
    HRESULT added = E_FAIL;
    long count = 0;
    std::thread thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        try {
            const auto items = create<ITesseraValueItems>(L"Tessera.ValueItems");
            ComPtr<ITesseraValueItem> item;
            const Variant value(1L);
            added = items->AddNew(value, value, 0, uccDefault, uccDefault, -1, item.put());
            items->get_Count(&count);
        } catch (const automation::Error&) {
            added = automation::current_error().code;
        }
        CoUninitialize();
    });
    thread.join();
    CHECK(added == S_OK);
    CHECK(count == 1);
}
