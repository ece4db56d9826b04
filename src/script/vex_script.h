// Runs the mapping script of a host document and keeps it with the document.
#pragma once

#include <string>

#include "automation/dom.h"
#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Every run has an engine and a global mapping object of its own; nothing of a run survives into
// the next but the last error text. Workset, document and edit control are shared references.
class VexScript : public automation::Object<VexScript, ITesseraVexScript> {
  public:
    static constexpr CLSID class_id = __uuidof(::VexScript);

    // Runs the script, or the edit control's when there is none. The content document that it made;
    // nothing when it was empty or failed.
    dom::Document execute(std::wstring_view text) noexcept;
    // Shows the engine's error, marks its line and keeps its message.
    void on_script_error(IDispatch* error) noexcept;
    // The document's script. The default script is stored first where a mapping table has none.
    automation::Bstr vex_script(IKelosDocument* document) noexcept;
    // Whether the script was stored.
    bool set_vex_script(IKelosDocument* document, std::wstring_view script) noexcept;

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
    dom::Document run(const std::wstring& script);

    automation::ComPtr<IDispatch> edit_control_;
    automation::Bstr last_error_text_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosDocument> document_;
};

}  // namespace tessera
