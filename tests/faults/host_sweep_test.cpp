// Through the DLL: every call that the component makes on its host fails once, and once for good.
#include "faults/scenarios.h"
#include "server/listing.h"
#include "support/full_run.h"
#include "text/utf8.h"

using namespace test;

namespace {

// The logged calls that can be made to fail.
std::vector<std::wstring> calls_of(const std::wstring& log) {
    std::vector<std::wstring> calls;
    std::wistringstream lines(log);
    for (std::wstring line; std::getline(lines, line);)
        if (!line.empty() && !line.starts_with(L"Service.ReportError")) calls.push_back(line);
    return calls;
}

class SweepFixture : public ScenarioFixture {
  public:
    // Everything that the user or the host was told, which is forgotten.
    std::wstring told() const {
        std::wstring result;
        for (long n = 1; n <= message_count(); ++n)
            result += L"message " + message(n).substr(0, message(n).find(L'|')) + L"\n";
        const auto script_errors = get(service(), &IHostKitService::get_ScriptErrors);
        for (long n = get(script_errors, &IHostKitScriptErrors::get_Count); n > 0; --n)
            result += L"script error\n";
        return result + take_errors();
    }
};

std::string in_one_line(std::wstring reports) {
    std::ranges::replace(reports, L'\n', L';');
    return tessera::to_utf8(automation::as_u16(reports));
}

}  // namespace

TEST_CASE_FIXTURE(SweepFixture,
                  "whichever call of the host fails, it is reported and nothing else happens") {
    for (const Scenario& scenario : scenarios()) {
        CAPTURE(std::wstring(scenario.name));
        repeat(scenario);
        const std::wstring expected = repeat(scenario);
        call(service(), &IHostKitService::Clear);
        log_calls();
        {
            const Run run = scenario.arrange();
            calls();
            run.act();
        }
        const auto all_calls = calls_of(calls());
        call(kit, &IHostKit::put_LogsCalls, VARIANT_FALSE);
        REQUIRE(all_calls.size() > 1);
        const std::wstring usual = told();
        std::string listing;
        for (long n = 1; n <= static_cast<long>(all_calls.size()); ++n) {
            bool is_passed_over = false;  // a failure that is none to the user
            for (const bool for_good : {false, true}) {
                CAPTURE(n);
                CAPTURE(for_good);
                {
                    const Run run = scenario.arrange();
                    fail(L"*", for_good ? -n : n);
                    run.act();
                    fail_nothing();
                    const std::wstring reports = told();
                    if (for_good && !is_passed_over) CHECK(!reports.empty());
                    is_passed_over = reports.empty();
                    if (!for_good)
                        listing += in_one_line(all_calls[static_cast<std::size_t>(n - 1)]) + ": " +
                                   in_one_line(reports) + "\n";
                    CHECK(wrong_in_contents(run.outcome()) == L"");
                }
                CHECK(is_idle(L"Tessera.dll"));
            }
        }
        tell_figure("calls of the host that failed", 2 * static_cast<long>(all_calls.size()));
        tell_figure("reports compared", static_cast<long>(std::ranges::count(listing, ';')));
        CHECK(repeat(scenario) == expected);
        CHECK(told() == usual);
        std::wstring file = scenario.name;
        std::ranges::replace(file, L' ', L'_');
        check_listing(file + L".txt", listing, L"faults/reports/");
    }
}
