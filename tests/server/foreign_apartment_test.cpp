// Through the DLL: its classes are created by a thread that is in no single-threaded apartment, for
// which the platform makes one. That lives as long as the process, so this test has one of its own.
#include <thread>

#include "support/com_fixture.h"

using namespace test;

TEST_CASE("any thread can use an object, by the marshalling that the manifests name") {
    HRESULT added = E_FAIL;
    long count = 0;
    std::thread thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        {
            const auto items = create<ITesseraValueItems>(L"Tessera.ValueItems");
            ComPtr<ITesseraValueItem> item;
            const Variant value(1L);
            added = items->AddNew(value, value, 0, uccDefault, uccDefault, -1, item.put());
            items->get_Count(&count);
        }
        CoUninitialize();
    });
    thread.join();
    CHECK(added == S_OK);
    CHECK(count == 1);
}
