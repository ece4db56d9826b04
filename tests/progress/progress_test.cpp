// The controller: order of calls, states, reports, lifetimes.
#include "progress/progress_fixture.h"

namespace tessera {
namespace {

using automation::Bstr;
using automation::ComPtr;
using fake_host::host;

}  // namespace

TEST_CASE_FIXTURE(ProgressFixture, "opening and closing call the host in this order") {
    progress->StartProcess();
    CHECK(host().take_calls() ==
          "Application\n"
          "Trace ZUL: Form_Initialize\n"
          "CurrentWorkset\n"
          "Trace ZUL: getting the undo state\n"
          "get CurrentUndoState\n"
          "get OuterUndoState\n"
          "CreateLabel 10 run\n"
          "CreateProgressBar\n"
          "CreateButton 10 Abort\n"
          "Button.Events sink\n"
          "UIService\n"
          "FormSetting\n"
          "Apply form\n"
          "TranslateText ~00811 Bitte warten...\n"
          "Label.Caption [~00811]\n"
          "TranslateText ~001d4 Abbrechen\n"
          "Button.Caption [~001d4]\n"
          "Application\n"
          "WindowService\n"
          "RegisterForm form 0 nothing controller\n"
          "ControlWrapper button\n"
          "Activate\n"
          "set CurrentUndoState\n"
          "set OuterUndoState\n"
          "Trace ZUL: CurrentUndoState was set back succesfull\n");

    SUBCASE("an open form is not opened again") {
        progress->StartProcess();
        CHECK(host().take_calls() == undo_restored);
    }
    SUBCASE("a percentage restores the undo state twice and moves the bar") {
        percentage(50);
        CHECK(host().take_calls() ==
              std::string(undo_restored) + undo_restored + "Bar\nBar.Value 50\n");
    }
    SUBCASE("the last percentage moves the bar and closes the form") {
        percentage(100);
        CHECK(host().take_calls() == std::string(undo_restored) +
                                         "Bar\nBar.Value 100\n"
                                         "Application\nWindowService\nUnregisterForm form\n");
    }
    SUBCASE("only the first stop does something") {
        progress->StopProcess();
        CHECK(host().take_calls() == "Application\nWindowService\nUnregisterForm form\n");
        progress->StopProcess();
        CHECK(host().take_calls() == "");
    }
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "every percentage leads from every state to the one of the table") {
    struct Step {
        short percentage;
        uceProgressState next;
        bool open;
    };
    const Step steps[] = {
        {-32768, uccStateClosed, false}, {-1, uccStateClosed, false},
        {0, uccStateOpen, true},         {1, uccStateExecuting, true},
        {99, uccStateExecuting, true},   {100, uccStateClosed, false},
        {32767, uccStateClosed, false},
    };
    for (const auto start : {uccStateClosed, uccStateExecuting, uccStateOpen, uccStateAbort}) {
        for (const bool opened : {false, true}) {
            for (const Step& step : steps) {
                CAPTURE(start);
                CAPTURE(opened);
                CAPTURE(step.percentage);
                opened ? progress->StartProcess() : progress->StopProcess();
                progress->put_State(start);
                CHECK(form_is_open() == opened);
                CHECK(state() == start);
                percentage(step.percentage);
                const bool aborted = start == uccStateAbort && step.next == uccStateExecuting;
                CHECK(state() == (aborted ? uccStateAbort : step.next));
                CHECK(form_is_open() == (aborted ? false : step.open));
            }
        }
    }
    CHECK(host().count("ReportError") == 0);
}

TEST_CASE_FIXTURE(ProgressFixture, "an abort stays until a percentage outside 1 to 99") {
    CHECK(state() == uccStateClosed);
    percentage(0);
    percentage(50);
    click_abort();
    CHECK(state() == uccStateAbort);
    CHECK(form_is_open());
    percentage(60);
    CHECK(state() == uccStateAbort);
    CHECK_FALSE(form_is_open());
    percentage(0);
    CHECK(state() == uccStateOpen);
    CHECK(form_is_open());
    progress->StopProcess();
    CHECK(state() == uccStateOpen);
}

TEST_CASE_FIXTURE(ProgressFixture, "a missing workset is only traced") {
    host().offers_workset = false;
    percentage(0);
    CHECK(
        host().take_calls().starts_with("Application\n"
                                        "Trace ZUL: Form_Initialize\n"
                                        "CurrentWorkset\n"
                                        "Trace ZUL: WS Is Nothing\n"
                                        "CreateLabel"));
    percentage(1);
    CHECK(host().take_calls() ==
          "Trace ZUL: WS Is Nothing\nTrace ZUL: WS Is Nothing\nBar\nBar.Value 1\n");
}

TEST_CASE_FIXTURE(ProgressFixture, "what cannot be opened is reported once and the walk goes on") {
    std::string reason;
    SUBCASE("no application") {
        host().offers_application = false;
        reason = ": Object variable not set";
    }
    SUBCASE("no controls") {
        host().offers_classes = false;
        reason = ": Can't create object: its class is not registered";
    }
    SUBCASE("no registration") {
        host().failing = "RegisterForm";
    }
    SUBCASE("no workset") {
        host().failing = "CurrentWorkset";
    }
    SUBCASE("no undo state") {
        host().failing = "get OuterUndoState";
    }
    const std::string report =
        "ReportError Tessera.Progress: Private Sub 'StartProcess'" + reason + "\n";

    percentage(0);
    CHECK(state() == uccStateOpen);
    CHECK(host().take_calls().ends_with(report));
    for (short step = 1; step < 100; ++step) {
        percentage(step);
        CHECK(state() == uccStateExecuting);
    }
    // An abort can come from somebody who shares the controller.
    progress->put_State(uccStateAbort);
    percentage(60);
    percentage(61);
    CHECK(state() == uccStateAbort);
    CHECK(host().take_calls() == "");

    // Every new beginning tries again.
    percentage(0);
    CHECK(host().take_calls().ends_with(report));
    progress->StartProcess();
    CHECK(host().take_calls().ends_with(report));
    percentage(100);
    CHECK(host().take_calls() == "");
    percentage(1);
    CHECK(host().take_calls().ends_with(report));

    host().offers_application = host().offers_classes = true;
    host().failing.clear();
    percentage(0);
    CHECK(form_is_open());
}

TEST_CASE_FIXTURE(ProgressFixture, "failures are reported by the member that they happen in") {
    struct Failure {
        const char* call;
        short percentage;
        const char* reports;
        uceProgressState state;
    };
    const Failure failures[] = {
        {"set CurrentUndoState", 50,
         "ReportError Tessera.Progress: Public Property Let 'Percentage'\n", uccStateOpen},
        {"Bar", 50,
         "ReportError Tessera.PrgFrm: Public Property Get 'PBar'\n"
         "ReportError Tessera.Progress: Public Property Let 'Percentage': Object variable not "
         "set\n",
         uccStateOpen},
        {"Bar.Value", 50, "ReportError Tessera.Progress: Public Property Let 'Percentage'\n",
         uccStateOpen},
        {"UnregisterForm", 100, "ReportError Tessera.Progress: Private Sub 'StopProcess'\n",
         uccStateClosed},
        {"WindowService", 100, "ReportError Tessera.Progress: Private Sub 'StopProcess'\n",
         uccStateClosed},
    };
    for (const Failure& failure : failures) {
        CAPTURE(failure.call);
        percentage(0);
        host().take_calls();
        host().failing = failure.call;
        percentage(failure.percentage);
        std::string reports;
        for (const std::string& call : host().calls)
            if (call.starts_with("ReportError")) reports += call + "\n";
        CHECK(reports == failure.reports);
        CHECK(state() == failure.state);
        // The form is still there, its button included, and can be closed later.
        CHECK(form_is_open());
        host().failing.clear();
        click_abort();
        CHECK(state() == uccStateAbort);
        progress->StopProcess();
        CHECK_FALSE(form_is_open());
    }
}

TEST_CASE_FIXTURE(ProgressFixture, "a controller that is let go takes its form down") {
    percentage(10);
    const HWND shown = window();
    CHECK(IsWindowVisible(shown));
    const ComPtr<ITesseraProgress> kept = host().controller.as<ITesseraProgress>();
    const ComPtr<IKelosButtonEvents> button = host().button_events;
    host().take_calls();

    SUBCASE("and the host lets go of it") {
        progress.reset();
        CHECK(host().take_calls() == "Application\nWindowService\nUnregisterForm form\n");
        CHECK_FALSE(form_is_open());
    }
    SUBCASE("although the host refuses to") {
        host().failing = "UnregisterForm";
        progress.reset();
        CHECK(host().count("ReportError Tessera.Progress: Private Sub 'StopProcess'") == 1);
    }
    SUBCASE("although the host has gone") {
        host().offers_application = false;
        progress.reset();
        CHECK(host().count("ReportError Tessera.Progress: Private Sub 'StopProcess'") == 1);
    }
    CHECK_FALSE(IsWindow(shown));

    // What a host kept by mistake does no harm.
    CHECK(button->Click() == S_OK);
    CHECK(kept->put_Percentage(5) == S_OK);
    CHECK(kept->StartProcess() == S_OK);
    uceProgressState state = uccStateAbort;
    CHECK(kept->get_State(&state) == S_OK);
    CHECK(state == uccStateClosed);
    Bstr picture(L"x");
    CHECK(kept->get_Picture(picture.put()) == S_OK);
    CHECK(picture.empty());
}

TEST_CASE_FIXTURE(ProgressFixture,
                  "the controller that the host gets does what the real one does") {
    progress->StartProcess();
    const auto controller = host().controller.as<ITesseraProgress>();
    controller->put_State(uccStateAbort);
    CHECK(state() == uccStateAbort);
    controller->put_Picture(Bstr(L"x").get());
    uceWhere where = uccNothing;
    progress->get_Where(&where);
    CHECK(where == uccUserDef);
    controller->put_Percentage(100);
    CHECK_FALSE(form_is_open());
    CHECK(state() == uccStateClosed);
}

TEST_CASE_FIXTURE(ProgressFixture, "a picture decides on the direction") {
    const auto where = [&] {
        uceWhere result = static_cast<uceWhere>(-1);
        CHECK(progress->get_Where(&result) == S_OK);
        return result;
    };
    CHECK(where() == uccNothing);
    progress->put_Where(uccKelosToBox);
    CHECK(where() == uccKelosToBox);
    progress->put_Picture(Bstr(L"x").get());
    CHECK(where() == uccUserDef);
    Bstr picture;
    CHECK(progress->get_Picture(picture.put()) == S_OK);
    CHECK((picture.view() == L"x"));
    progress->put_Picture(nullptr);
    CHECK(where() == uccNothing);
    CHECK(progress->get_Picture(picture.put()) == S_OK);
    CHECK(picture.empty());
}

TEST_CASE_FIXTURE(ProgressFixture, "a missing place for the result is reported, not a crash") {
    CHECK(progress->get_State(nullptr) == S_OK);
    CHECK(progress->get_Where(nullptr) == S_OK);
    CHECK(host().take_calls() ==
          "ReportError Tessera.Progress: Public Property Get 'State': Invalid pointer\n"
          "ReportError Tessera.Progress: Public Property Get 'Where': Invalid pointer\n");
    CHECK(progress->get_Picture(nullptr) == E_POINTER);
}

}  // namespace tessera
