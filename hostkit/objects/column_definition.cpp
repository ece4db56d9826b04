#include "hostkit/objects/query_objects.h"

#include "automation/object.h"
#include "host/known_properties.h"
#include "hostkit.h"
#include "hostkit/classes.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/services/application.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Object;
using automation::Variant;
using automation::view_of;

// What a definition and its evaluator share. Language and unit are reported back as those that were
// really used: before an evaluation what the settings ask for, after it what the object had.
struct ColumnState {
    std::shared_ptr<ColumnSettings> settings;
    ModelRef model;  // of a query's column; nothing for a free one
    bool definition_ready = false;
    bool evaluator_ready = false;
    std::optional<long> used_lcid;
    std::optional<std::wstring> used_unit;

    void forget_use() noexcept {
        used_lcid.reset();
        used_unit.reset();
    }
};
using StateRef = std::shared_ptr<ColumnState>;

class Evaluator : public Object<Evaluator, Extends<IHostKitValueEvaluator, IKelosValueEvaluator>> {
  public:
    explicit Evaluator(StateRef state) : state_(std::move(state)) {}

    STDMETHODIMP Evaluate(VARIANT object, IKelosValueList** result) override {
        return answer(result, Given(object), [&]() -> ComPtr<IKelosValueList> {
            const ElementRef element = element_behind(Variant::value_of(object).object().get());
            if (!element) return {};
            auto values = read_property(*element, *state_->settings);
            if (!values) return {};
            state_->used_lcid = values->lcid;
            state_->used_unit = values->unit ? values->unit->text : std::wstring();
            return make_value_list(*std::move(values));
        });
    }

  private:
    StateRef state_;
};

// The language that the settings lead to: theirs where the project has it, else the project's own.
long language_asked_for(const ColumnState& state) {
    const ModelRef model = state.model ? state.model : model_behind(current_workset().get());
    if (!model || !model->project) return state.settings->lcid;
    return model->languages[language_for(*model->project, state.settings->lcid)].lcid;
}

class ColumnDefinition
    : public Object<ColumnDefinition, automation::Extends<IHostKitQColumnDef, IKelosQColumnDef>> {
  public:
    explicit ColumnDefinition(ColumnState state)
        : state_(std::make_shared<ColumnState>(std::move(state))) {}

    STDMETHODIMP InitNew(long) override {
        return run([&] {
            *state_->settings = {};
            state_->forget_use();
            state_->definition_ready = true;
        });
    }
    STDMETHODIMP InitEvaluator(long) override {
        return run([&] { state_->evaluator_ready = true; });
    }
    STDMETHODIMP get_PropertyConstant(long* result) override {
        return answer(result, [&] { return settings().constant; });
    }
    STDMETHODIMP put_PropertyConstant(long constant) override {
        return set(Given(constant), &ColumnSettings::constant, [&] { return constant; });
    }
    STDMETHODIMP get_ParameterText(BSTR* result) override {
        return answer(result, [&] { return Bstr(settings().parameter); });
    }
    STDMETHODIMP put_ParameterText(BSTR text) override {
        return set(Given(text), &ColumnSettings::parameter,
                   [&] { return std::wstring(view_of(text)); });
    }
    STDMETHODIMP get_UnitText(BSTR* result) override {
        return answer(result, [&] { return Bstr(state_->used_unit.value_or(settings().unit)); });
    }
    STDMETHODIMP put_UnitText(BSTR text) override {
        return set(Given(text), &ColumnSettings::unit, [&] { return std::wstring(view_of(text)); });
    }
    STDMETHODIMP get_LCID(long* result) override {
        return answer(result, [&] {
            settings();
            return state_->used_lcid ? *state_->used_lcid : language_asked_for(*state_);
        });
    }
    STDMETHODIMP put_LCID(long lcid) override {
        return set(Given(lcid), &ColumnSettings::lcid, [&] { return lcid; });
    }
    STDMETHODIMP get_Kind(KelosQueryProperty* result) override {
        return answer(result, [&] { return static_cast<KelosQueryProperty>(settings().constant); });
    }
    STDMETHODIMP get_Evaluator(IKelosValueEvaluator** result) override {
        return answer(result, [&] {
            settings();
            if (!state_->evaluator_ready)
                automation::fail(E_UNEXPECTED, L"InitEvaluator has not been called");
            return automation::make<Evaluator>(state_)->main_pointer();
        });
    }
    STDMETHODIMP get_Shown(VARIANT_BOOL* result) override {
        return answer(result, [&] { return as_variant_bool(settings().shown); });
    }
    STDMETHODIMP get_Relevant(VARIANT_BOOL* result) override {
        return answer(result, [&] { return as_variant_bool(settings().relevant); });
    }
    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(settings().name); });
    }
    STDMETHODIMP get_Heading(BSTR* result) override {
        return answer(result, [&] { return Bstr(heading()); });
    }
    STDMETHODIMP get_GetName(BSTR* result) override {
        return answer(result, [&] {
            const auto* const property = kelos::find_property(settings().constant);
            return Bstr(property ? property->name : u"");
        });
    }
    STDMETHODIMP get_SetName(BSTR* result) override {
        return answer(result, [&] { return Bstr(set_name()); });
    }
    STDMETHODIMP get_GetParameter(VARIANT* result) override {
        return answer(result, [&] { return parameter(); });
    }
    STDMETHODIMP get_SetParameter(VARIANT* result) override {
        return answer(result, [&] { return set_name().empty() ? Variant() : parameter(); });
    }
    STDMETHODIMP WriteXML(IXMLDOMNode* owner) override {
        return run(Given(owner), [&] { write_column(owner, settings(), heading()); });
    }

  private:
    ColumnSettings& settings() const {
        if (!state_->definition_ready)
            automation::fail(E_UNEXPECTED, L"InitNew has not been called");
        return *state_->settings;
    }

    template <class Given, class Field, class Value>
    HRESULT set(const Given& given, Field ColumnSettings::*field, Value value,
                const std::source_location& member = std::source_location::current()) {
        const auto change = [&] {
            settings().*field = value();
            state_->forget_use();
        };
        return run(given, change, member);
    }

    const std::wstring& heading() const {
        const ColumnSettings& column = settings();
        if (!state_->model || !state_->model->project) return column.heading.in(0);
        return column.heading.in(language_for(*state_->model->project, column.lcid));
    }
    std::u16string_view set_name() const {
        const auto* const property = kelos::find_property(settings().constant);
        return property ? property->set_name : u"";
    }
    Variant parameter() const {
        const std::wstring& text = settings().parameter;
        return text.empty() ? Variant() : Variant(text);
    }

    StateRef state_;
};

class PropertyConstantObject
    : public Object<PropertyConstantObject,
                    automation::Extends<IHostKitPropertyConstant, IKelosPropertyConstant>> {
  public:
    STDMETHODIMP put_Constant(long constant) override {
        return run(Given(constant), [&] { property_ = kelos::find_property(constant); });
    }
    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(property_ ? property_->name : u""); });
    }
    STDMETHODIMP get_PropertyNumber(long* result) override {
        return answer(result,
                      [&] { return static_cast<long>(property_ ? property_->number : kqpNone); });
    }

  private:
    const kelos::KnownProperty* property_ = nullptr;
};

}  // namespace

ComPtr<IKelosQColumnDef> make_column_definition(const ModelRef& model, Column& column) {
    ColumnState state;
    state.settings = kept(model, &column.settings);
    state.model = model;
    state.definition_ready = true;
    state.evaluator_ready = true;
    return automation::make<ColumnDefinition>(std::move(state))->main_pointer();
}

ComPtr<IUnknown> create_column_definition() {
    ColumnState state;
    state.settings = std::make_shared<ColumnSettings>();
    return automation::make<ColumnDefinition>(std::move(state))->main_interface();
}

ComPtr<IUnknown> create_property_constant() {
    return automation::make<PropertyConstantObject>()->main_interface();
}

}  // namespace hostkit
