// Tests of internals: reference counts, identity, and what a module and a thread count.

#include <functional>
#include <thread>

#include "automation/object.h"
#include "automation/thread_kept.h"
#include "support/com_fixture.h"

using automation::ComPtr;
using automation::live_count;
using automation::make;

namespace {

class Probe : public automation::Object<Probe, ITesseraDocument, IOleWindow> {
  public:
    static constexpr GUID private_id = {
        0x2f1c7a11, 0x5d0e, 0x4a43, {0x9b, 0x51, 0x6e, 0x1d, 0x0c, 0x7f, 0x33, 0x02}};

    explicit Probe(std::function<void(Probe&)> dying = {}) : dying_(std::move(dying)) {}
    ~Probe() {
        if (dying_) dying_(*this);
    }
    STDMETHODIMP get_Pointer(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Pointer(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP GetWindow(HWND*) override { return E_NOTIMPL; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    std::function<void(Probe&)> dying_;
};

int idle_calls = 0;
void count_idle() noexcept {
    ++idle_calls;
}

struct Kept {
    static inline int living = 0;
    Kept() { ++living; }
    ~Kept() { --living; }
};

}  // namespace

TEST_CASE("an object dies once, whatever its destructor does with its references") {
    const long before = live_count();
    int deaths = 0;
    ComPtr<Probe> holder;
    holder = make<Probe>([&](Probe& self) {
        ++deaths;
        // Code that runs now must not find the dying object in the pointer that let it go.
        CHECK_FALSE(holder);
        CHECK(test::reference_count(self.main_interface()) == 1);
        ComPtr<ITesseraDocument> taken = self.main_pointer();
        CHECK(taken.as<IOleWindow>());
    });
    CHECK(live_count() == before + 1);
    ComPtr<Probe> second = holder;
    CHECK(test::reference_count(holder->main_interface()) == 2);
    second = second;
    second = std::move(holder);
    CHECK(test::reference_count(second->main_interface()) == 1);
    holder = std::move(second);
    CHECK(deaths == 0);
    holder.reset();
    CHECK(deaths == 1);
    CHECK(live_count() == before);

    automation::lock_module(true);
    CHECK(live_count() == before + 1);
    automation::lock_module(false);
    CHECK(live_count() == before);
}

TEST_CASE("an object answers its roles with one identity, and its private id to its class alone") {
    const auto probe = make<Probe>();
    ComPtr<ITesseraDocument> document = probe->main_pointer();
    const auto window = document.as<IOleWindow>();
    REQUIRE(window);
    CHECK(automation::same_object(document.get(), window.get()));
    CHECK(automation::same_object(nullptr, nullptr));
    CHECK_FALSE(automation::same_object(document.get(), nullptr));
    CHECK(document.try_as<IProvideClassInfo>());
    CHECK_FALSE(document.try_as<ITesseraValue>());
    CHECK_FALSE(ComPtr<IUnknown>().as<ITesseraValue>());
    CHECK_THROWS_AS(document.as<ITesseraValue>(), automation::Error);

    CHECK(automation::own_object<Probe>(window.get()).get() == probe.get());
    CHECK_FALSE(automation::own_object<Probe>(nullptr));
    ComPtr<IStream> foreign;
    CreateStreamOnHGlobal(nullptr, TRUE, foreign.put());
    CHECK_FALSE(automation::own_object<Probe>(foreign.get()));

    void* refused = &refused;
    CHECK(probe->QueryInterface(__uuidof(ITesseraValue), &refused) == E_NOINTERFACE);
    CHECK(refused == nullptr);
    CHECK(probe->QueryInterface(IID_IUnknown, nullptr) == E_POINTER);
    auto* info = reinterpret_cast<ITypeInfo*>(&refused);
    CHECK(probe->GetTypeInfo(1, 0, &info) == DISP_E_BADINDEX);
    CHECK(info == nullptr);
    CHECK(probe->InterfaceSupportsErrorInfo(__uuidof(ITesseraDocument)) == S_OK);
    CHECK(probe->InterfaceSupportsErrorInfo(__uuidof(IOleWindow)) == S_FALSE);
    CHECK(probe->InterfaceSupportsErrorInfo(__uuidof(ITesseraValue)) == S_FALSE);
}

TEST_CASE("the last object of a thread lets go what the thread kept, and only there") {
    const auto here = make<Probe>();
    automation::add_thread_idle_hook(count_idle);
    automation::add_thread_idle_hook(count_idle);
    std::thread([] {
        auto first = make<Probe>();
        auto second = make<Probe>();
        Kept& kept = automation::ThreadKept<Kept>::get();
        CHECK(&automation::ThreadKept<Kept>::get() == &kept);
        CHECK(Kept::living == 1);
        first.reset();
        CHECK(idle_calls == 0);
        CHECK(Kept::living == 1);
        second.reset();
        CHECK(idle_calls == 1);
        CHECK(Kept::living == 0);
        // What is asked for again is made again.
        const auto third = make<Probe>();
        automation::ThreadKept<Kept>::get();
        CHECK(Kept::living == 1);
    }).join();
    CHECK(idle_calls == 2);
    CHECK(Kept::living == 0);
}
