// Through the DLL: a host that comes back from inside its calls.
#include "faults/scenarios.h"
#include "support/call_hook.h"
#include "support/full_run.h"

using namespace test;

TEST_CASE_FIXTURE(ScenarioFixture, "a host may change what is at work from inside every call") {
    for (const Scenario& scenario : scenarios()) {
        CAPTURE(std::wstring(scenario.name));
        repeat(scenario);
        const std::wstring expected = repeat(scenario);
        CallHook hook(kit);
        long n = 1;
        for (; n == 1 || hook.has_acted(); ++n) {
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
        tell_figure("calls that the host came back from", n - 2);
        CHECK(repeat(scenario) == expected);
        call(service(), &IHostKitService::Clear);
    }
}
