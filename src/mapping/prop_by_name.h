// Reads and writes a property of a host object that is given as text, through the script engine.
#pragma once

#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Created inside the component only; its members are automation members because the script engine
// calls back into it: inside a script the object is called "CurrentObject". Every call has an
// engine of its own. On a failure the results are the text "<< Error >>".
class PropByName : public automation::Object<PropByName, ITesseraPropByName> {
  public:
    void set_current_object(automation::ComPtr<IDispatch> object) noexcept {
        current_object_ = std::move(object);
    }
    // Both give nothing for an expression of blanks, and without an object.
    automation::Variant evaluate(std::wstring_view expression) noexcept;
    automation::Variant set_value(std::wstring_view expression) noexcept;

    STDMETHODIMP get_CurrentObject(IDispatch** Result) override;
    STDMETHODIMP put_CurrentObject(IDispatch* NewValue) override;
    STDMETHODIMP putref_CurrentObject(IDispatch* NewValue) override;
    STDMETHODIMP EvalExpression(BSTR Expression, VARIANT* Result) override;
    STDMETHODIMP SetValueByExpression(BSTR Expression, VARIANT* Result) override;

  private:
    automation::ComPtr<IDispatch> current_object_;
};

}  // namespace tessera
