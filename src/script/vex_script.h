// Runs the mapping script of a host document and keeps it with the document.
#pragma once

#include <string>

#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Every run has an engine and a global mapping object of its own; nothing of a run survives into
// the next but the last error text. Workset, document and edit control are shared references.
class VexScript : public automation::Object<VexScript, ITesseraVexScript> {
  public:
    static constexpr CLSID class_id = __uuidof(::VexScript);

    STDMETHODIMP get_EditControl(IDispatch** Result) override;
    STDMETHODIMP put_EditControl(IDispatch* NewValue) override;
    STDMETHODIMP putref_EditControl(IDispatch* NewValue) override;
    STDMETHODIMP OnScriptError(IDispatch* ScriptError) override;
    STDMETHODIMP Execute(BSTR ScrText, IXMLDOMDocument** Result) override;
    STDMETHODIMP get_WorkSet(IKelosWorkset** Result) override;
    STDMETHODIMP put_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP putref_WorkSet(IKelosWorkset* NewValue) override;
    STDMETHODIMP get_Document(IKelosDocument** Result) override;
    STDMETHODIMP put_Document(IKelosDocument* NewValue) override;
    STDMETHODIMP putref_Document(IKelosDocument* NewValue) override;
    STDMETHODIMP GetVexScript(IKelosDocument* Document, VARIANT_BOOL Create, BSTR* Result) override;
    STDMETHODIMP SetVexScript(IKelosDocument* Document, BSTR Script, VARIANT_BOOL* Result) override;

  private:
    automation::ComPtr<IXMLDOMDocument> run(const std::wstring& script);

    automation::ComPtr<IDispatch> edit_control_;
    automation::Bstr last_error_text_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosDocument> document_;
};

}  // namespace tessera
