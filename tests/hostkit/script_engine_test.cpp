// Through the DLL: the script engine, its error reports and its lifetime.
#include <optional>
#include <vector>

#include "automation/conversion.h"
#include "support/scripted_object.h"

using namespace test;

namespace {

struct ToldError {
    std::wstring description;
    std::wstring item;
    std::wstring source;
    long line;
    std::wstring line_text;
};

// Keeps what it was told, read late-bound, as a sink does.
class Sink {
  public:
    Sink()
        : object_(make_object({{L"OnScriptError", [this](const std::vector<Variant>& arguments) {
                                    take(static_cast<IDispatch*>(arguments.at(0).pdispVal));
                                    return Variant();
                                }}})) {}

    IDispatch* get() const { return object_.get(); }
    const std::vector<ToldError>& errors() const { return errors_; }

  private:
    void take(IDispatch* error) {
        const auto text = [&](const wchar_t* name) {
            return std::wstring(automation::get_property(error, name).text());
        };
        errors_.push_back({text(L"Description"), text(L"Item"), text(L"Source"),
                           automation::get_property(error, L"LineNr").lVal, text(L"LineText")});
    }

    std::vector<ToldError> errors_;
    ComPtr<ScriptedObject> object_;
};

// The error that a call fails with; none when it succeeds.
template <class Call>
std::optional<automation::Error> error_of(Call&& call) {
    try {
        call();
        return std::nullopt;
    } catch (const automation::Error& error) {
        return error;
    }
}

class EngineFixture : public ComFixture {
  public:
    EngineFixture() : engine(create<IHostKitScriptEngine>(L"KelosScript.Engine")) {}

    void use_sink() {
        call(engine, &IHostKitScriptEngine::put_ReportErrors, VARIANT_FALSE);
        call(engine, &IHostKitScriptEngine::putref_ErrorSink, sink.get());
    }
    void add(const wchar_t* name, const wchar_t* code, IDispatch* object = nullptr,
             bool global = false) {
        call(engine, &IHostKitScriptEngine::AddModule, Bstr(name).get(), Bstr(code).get(), object,
             static_cast<VARIANT_BOOL>(global ? VARIANT_TRUE : VARIANT_FALSE));
    }
    Variant evaluate(const wchar_t* expression, const wchar_t* module_name) {
        return get(engine, &IHostKitScriptEngine::Evaluate, Bstr(expression).get(),
                   Bstr(module_name).get());
    }
    ComPtr<IDispatch> code_object(const wchar_t* module_name) {
        return get(engine, &IHostKitScriptEngine::CodeObject, Bstr(module_name).get());
    }
    Variant run(const wchar_t* module_name, const wchar_t* procedure) {
        return automation::call_method(code_object(module_name).get(), procedure);
    }
    long own_reports() const {
        return get(get(service(), &IHostKitService::get_ScriptErrors),
                   &IHostKitScriptErrors::get_Count);
    }

    Sink sink;
    ComPtr<IHostKitScriptEngine> engine;
};

struct FailingScript {
    const wchar_t* code;
    long line;
    const wchar_t* line_text;
    const wchar_t* description;  // null: the engine's own words
};

constexpr wchar_t syntax_error[] = L"Syntax error";

const FailingScript failing_scripts[] = {
    {L"Sub DoVex(\r\nx = 1\r\nEnd Sub", 1, L"Sub DoVex(", syntax_error},
    {L"Sub DoVex()\r\nx = = 1\r\nEnd Sub", 2, L"x = = 1", syntax_error},
    {L"Sub DoVex()\r\nx = 1\r\nEnd Sub )", 3, L"End Sub )", syntax_error},
    // What is never closed is noticed behind the last line.
    {L"Sub DoVex()\r\nIf x Then\r\ny = 1", 3, L"y = 1", syntax_error},
    {L"Sub DoVex()\r\nIf x Then\r\ny = 1\r\n", 3, L"y = 1", syntax_error},
    {L"x = = 1\nSub DoVex()\nEnd Sub\n", 1, L"x = = 1", syntax_error},
    {L"Sub DoVex() : x = (1 : End Sub", 1, L"Sub DoVex() : x = (1 : End Sub", syntax_error},
    {L"Sub DoVex() : x = 1 / 0 : End Sub", 1, L"Sub DoVex() : x = 1 / 0 : End Sub",
     L"Division by zero"},
    {L"Sub DoVex()\r\n  y = 1\r\n  x = 1 / 0\r\n  z = 1\r\nEnd Sub", 3, L"  x = 1 / 0",
     L"Division by zero"},
    {L"\r\n\r\nSub DoVex()\r\nNothingLikeThis 5\r\nEnd Sub", 4, L"NothingLikeThis 5", nullptr},
    {L"Sub DoVex()\r\n\r\nHost.NoSuchMember\r\nEnd Sub", 3, L"Host.NoSuchMember", nullptr},
    {L"Sub DoVex()\r\nx = CInt(\"abc\")\r\nEnd Sub\r\n", 2, L"x = CInt(\"abc\")", L"Type mismatch"},
    {L"Sub DoVex()\r\nErr.Raise 1234, \"me\", \"on purpose\"\r\nEnd Sub", 2,
     L"Err.Raise 1234, \"me\", \"on purpose\"", L"on purpose"},
    {L"Sub DoVex()\nx = 1\nx = 1 / 0\nEnd Sub\n", 3, L"x = 1 / 0", L"Division by zero"},
    {L"Sub DoVex()\rx = 1\rx = 1 / 0\rEnd Sub\r", 3, L"x = 1 / 0", L"Division by zero"},
    {L"Sub Inner()\r\nx = 1 / 0\r\nEnd Sub\r\nSub DoVex()\r\nInner\r\nEnd Sub", 2, L"x = 1 / 0",
     L"Division by zero"},
};

}  // namespace

TEST_CASE_FIXTURE(EngineFixture,
                  "a script that calls itself without end fails, and the engine goes on") {
    const wchar_t* const endless[] = {
        L"Sub DoVex()\nDoVex\nEnd Sub",
        L"Public Sub DoVex ' without end\nDoVex\nEnd Sub",
        L"x = 1 : Sub DoVex() : DoVex : End Sub",
        L"Sub DoVex()\nF 1, 2\nEnd Sub\nPrivate Function F(a, _\n ByVal b)\nF = 1 + F(a, b)\n"
        L"End Function",
        L"Class C\nPublic Default Property Get P(x())\nP = Me.P(x)\nEnd Property\nEnd Class\n"
        L"Sub DoVex()\nSet o = New C\no.P 1\nEnd Sub",
        L"Sub DoVex()\nOn Error Resume Next\nDoVex\nErr.Raise 28, , \"Out of stack space\"\nEnd "
        L"Sub",
    };
    use_sink();
    int number = 0;
    for (const wchar_t* const code : endless) {
        CAPTURE(std::wstring(code));
        const std::wstring name = L"M" + std::to_wstring(++number);
        add(name.c_str(), code);
        const auto error = error_of([&] { run(name.c_str(), L"DoVex"); });
        if (std::wstring_view(code).find(L"Resume") == std::wstring_view::npos) {
            REQUIRE(error);
            CHECK(error->code() == static_cast<HRESULT>(0x800A001C));
            CHECK(sink.errors().back().description == L"Out of stack space");
        }
        CHECK(automation::to_long(evaluate(L"6 * 7", name.c_str())) == 42);
    }
    // What only looks like a procedure stays as it is.
    add(L"Looks",
        L"s = \"Sub A()\" & _\n \"Function B\" 'Sub C\nRem : Sub D\nPropertyGet = 1\n"
        L"Function Text\nText = s\nExit Function\nEnd Function");
    CHECK(run(L"Looks", L"Text").text() == L"Sub A()Function B");
}

TEST_CASE_FIXTURE(EngineFixture, "the contract's dispatch ids do what the contract says") {
    IDispatch* const host = engine.get();
    const Variant no(false);
    const Variant yes(true);
    const Variant sink_object(sink.get());
    const Variant name(L"Global");
    const Variant code(L"Function Twice(x)\r\nTwice = 2 * x\r\nEnd Function");
    const Variant nothing(static_cast<IDispatch*>(nullptr));
    const Variant expression(L"Twice(21)");
    automation::invoke(host, 4, DISPATCH_PROPERTYPUT, {no});
    automation::invoke(host, 6, DISPATCH_PROPERTYPUTREF, {sink_object});
    automation::invoke(host, 12, DISPATCH_METHOD, {name, code, nothing, yes});
    CHECK(automation::to_long(automation::invoke(host, 9, DISPATCH_METHOD, {expression, name})) ==
          42);
    const Variant procedures = automation::invoke(host, 15, DISPATCH_METHOD, {name});
    const Variant argument(4L);
    CHECK(automation::to_long(automation::call_method(procedures.pdispVal, L"twice", {argument})) ==
          8);
    const Variant put_sink = automation::invoke(host, 6, DISPATCH_PROPERTYGET);
    CHECK(automation::same_object(put_sink.punkVal, sink.get()));
    CHECK(sink.errors().empty());
}

TEST_CASE_FIXTURE(EngineFixture, "errors have the line of the script that was given") {
    const auto host = make_object();
    for (const FailingScript& script : failing_scripts) {
        CAPTURE(std::wstring(script.code));
        engine = create<IHostKitScriptEngine>(L"KelosScript.Engine");
        use_sink();
        add(L"Host", L"", host.get());
        const std::size_t before = sink.errors().size();
        // Compilation fails when the module is added, the rest when its procedure is called.
        auto error = error_of([&] { add(L"VexScriptRun", script.code); });
        const bool compiles = script.description != syntax_error;
        REQUIRE(error.has_value() == !compiles);
        if (compiles) error = error_of([&] { run(L"VexScriptRun", L"DoVex"); });
        REQUIRE(error);
        CHECK(FAILED(error->code()));
        if (script.description) CHECK(error->description().str() == script.description);
        REQUIRE(sink.errors().size() == before + 1);
        const ToldError& told = sink.errors().back();
        CHECK(told.item == L"VexScriptRun");
        CHECK(told.line == script.line);
        CHECK(told.line_text == script.line_text);
        CHECK_FALSE(told.source.empty());
        CHECK_FALSE(told.description.empty());
        if (!compiles) continue;
        CHECK(error->description().str() == told.description);
        CHECK(error->source().str() == told.source);
    }
    CHECK(own_reports() == 0);
}

TEST_CASE_FIXTURE(EngineFixture, "every error is reported once, to the chosen place only") {
    const wchar_t* const failing = L"Sub DoVex()\r\nx = 1 / 0\r\nEnd Sub";
    const auto fail_in_all_ways = [&] {
        CHECK(error_of([&] { add(L"Broken", L"Sub Broken(\r\nEnd Sub"); }));
        add(L"VexScriptRun", failing);
        CHECK(error_of([&] { run(L"VexScriptRun", L"DoVex"); }));
        CHECK(error_of([&] { evaluate(L"1 / 0", L"VexScriptRun"); }));
        CHECK(error_of([&] { evaluate(L"1 +", L"VexScriptRun"); }));
    };
    SUBCASE("a new engine reports itself") {
        call(engine, &IHostKitScriptEngine::putref_ErrorSink, sink.get());
        fail_in_all_ways();
        CHECK(own_reports() == 4);
        CHECK(sink.errors().empty());
        const auto reported = get(get(service(), &IHostKitService::get_ScriptErrors),
                                  &IHostKitScriptErrors::get_Item, 2L);
        CHECK(get(reported, &IKelosScriptError::get_LineNr) == 2);
        CHECK(get(reported, &IKelosScriptError::get_Item).str() == L"VexScriptRun");
        CHECK(get(reported, &IKelosScriptError::get_LineText).str() == L"x = 1 / 0");
        CHECK(get(reported, &IKelosScriptError::get_Description).str() == L"Division by zero");
        CHECK(message_count() == 0);
    }
    SUBCASE("the sink is told") {
        use_sink();
        fail_in_all_ways();
        REQUIRE(sink.errors().size() == 4);
        // An expression is the one line that there is.
        CHECK(sink.errors()[2].line == 1);
        CHECK(sink.errors()[2].line_text == L"1 / 0");
        CHECK(sink.errors()[2].item == L"VexScriptRun");
        CHECK(own_reports() == 0);
    }
    SUBCASE("nobody is told") {
        call(engine, &IHostKitScriptEngine::put_ReportErrors, VARIANT_FALSE);
        fail_in_all_ways();
        CHECK(own_reports() == 0);
    }
    SUBCASE("a sink that fails does not hide the error") {
        const auto broken = make_object(
            {{L"OnScriptError", [](const auto&) -> Variant { automation::fail(E_ACCESSDENIED); }}});
        use_sink();
        call(engine, &IHostKitScriptEngine::putref_ErrorSink, broken.get());
        add(L"VexScriptRun", failing);
        const auto error = error_of([&] { run(L"VexScriptRun", L"DoVex"); });
        REQUIRE(error);
        CHECK(error->description().str() == L"Division by zero");
    }
}

TEST_CASE_FIXTURE(EngineFixture, "errors of called objects keep their number, words and source") {
    use_sink();
    const auto host = make_object({{L"Explode", [](const auto&) -> Variant {
                                        throw automation::Error(E_ACCESSDENIED, Bstr(L"No entry"),
                                                                Bstr(L"The host"));
                                    }}});
    add(L"Global", L"", host.get(), true);
    add(L"VexScriptRun",
        L"Sub DoVex()\r\nExplode\r\nEnd Sub\r\nSub Careful()\r\n"
        L"On Error Resume Next\r\nExplode\r\nEnd Sub");
    const auto error = error_of([&] { run(L"VexScriptRun", L"DoVex"); });
    REQUIRE(error);
    CHECK(error->code() == E_ACCESSDENIED);
    CHECK(error->description().str() == L"No entry");
    CHECK(error->source().str() == L"The host");
    REQUIRE(sink.errors().size() == 1);
    CHECK(sink.errors()[0].description == L"No entry");
    CHECK(sink.errors()[0].source == L"The host");
    CHECK(sink.errors()[0].line == 2);

    // What the script handles is no error of the script.
    run(L"VexScriptRun", L"Careful");
    CHECK(sink.errors().size() == 1);
}

TEST_CASE_FIXTURE(EngineFixture,
                  "a module's name and its global members reach every other module") {
    const auto global = make_object({{L"Answer", [](const auto&) { return Variant(42L); }}});
    const auto other = make_object({{L"Secret", [](const auto&) { return Variant(7L); }}});
    add(L"Global", L"", global.get(), true);
    add(L"First", L"Dim n\r\nSub DoVex()\r\nn = Answer + 1\r\nEnd Sub", other.get());
    add(L"Second", L"Dim n\r\nSub DoVex()\r\nn = Answer + 2\r\nEnd Sub");
    run(L"First", L"DoVex");
    run(L"Second", L"DoVex");
    CHECK(automation::to_long(evaluate(L"n", L"First")) == 43);
    CHECK(automation::to_long(evaluate(L"n", L"Second")) == 44);
    CHECK(automation::to_long(evaluate(L"answer", L"Second")) == 42);
    CHECK(automation::to_long(evaluate(L"First.Secret", L"Global")) == 7);
    CHECK(evaluate(L"Secret", L"Second").vt == VT_EMPTY);
    // Module names are not case-sensitive, as nothing in the language is.
    CHECK(automation::to_long(evaluate(L"n", L"FIRST")) == 43);
}

TEST_CASE_FIXTURE(EngineFixture, "a script's message box is the host's and waits for nobody") {
    call(service(), &IHostKitService::put_MessageAnswer, 6L);
    add(L"Asking",
        L"Dim answer\r\n"
        L"Sub DoVex()\r\n"
        L"answer = MsgBox(\"Go on\" & 1, 4, \"Question\")\r\n"
        L"msgbox 7\r\n"
        L"End Sub");
    run(L"Asking", L"DoVex");
    CHECK(automation::to_long(evaluate(L"answer", L"Asking")) == 6);
    REQUIRE(message_count() == 2);
    CHECK(message(1) == L"Question|4|Go on1");
    CHECK(message(2) == L"VBScript|0|7");
    CHECK(automation::to_long(evaluate(L"MsgBox(\"?\")", L"Asking")) == 6);
    CHECK(message_count() == 3);
}

TEST_CASE_FIXTURE(EngineFixture, "wrong module and procedure names are errors of the call alone") {
    use_sink();
    add(L"VexScriptRun", L"Sub Other()\r\nEnd Sub");
    const auto twice = error_of([&] { add(L"vexscriptrun", L"x = 1"); });
    REQUIRE(twice);
    CHECK(twice->code() == E_INVALIDARG);
    const auto unknown = error_of([&] { evaluate(L"1", L"Nowhere"); });
    REQUIRE(unknown);
    CHECK(unknown->description().str() == L"There is no module 'Nowhere'");
    CHECK(error_of([&] { code_object(L"Nowhere"); }));
    CHECK(error_of([&] { add(L"", L"x = 1"); }));
    const auto procedure = error_of([&] { run(L"VexScriptRun", L"DoVex"); });
    REQUIRE(procedure);
    CHECK(procedure->code() == DISP_E_UNKNOWNNAME);
    CHECK(sink.errors().empty());
    CHECK(own_reports() == 0);
}

TEST_CASE_FIXTURE(EngineFixture, "code with a null character is refused, not cut short") {
    use_sink();
    const Bstr code(std::wstring_view(L"x = 1\r\n\0y = 2", 13));
    CHECK(engine->AddModule(Bstr(L"M").get(), code.get(), nullptr, VARIANT_FALSE) == E_INVALIDARG);
    add(L"M", L"");
    Variant value;
    CHECK(engine->Evaluate(Bstr(std::wstring_view(L"1\0+ 1", 5)).get(), Bstr(L"M").get(),
                           value.put()) == E_INVALIDARG);
    REQUIRE(sink.errors().size() == 2);
    CHECK(sink.errors()[0].line == 2);
}

TEST_CASE_FIXTURE(EngineFixture,
                  "where scripts are not allowed, only the one that is allowed runs") {
    call(service(), &IHostKitService::put_AllowsScripts, VARIANT_FALSE);
    call(service(), &IHostKitService::put_AllowedScript, Bstr(L"x = 1").get());
    add(L"Global", L"");
    const auto refused = error_of([&] { add(L"Other", L"x = 2"); });
    CHECK(error_of([&] { evaluate(L"1", L"Global"); }));
    add(L"Allowed", L"x = 1");
    call(service(), &IHostKitService::put_AllowsScripts, VARIANT_TRUE);
    call(service(), &IHostKitService::put_AllowedScript, nullptr);
    REQUIRE(refused);
    CHECK(refused->code() == E_ACCESSDENIED);
    CHECK(own_reports() == 2);
    CHECK(automation::to_long(evaluate(L"x", L"Allowed")) == 1);
}

TEST_CASE_FIXTURE(EngineFixture, "a script may release its own engine and go on") {
    ComPtr<IDispatch> procedures;
    const auto host = make_object({{L"LetGo",
                                    [&](const auto&) {
                                        engine.reset();
                                        procedures.reset();
                                        return Variant();
                                    }},
                                   {L"Mark", [&](const auto&) { return Variant(1L); }}});
    add(L"Global", L"", host.get(), true);
    const auto run_without_us = [&] {
        procedures = code_object(L"VexScriptRun");
        IDispatch* const running = procedures.get();
        automation::invoke(running, automation::member_id(running, L"DoVex"), DISPATCH_METHOD);
    };
    IHostKitScriptEngine* const running = engine.get();
    SUBCASE("while a procedure runs") {
        add(L"VexScriptRun", L"Sub DoVex()\r\nLetGo\r\nx = Mark\r\nEnd Sub");
        run_without_us();
    }
    SUBCASE("while its procedure fails, and tells a sink that is gone then") {
        use_sink();
        add(L"VexScriptRun", L"Sub DoVex()\r\nLetGo\r\nx = 1 / 0\r\nEnd Sub");
        CHECK(error_of(run_without_us));
        CHECK(sink.errors().size() == 1);
    }
    SUBCASE("while its code is added") {
        CHECK(running->AddModule(Bstr(L"Code").get(), Bstr(L"LetGo\r\nx = Mark").get(), nullptr,
                                 VARIANT_FALSE) == S_OK);
    }
    SUBCASE("while an expression is evaluated") {
        Variant value;
        CHECK(running->Evaluate(Bstr(L"LetGo").get(), Bstr(L"Global").get(), value.put()) == S_OK);
    }
    CHECK_FALSE(engine);
    CHECK(reference_count(host->dispatch()) == 1);
}

TEST_CASE_FIXTURE(EngineFixture, "a code object outlives the engine's last other reference") {
    const auto host = make_object({{L"Mark", [](const auto&) { return Variant(5L); }}});
    add(L"Global", L"", host.get(), true);
    add(L"Code", L"Function Five()\r\nFive = Mark\r\nEnd Function");
    ComPtr<IDispatch> procedures = code_object(L"Code");
    engine.reset();
    CHECK(automation::to_long(automation::call_method(procedures.get(), L"Five")) == 5);
    CHECK(reference_count(host->dispatch()) > 1);
    procedures.reset();
    CHECK(reference_count(host->dispatch()) == 1);
}

TEST_CASE_FIXTURE(EngineFixture, "calls nest, and each error belongs to the call that it ended") {
    use_sink();
    const auto host = make_object({{L"CallInner", [&](const auto&) {
                                        CHECK(error_of([&] { run(L"Inner", L"Fails"); }));
                                        return Variant();
                                    }}});
    add(L"Global", L"", host.get(), true);
    add(L"Inner", L"Sub Fails()\r\nx = 1 / 0\r\nEnd Sub");
    add(L"Outer", L"Sub DoVex()\r\nCallInner\r\nCallInner\r\nErr.Raise 7\r\nEnd Sub");
    CHECK(error_of([&] { run(L"Outer", L"DoVex"); }));
    REQUIRE(sink.errors().size() == 3);
    CHECK(sink.errors()[0].item == L"Inner");
    CHECK(sink.errors()[0].line == 2);
    CHECK(sink.errors()[2].item == L"Outer");
    CHECK(sink.errors()[2].line == 4);
    CHECK(sink.errors()[2].line_text == L"Err.Raise 7");
}

TEST_CASE_FIXTURE(EngineFixture, "thousands of engines leave nothing behind") {
    const auto host = make_object({{L"Value", [](const auto&) { return Variant(2.5); }}});
    for (int i = 0; i < 2000; ++i) {
        engine = create<IHostKitScriptEngine>(L"KelosScript.Engine");
        add(L"Glob", L"", host.get(), true);
        const Variant value = evaluate(L"Value + 1", L"Glob");
        REQUIRE(value.dblVal == 3.5);
    }
    engine.reset();
    CHECK(reference_count(host->dispatch()) == 1);
}
