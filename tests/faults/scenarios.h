// What users do with the component, in small: the scenarios that every fault is tried on.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/watched_host.h"

namespace test {

// One run of a scenario, with objects of the component of its own.
struct Run {
    std::function<void()> act;
    // What came of it, read while the host works again.
    std::function<std::wstring()> outcome;
    // What a host may do from inside any call: it changes or ends what is at work.
    std::function<void()> disturb = [] {};
};

struct Scenario {
    const wchar_t* name;
    std::function<Run()> arrange;
};

class ScenarioFixture : public WatchedProject {
  public:
    std::vector<Scenario> scenarios();

    // One more time with everything in order: the outcome.
    std::wstring repeat(const Scenario& scenario) const {
        const Run run = scenario.arrange();
        run.act();
        return run.outcome();
    }

  private:
    Scenario script(const wchar_t* name, const wchar_t* document, std::wstring_view text,
                    const wchar_t* editor = nullptr);
    // `before`: the script that is there.
    Scenario stored_script(const wchar_t* name, const wchar_t* document, const wchar_t* before);
    using ReadQuery = std::wstring (*)(ITesseraQContent* content, ITesseraHQuery* cursor);
    using ChangeQuery = void (*)(ITesseraHQuery* cursor, IKelosQuery* query);
    Scenario query(const wchar_t* name, ReadQuery read, ChangeQuery change);
    Scenario query_texts();
    Scenario query_document();
    Scenario reading();
    Scenario progress();
    Scenario encoding();
};

// Empty, or what is wrong with a content document: elements that are not whole.
std::wstring wrong_in_contents(const std::wstring& xml);

}  // namespace test
