#include "hostkit/script/script_site.h"

#include <algorithm>

#include "automation/error.h"
#include "automation/exception_info.h"
#include "automation/text.h"
#include "hostkit/script/script_error_text.h"

namespace hostkit {
namespace {

using automation::view_of;

constexpr std::wstring_view runtime_source = L"Microsoft VBScript runtime error";
constexpr std::wstring_view compilation_source = L"Microsoft VBScript compilation error";

void read_exception(IActiveScriptError& error, ScriptErrorRecord& record) {
    automation::ExceptionInfo info;
    if (FAILED(error.GetExceptionInfo(&info))) return;
    info.fill_in();
    if (FAILED(info.scode)) record.code = info.scode;
    record.description = view_of(info.bstrDescription);
    record.source = view_of(info.bstrSource);
}

void fill_gaps(ScriptErrorRecord& record) {
    const bool compiling = record.source == compilation_source;
    if (record.source.empty()) record.source = runtime_source;
    if (record.description.empty())
        record.description = compiling ? L"Syntax error" : runtime_error_text(record.code);
}

}  // namespace

ScriptSite::Watch::Watch(ScriptSite& site, std::wstring_view item, std::wstring_view expression)
    : site_(site), outer_(site.watch_), item_(item), expression_(expression) {
    site_.watch_ = this;
}

ScriptSite::Watch::~Watch() {
    site_.watch_ = outer_;
}

DWORD ScriptSite::add_module(ScriptModule module) {
    modules_.push_back(std::move(module));
    return static_cast<DWORD>(modules_.size());
}

const ScriptModule* ScriptSite::find_module(std::wstring_view name) const noexcept {
    const auto found = std::ranges::find_if(modules_, [&](const ScriptModule& module) {
        return automation::equal_ignoring_case(module.name, name);
    });
    return found == modules_.end() ? nullptr : &*found;
}

// Numbers and dates in scripts read as they do everywhere else in the host.
STDMETHODIMP ScriptSite::GetLCID(LCID* result) {
    if (!result) return E_POINTER;
    *result = GetUserDefaultLCID();
    return S_OK;
}

STDMETHODIMP ScriptSite::GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** object,
                                     ITypeInfo** info) {
    if (object) *object = nullptr;
    if (info) *info = nullptr;
    const ScriptModule* const module = find_module(name);
    if (!module || !module->object) return TYPE_E_ELEMENTNOTFOUND;
    if ((mask & SCRIPTINFO_IUNKNOWN) && object) {
        *object = module->object.get();
        (*object)->AddRef();
    }
    // Type information would only serve event sources, which the modules' objects are not.
    return S_OK;
}

STDMETHODIMP ScriptSite::GetDocVersionString(BSTR* result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ScriptSite::OnScriptError(IActiveScriptError* error) {
    if (!error) return E_POINTER;
    if (!watch_) return S_OK;
    try {
        watch_->error_ = describe(*error);
        return S_OK;
    } catch (...) {
        return automation::current_error().code;
    }
}

ScriptErrorRecord ScriptSite::describe(IActiveScriptError& error) const {
    ScriptErrorRecord record;
    read_exception(error, record);
    fill_gaps(record);

    DWORD cookie = expression_cookie;
    ULONG line = 0;
    LONG character = 0;
    error.GetSourcePosition(&cookie, &line, &character);
    std::wstring_view code = watch_->expression_;
    record.item = watch_->item_;
    if (cookie != expression_cookie && cookie <= modules_.size()) {
        code = modules_[cookie - 1].code;
        record.item = modules_[cookie - 1].name;
    }
    // The engine counts lines from 0.
    const SourceLine found = source_line(code, static_cast<long>(line) + 1);
    record.line = found.number;
    record.line_text = found.text;
    return record;
}

STDMETHODIMP ScriptSite::GetWindow(HWND* result) {
    if (!result) return E_POINTER;
    *result = GetActiveWindow();
    return S_OK;
}

}  // namespace hostkit
