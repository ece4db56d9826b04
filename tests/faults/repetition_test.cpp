// Through the DLL: what users do, again and again, and on two threads by turns.
#include <mutex>
#include <thread>

#include "automation/dom.h"
#include "faults/scenarios.h"
#include "support/full_run.h"
#include "support/heap.h"

using namespace test;

namespace {

int repetitions() {
    return is_full_run() ? 10000 : 30;
}

// What one call in the middle of many leaves allocated.
template <class Act>
double bytes_left(int times, Act&& act) {
    for (int i = 0; i < 20; ++i)
        act();
    const std::size_t before = busy_bytes();
    for (int i = 0; i < times; ++i)
        act();
    const auto grown = static_cast<std::ptrdiff_t>(busy_bytes() - before);
    return static_cast<double>(grown) / times;
}

}  // namespace

TEST_CASE_FIXTURE(ScenarioFixture, "no repetition leaves anything behind") {
    // Wine's parser loses the declaration of a document, and some of its text.
    const double platform = bytes_left(100, [] {
        const auto document = dom::create_document();
        dom::append_declaration(document);
        const auto root = get(document, &IXMLDOMDocument::createElement, Bstr(L"Contents").get());
        get(document, &IXMLDOMDocument::appendChild, root.get());
        get(root, &IXMLDOMElement::get_xml);
    });
    for (const Scenario& scenario : scenarios()) {
        CAPTURE(std::wstring(scenario.name));
        const double left = bytes_left(repetitions(), [&] {
            repeat(scenario);
            call(service(), &IHostKitService::Clear);
        });
        CHECK(left < platform + 16);
        tell_figure("repetitions of a scenario", repetitions());
    }
}

TEST_CASE("two threads work by turns, each with a host of its own") {
    std::vector<std::wstring> expected;
    // Wine's parser has one record of errors for all threads: two that meet one at the same moment,
    // as the encoding of every content document is to it, end the process.
    std::mutex turn;
    const auto work = [&turn](std::vector<std::wstring>& outcomes) {
        ScenarioFixture fixture;
        fixture.share_process();
        for (int round = 0; round < 5; ++round)
            for (const Scenario& scenario : fixture.scenarios()) {
                if (std::wstring_view(scenario.name) == L"progress") continue;
                {
                    const std::lock_guard lock(turn);
                    outcomes.push_back(fixture.repeat(scenario));
                }
                Sleep(0);
            }
        call(fixture.service(), &IHostKitService::Clear);
    };
    std::vector<std::wstring> outcomes[2];
    std::vector<std::thread> threads;
    for (auto& own : outcomes)
        threads.emplace_back([&] {
            OleInitialize(nullptr);
            work(own);
            OleUninitialize();
        });
    for (std::thread& thread : threads)
        thread.join();
    work(expected);
    CHECK(is_idle(L"Tessera.dll"));
    CHECK(is_idle(L"KelosHostKit.dll"));
    CHECK(outcomes[0] == expected);
    CHECK(outcomes[1] == expected);
}
