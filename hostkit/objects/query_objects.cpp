#include "hostkit/objects/query_objects.h"

#include "automation/enumerator.h"
#include "automation/object.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Object;
using automation::Variant;

// A result and the model that it points into.
struct ResultRef {
    ModelRef model;
    std::shared_ptr<QueryState> state;

    QueryDefinition& definition() const noexcept { return *state->definition; }
};

ComPtr<IKelosQuery> make_query(ResultRef result);

class TranslateObjectValue : public Object<TranslateObjectValue, ::TranslateObject> {
  public:
    explicit TranslateObjectValue(std::shared_ptr<const CellDefinition> cell)
        : cell_(std::move(cell)) {}

    STDMETHODIMP get_KelosObject(IKelosObject** result) override {
        return answer(result, [&] { return make_object(kept(cell_, cell_->object)); });
    }
    STDMETHODIMP get_Property(BSTR* result) override {
        return answer(result, [&] { return Bstr(cell_->property); });
    }
    STDMETHODIMP get_SubObjectType(long* result) override {
        return answer(result, [&] { return cell_->sub_type; });
    }
    STDMETHODIMP get_SubObjectKey(BSTR* result) override {
        return answer(result, [&] { return Bstr(cell_->sub_key); });
    }

  private:
    std::shared_ptr<const CellDefinition> cell_;
};

class CellObject : public Object<CellObject, Extends<IHostKitCell, IKelosCell>> {
  public:
    CellObject(ModelRef model, CellContent content)
        : model_(std::move(model)), content_(std::move(content)) {}

    STDMETHODIMP get_Object(IKelosObject** result) override {
        return answer(result, [&] { return make_object(kept(model_, content_.object)); });
    }
    STDMETHODIMP get_Text(BSTR* result) override {
        return answer(result, [&] { return Bstr(content_.text); });
    }
    STDMETHODIMP get_Value(VARIANT* result) override {
        return answer(result, [&] {
            if (content_.value_object)
                return Variant(static_cast<IDispatch*>(
                    make_object(kept(model_, content_.value_object)).get()));
            if (!content_.translated) return content_.value;
            const auto translated =
                automation::make<TranslateObjectValue>(kept(model_, content_.translated));
            return Variant(static_cast<IDispatch*>(translated->main_interface()));
        });
    }

  private:
    ModelRef model_;
    CellContent content_;
};

class ColumnList : public Object<ColumnList, Extends<IHostKitQColumnDefs, IKelosQColumnDefs>> {
  public:
    explicit ColumnList(ResultRef result) : result_(std::move(result)) {}

    STDMETHODIMP get_Count(long* count) override {
        return answer(count, [&] { return static_cast<long>(columns().size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosQColumnDef** column) override {
        return answer(column, Given(index), [&]() -> ComPtr<IKelosQColumnDef> {
            const auto* const found = item_at(columns(), index);
            return found ? make_column_definition(result_.model, **found) : nullptr;
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(columns(), [&](const auto& column) {
                return make_column_definition(result_.model, *column);
            });
        });
    }

  private:
    std::vector<std::unique_ptr<Column>>& columns() const noexcept {
        return result_.definition().columns;
    }

    ResultRef result_;
};

class ResultTable : public Object<ResultTable, Extends<IHostKitResultTable, IKelosResultTable>> {
  public:
    explicit ResultTable(ResultRef result) : result_(std::move(result)) {}

    STDMETHODIMP get_RowCount(long* count) override {
        return answer(count, [&] { return row_count(*result_.state); });
    }
    STDMETHODIMP get_ColumnCount(long* count) override {
        return answer(count,
                      [&] { return static_cast<long>(result_.definition().columns.size()); });
    }
    STDMETHODIMP get_Columns(IKelosQColumnDefs** columns) override {
        return answer(columns,
                      [&] { return automation::make<ColumnList>(result_)->main_pointer(); });
    }
    STDMETHODIMP get_Cell(long row, long column, IKelosCell** cell) override {
        return answer(cell, Given(row, column), [&]() -> ComPtr<IKelosCell> {
            auto content = cell_at(*result_.state, row, column);
            if (!content) return {};
            return automation::make<CellObject>(result_.model, *std::move(content))->main_pointer();
        });
    }
    STDMETHODIMP get_NestedQuery(long row, IKelosQuery** query) override {
        return answer(query, Given(row), [&]() -> ComPtr<IKelosQuery> {
            auto nested = nested_query(*result_.state, row);
            if (!nested) return {};
            return make_query(
                ResultRef{result_.model, std::make_shared<QueryState>(*std::move(nested))});
        });
    }
    STDMETHODIMP get_TotalRowCount(long* count) override {
        return answer(count, [&] { return total_row_count(*result_.state); });
    }

  private:
    ResultRef result_;
};

class QueryObject : public Object<QueryObject, Extends<IHostKitQuery, IKelosQuery>> {
  public:
    explicit QueryObject(ResultRef result) : result_(std::move(result)) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(result_.definition().name); });
    }
    STDMETHODIMP Run() override {
        return run([&] { run_query(*result_.state); });
    }
    STDMETHODIMP get_ResultTable(IKelosResultTable** table) override {
        return answer(table,
                      [&] { return automation::make<ResultTable>(result_)->main_pointer(); });
    }

  private:
    ResultRef result_;
};

ComPtr<IKelosQuery> make_query(ResultRef result) {
    return automation::make<QueryObject>(std::move(result))->main_pointer();
}

class QueryContainer : public Object<QueryContainer, IHostKitQueryContainer> {
  public:
    explicit QueryContainer(ResultRef result) : result_(std::move(result)) {}

    STDMETHODIMP get_TopQuery(IKelosQuery** query) override {
        return answer(query, [&] { return make_query(result_); });
    }

  private:
    ResultRef result_;
};

ResultRef top_result(const ModelRef& model, QueryDefinition& query) {
    return {model, kept(model, &query.state)};
}

}  // namespace

ComPtr<IKelosQuery> make_query(const ModelRef& model, QueryDefinition& query) {
    return make_query(top_result(model, query));
}

ComPtr<IDispatch> make_query_container(const ModelRef& model, QueryDefinition& query) {
    return automation::make<QueryContainer>(top_result(model, query))->main_pointer();
}

}  // namespace hostkit
