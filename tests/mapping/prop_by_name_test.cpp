// Tests of internals: expressions and statements on the current object.

#include "mapping/prop_by_name.h"

#include "support/watched_host.h"

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::Variant;
using tessera::PropByName;

namespace {

class ExpressionFixture : public test::WatchedProject {
  public:
    ComPtr<PropByName> evaluator = automation::make<PropByName>();

    Variant evaluate(const wchar_t* expression) {
        Variant result;
        CHECK(evaluator->EvalExpression(Bstr(expression).get(), result.put()) == S_OK);
        return result;
    }
    Variant assign(const wchar_t* statement) {
        Variant result;
        CHECK(evaluator->SetValueByExpression(Bstr(statement).get(), result.put()) == S_OK);
        return result;
    }
};

}  // namespace

TEST_CASE_FIXTURE(ExpressionFixture, "nothing to evaluate gives empty, without a report") {
    CHECK(evaluate(L"Name").vt == VT_EMPTY);  // no object
    evaluator->putref_CurrentObject(object(L"Anlage|Pumpe").get());
    CHECK(evaluate(L"").vt == VT_EMPTY);
    CHECK(evaluate(L"   ").vt == VT_EMPTY);
    CHECK(assign(L"  ").vt == VT_EMPTY);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ExpressionFixture, "an expression is evaluated on the current object, any type") {
    evaluator->put_CurrentObject(object(L"Anlage|Pumpe").get());
    CHECK(evaluate(L"  Name ").text() == L"Pumpe");
    CHECK(evaluate(L"SystemType + 1").lVal == 4);
    CHECK(evaluate(L"Parent").is_object());
    CHECK(evaluate(L"AttributeByFullName(\"Build.Note\").Value(2)").text() == L"Zeile 2");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ExpressionFixture, "what fails is reported and marked in the result") {
    evaluator->put_CurrentObject(object(L"Anlage|Pumpe").get());
    long reports = 0;
    for (const wchar_t* expression : {L".Name", L"NoSuchMember", L"Name +", L"SystemType / 0"}) {
        CHECK(evaluate(expression).text() == L"<< Error >>");
        CHECK(error(++reports) == L"Tessera.PropByName|Public Function 'EvalExpression'");
    }
    CHECK(assign(L"SystemUID = \"x\"").text() == L"<< Error >>");
    CHECK(error(++reports) == L"Tessera.PropByName|Public Function 'SetValueByExpression'");
    CHECK(evaluator->get_CurrentObject(nullptr) == S_OK);
    CHECK(error(++reports) == L"Tessera.PropByName|Public Property Get 'CurrentObject'");
    CHECK(error_count() == reports);
    CHECK(message_count() == 0);  // the engine says nothing of its own
}

TEST_CASE_FIXTURE(ExpressionFixture, "a statement is run as it comes, line breaks included") {
    const auto pump = object(L"Anlage|Pumpe");
    evaluator->put_CurrentObject(pump.get());
    log_calls();
    CHECK(assign(L" Description = \"neu\" ").vt == VT_EMPTY);
    CHECK(calls({L"Engine"}) ==
          LR"(
new KelosScript.Engine
ScriptEngine.put_ReportErrors False
ScriptEngine.AddModule "Glob", ITesseraPropByName, True
ScriptEngine.AddModule "SetProp", ITesseraPropByName, False
ScriptEngine.CodeObject "SetProp"
)");
    CHECK(evaluate(L"Description").text() == L"neu");
    CHECK(assign(L"Description = \"a\"\r\nCurrentObject.Description2 = \"b\"").vt == VT_EMPTY);
    CHECK(evaluate(L"Description & CurrentObject.Description2").text() == L"ab");
    CHECK(error_count() == 0);
}
