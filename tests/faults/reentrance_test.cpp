// Through the DLL: a host that comes back from inside its calls.
#include "faults/scenarios.h"
#include "support/call_hook.h"

using namespace test;

TEST_CASE_FIXTURE(ScenarioFixture, "a host may change what is at work from inside every call") {
    for (const Scenario& scenario : scenarios()) {
        CAPTURE(scenario.name);
        repeat(scenario);
        const std::wstring expected = repeat(scenario);
        CallHook hook(kit);
        for (long n = 1; n == 1 || hook.has_acted(); ++n) {
            CAPTURE(n);
            {
                const Run run = scenario.arrange();
                hook.arm(n, run.disturb);
                run.act();
                CHECK(wrong_in_contents(run.outcome()) == L"");
                hook.let_go();
            }
            CHECK(is_idle(L"Tessera.dll"));
        }
        CHECK(repeat(scenario) == expected);
        call(service(), &IHostKitService::Clear);
    }
}
