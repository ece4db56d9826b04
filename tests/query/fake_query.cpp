#include "query/fake_query.h"

#include "automation/dom.h"
#include "automation/object.h"

namespace fake {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::make;
using automation::Object;
using automation::Variant;

// Runs a member: counted under its name, failing when it is the one that is to fail.
template <class Body>
HRESULT run(const char* name, Body&& body) noexcept {
    try {
        ++calls().counts[name];
        if (calls().failing == name) return failure;
        body();
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

VARIANT_BOOL as_variant_bool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

BSTR text_result(const std::wstring& text) {
    return Bstr(text).detach();
}

class ColumnDefinition : public Object<ColumnDefinition, IKelosQColumnDef> {
  public:
    explicit ColumnDefinition(const Column& column) : column_(column) {}

    STDMETHODIMP InitNew(long) override { return E_NOTIMPL; }
    STDMETHODIMP InitEvaluator(long) override { return E_NOTIMPL; }
    STDMETHODIMP get_PropertyConstant(long* result) override {
        return run("PropertyConstant", [&] { *result = kqpDisplayValue; });
    }
    STDMETHODIMP put_PropertyConstant(long) override { return E_NOTIMPL; }
    STDMETHODIMP get_ParameterText(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_ParameterText(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_UnitText(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP put_UnitText(BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP get_LCID(long* result) override {
        return run("LCID", [&] { *result = column_.lcid; });
    }
    STDMETHODIMP put_LCID(long) override { return E_NOTIMPL; }
    STDMETHODIMP get_Kind(KelosQueryProperty*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Evaluator(IKelosValueEvaluator**) override { return E_NOTIMPL; }
    STDMETHODIMP get_Shown(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP get_Relevant(VARIANT_BOOL* result) override {
        return run("Relevant", [&] { *result = as_variant_bool(column_.relevant); });
    }
    STDMETHODIMP get_Name(BSTR* result) override {
        return run("Name", [&] { *result = text_result(column_.name); });
    }
    STDMETHODIMP get_Heading(BSTR* result) override {
        return run("Heading", [&] { *result = text_result(L"Heading\r\n" + column_.name); });
    }
    STDMETHODIMP get_GetName(BSTR* result) override {
        return run("GetName", [&] { *result = text_result(L"Get" + column_.name); });
    }
    STDMETHODIMP get_SetName(BSTR* result) override {
        return run("SetName", [&] { *result = text_result(column_.set_name); });
    }
    STDMETHODIMP get_GetParameter(VARIANT* result) override {
        return run("GetParameter", [&] { *result = Variant(1L).detach(); });
    }
    STDMETHODIMP get_SetParameter(VARIANT* result) override {
        return run("SetParameter", [&] { *result = Variant(2L).detach(); });
    }
    STDMETHODIMP WriteXML(IXMLDOMNode* owner) override {
        return run("WriteXML", [&] {
            const dom::Node parent(owner);
            const dom::Element element =
                dom::create_element(dom::owner_document(parent), L"Description");
            dom::set_attribute(element, L"Of", column_.name);
            dom::append(parent, element);
        });
    }

  private:
    Column column_;
};

class ColumnDefinitions : public Object<ColumnDefinitions, IKelosQColumnDefs> {
  public:
    explicit ColumnDefinitions(std::shared_ptr<Query> query) : query_(std::move(query)) {}

    STDMETHODIMP get_Count(long* result) override {
        return run("Columns.Count", [&] { *result = static_cast<long>(query_->columns.size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosQColumnDef** result) override {
        return run("Columns.Item", [&] {
            const Column& column = query_->columns.at(static_cast<std::size_t>(index - 1));
            *result = make<ColumnDefinition>(column)->main_pointer().detach();
        });
    }

  private:
    std::shared_ptr<Query> query_;
};

class CellObject : public Object<CellObject, IKelosCell> {
  public:
    explicit CellObject(const Cell& cell) : cell_(cell) {}

    STDMETHODIMP get_Object(IKelosObject** result) override {
        return run("Cell.Object", [&] { *result = ComPtr<IKelosObject>(cell_.object).detach(); });
    }
    STDMETHODIMP get_Text(BSTR* result) override {
        return run("Cell.Text", [&] { *result = text_result(cell_.text); });
    }
    STDMETHODIMP get_Value(VARIANT* result) override {
        return run("Cell.Value", [&] {
            Variant value = cell_.value.vt == VT_EMPTY ? Variant(cell_.text) : cell_.value;
            *result = value.detach();
        });
    }

  private:
    Cell cell_;
};

// Strict where the contract leaves hosts the choice: rows and columns that do not exist fail.
class ResultTable : public Object<ResultTable, IKelosResultTable> {
  public:
    explicit ResultTable(std::shared_ptr<Query> query) : query_(std::move(query)) {}

    STDMETHODIMP get_RowCount(long* result) override {
        return run("RowCount", [&] { *result = static_cast<long>(query_->rows.size()); });
    }
    STDMETHODIMP get_ColumnCount(long* result) override {
        return run("ColumnCount", [&] { *result = static_cast<long>(query_->columns.size()); });
    }
    STDMETHODIMP get_Columns(IKelosQColumnDefs** result) override {
        return run("Columns", [&] {
            if (query_->has_columns)
                *result = make<ColumnDefinitions>(query_)->main_pointer().detach();
        });
    }
    STDMETHODIMP get_Cell(long row, long column, IKelosCell** result) override {
        return run("Cell", [&] {
            const Cell& cell = row_at(row).cells.at(static_cast<std::size_t>(column - 1));
            if (!cell.missing) *result = make<CellObject>(cell)->main_pointer().detach();
        });
    }
    STDMETHODIMP get_NestedQuery(long row, IKelosQuery** result) override {
        return run("NestedQuery", [&] {
            if (row_at(row).nested) *result = make_query(row_at(row).nested).detach();
        });
    }
    STDMETHODIMP get_TotalRowCount(long* result) override {
        return run("TotalRowCount", [&] { *result = total_rows(*query_); });
    }

  private:
    const Row& row_at(long row) const { return query_->rows.at(static_cast<std::size_t>(row - 1)); }

    static long total_rows(const Query& query) {
        long total = static_cast<long>(query.rows.size());
        for (const Row& row : query.rows)
            if (row.nested) total += total_rows(*row.nested);
        return total;
    }

    std::shared_ptr<Query> query_;
};

class QueryObject : public Object<QueryObject, IKelosQuery> {
  public:
    explicit QueryObject(std::shared_ptr<Query> query) : query_(std::move(query)) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return run("Query.Name", [&] { *result = text_result(query_->name); });
    }
    STDMETHODIMP Run() override {
        return run("Run", [] {});
    }
    STDMETHODIMP get_ResultTable(IKelosResultTable** result) override {
        return run("ResultTable", [&] {
            if (query_->has_table) *result = make<ResultTable>(query_)->main_pointer().detach();
        });
    }

  private:
    std::shared_ptr<Query> query_;
};

class FakeObject : public Object<FakeObject, IKelosObject> {
  public:
    FakeObject(const wchar_t* uid, long type) : uid_(uid), type_(type) {}

    STDMETHODIMP get_SystemUID(BSTR* result) override {
        return run("SystemUID", [&] { *result = text_result(uid_); });
    }
    STDMETHODIMP get_SystemType(long* result) override {
        return run("SystemType", [&] { *result = type_; });
    }
    STDMETHODIMP get_WorkSet(IKelosWorkset**) override { return E_NOTIMPL; }
    STDMETHODIMP get_Project(IKelosProject**) override {
        return run("Project", [] {});
    }
    STDMETHODIMP get_PathFullName(IKelosProject*, BSTR* result) override {
        return run("PathFullName",
                   [&] { *result = text_result(std::to_wstring(type_) + L"|" + uid_); });
    }
    STDMETHODIMP FindByPathFullName(BSTR, IKelosObject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_Attributes(IKelosAttributes**) override { return E_NOTIMPL; }
    STDMETHODIMP AttributeByFullName(BSTR, IKelosAttribute**) override { return E_NOTIMPL; }
    STDMETHODIMP GetRights(IKelosUser*, long*) override { return E_NOTIMPL; }
    STDMETHODIMP get_XObj(IDispatch**) override { return E_NOTIMPL; }

  private:
    std::wstring uid_;
    long type_;
};

class Workset : public Object<Workset, IKelosWorkset> {
  public:
    explicit Workset(long lcid) : lcid_(lcid) {}

    STDMETHODIMP get_CurrentProject(IKelosProject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrentUser(IKelosUser**) override { return E_NOTIMPL; }
    STDMETHODIMP LoadObject(long, BSTR, IKelosObject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_CurrentLCID(long* result) override {
        return run("CurrentLCID", [&] { *result = lcid_; });
    }
    STDMETHODIMP get_CurrentUndoState(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP putref_CurrentUndoState(IDispatch*) override { return E_NOTIMPL; }
    STDMETHODIMP get_OuterUndoState(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP putref_OuterUndoState(IDispatch*) override { return E_NOTIMPL; }

  private:
    long lcid_;
};

}  // namespace

Calls& calls() {
    static Calls program_calls;
    return program_calls;
}

ComPtr<IKelosQuery> make_query(std::shared_ptr<Query> query) {
    return make<QueryObject>(std::move(query))->main_pointer();
}

ComPtr<IKelosObject> make_object(const wchar_t* uid, long type) {
    return make<FakeObject>(uid, type)->main_pointer();
}

ComPtr<IKelosWorkset> make_workset(long lcid) {
    return make<Workset>(lcid)->main_pointer();
}

std::shared_ptr<Query> query(const wchar_t* name, std::vector<std::wstring> columns,
                             std::vector<std::vector<std::wstring>> rows) {
    auto result = std::make_shared<Query>();
    result->name = name;
    for (std::wstring& column : columns)
        result->columns.emplace_back().name = std::move(column);
    for (std::vector<std::wstring>& texts : rows) {
        Row& row = result->rows.emplace_back();
        for (std::wstring& text : texts) {
            Cell& cell = row.cells.emplace_back();
            cell.missing = text == L"-";
            cell.text = std::move(text);
        }
    }
    return result;
}

Row& row(const std::shared_ptr<Query>& query, std::size_t number) {
    return query->rows.at(number - 1);
}

}  // namespace fake
