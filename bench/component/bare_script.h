// The baselines of scripts: the host's engine with an empty object in the place of the mapping
// run's, and the platform's engine alone.
#pragma once

#include "automation/object.h"
#include "bench/component/project.h"

namespace bench {

// Stands for the global object of a mapping run: its members take what they get and do nothing.
class EmptyGlobal : public automation::Object<EmptyGlobal, ITesseraSCGlobal> {
  public:
    explicit EmptyGlobal(ComPtr<IKelosMappingTable> table = {}) : table_(std::move(table)) {}

    STDMETHODIMP ContentFix(BSTR, VARIANT, VARIANT_BOOL, VARIANT_BOOL) override { return S_OK; }
    STDMETHODIMP get_WorkSet(IKelosWorkset**) override { return E_NOTIMPL; }
    STDMETHODIMP get_Document(IKelosDocument**) override { return E_NOTIMPL; }
    STDMETHODIMP get_Project(IKelosProject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_ReportObject(IKelosObject**) override { return E_NOTIMPL; }
    STDMETHODIMP get_MappingTableExcel(IKelosMappingTable** Result) override {
        *Result = ComPtr(table_).detach();
        return S_OK;
    }
    STDMETHODIMP ExcelABC(long, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP Content(BSTR, IKelosObject*, BSTR, VARIANT, BSTR, BSTR, VARIANT_BOOL,
                         VARIANT_BOOL) override {
        return S_OK;
    }

  private:
    ComPtr<IKelosMappingTable> table_;
};

// Runs the procedure "DoVex" of the text in the host's engine, with the object's members global.
void run_script(const std::wstring& text, IDispatch* global);

// One evaluation of the expression on an engine of the platform that its kept class factory makes;
// the object's members are global in it.
Variant evaluate(const wchar_t* expression, IDispatch* global);

}  // namespace bench
