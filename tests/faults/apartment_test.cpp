// Through the DLL: an object that another thread calls.
#include <thread>

#include "automation/dispatch.h"
#include "support/com_fixture.h"

using namespace test;

TEST_CASE_FIXTURE(ComFixture,
                  "another thread's calls come through the platform to the object's own") {
    const auto list = create<ITesseraValueItems>(L"Tessera.ValueItems");
    get(list, &ITesseraValueItems::AddNew, static_cast<VARIANT>(Variant(1L)),
        static_cast<VARIANT>(Variant(L"a")), short{0}, uccDefault, uccDefault, -1L);
    IStream* stream = nullptr;
    REQUIRE(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, list.get(), &stream) == S_OK);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    long count = 0;
    bool is_foreign = false;
    std::thread thread([&] {
        OleInitialize(nullptr);
        {
            ComPtr<IDispatch> foreign;
            CoGetInterfaceAndReleaseStream(stream, IID_IDispatch,
                                           reinterpret_cast<void**>(foreign.put()));
            is_foreign = foreign && foreign.get() != list.get();
            if (is_foreign) count = automation::get_property(foreign.get(), L"Count").lVal;
        }
        OleUninitialize();
        SetEvent(done);
    });
    DWORD index = 0;
    CoWaitForMultipleHandles(COWAIT_DISPATCH_CALLS, 60000, 1, &done, &index);
    thread.join();
    CloseHandle(done);
    CHECK(is_foreign);
    CHECK(count == 1);
}
