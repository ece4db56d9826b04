#include "automation/error.h"

#include <new>
#include <stdexcept>

#include <cguid.h>

namespace automation {
namespace {

struct KnownText {
    HRESULT code;
    const wchar_t* text;
};

// The run-time's own words, where the system has none or worse ones.
constexpr KnownText known_texts[] = {
    {error_invalid_procedure_call, L"Invalid procedure call or argument"},
    {error_invalid_use_of_null, L"Invalid use of Null"},
    {error_object_variable_not_set, L"Object variable not set"},
    {error_subscript_out_of_range, L"Subscript out of range"},
    {error_type_mismatch, L"Type mismatch"},
    {error_overflow, L"Overflow"},
    {E_NOINTERFACE, L"No such interface supported"},
    {E_OUTOFMEMORY, L"Out of memory"},
    {E_POINTER, L"Invalid pointer"},
    {E_FAIL, L"Unspecified error"},
    {DISP_E_UNKNOWNNAME, L"Object doesn't support this property or method"},
    {DISP_E_MEMBERNOTFOUND, L"Object doesn't support this property or method"},
    {CO_E_CLASSSTRING, L"Can't create object: its name is not registered"},
    {REGDB_E_CLASSNOTREG, L"Can't create object: its class is not registered"},
};

Bstr system_text(HRESULT code) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, static_cast<DWORD>(code), 0, text, 512, nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r'))
        --length;
    return Bstr(std::wstring_view(text, length));
}

Bstr numbered_text(HRESULT code) {
    wchar_t text[32];
    const int length = swprintf(text, 32, L"Error &H%08X", static_cast<unsigned>(code));
    return Bstr(std::wstring_view(text, length > 0 ? static_cast<std::size_t>(length) : 0));
}

Bstr describe(HRESULT code) {
    for (const KnownText& known : known_texts)
        if (known.code == code) return Bstr(known.text);
    Bstr text = system_text(code);
    return text.empty() ? numbered_text(code) : text;
}

ErrorReport described(HRESULT code, Bstr description = {}, Bstr source = {}) {
    if (description.empty()) description = describe(code);
    return {code, std::move(description), std::move(source)};
}

// Portable code throws the standard exceptions; each has one meaning to automation.
ErrorReport translate_current() {
    try {
        throw;
    } catch (const Error& error) {
        return described(error.code(), error.description(), error.source());
    } catch (const std::bad_alloc&) {
        return described(E_OUTOFMEMORY);
    } catch (const std::length_error&) {
        return described(E_OUTOFMEMORY);
    } catch (const std::overflow_error&) {
        return described(error_overflow);
    } catch (const std::out_of_range&) {
        return described(error_subscript_out_of_range);
    } catch (const std::invalid_argument&) {
        return described(error_invalid_procedure_call);
    } catch (...) {
        return described(E_FAIL);
    }
}

}  // namespace

void fail(HRESULT code) {
    throw Error(code);
}

void fail(HRESULT code, std::wstring_view description) {
    throw Error(code, Bstr(description));
}

void fail_callee(HRESULT code, IUnknown* callee, REFIID interface_id) {
    // Error info that another object left on the thread earlier must not be taken for this one's.
    ComPtr<ISupportErrorInfo> supports;
    if (callee)
        callee->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(supports.put()));
    const bool speaks = supports && supports->InterfaceSupportsErrorInfo(interface_id) == S_OK;
    ComPtr<IErrorInfo> info;
    Bstr description;
    Bstr source;
    if (GetErrorInfo(0, info.put()) == S_OK && info && speaks) {
        info->GetDescription(description.put());
        info->GetSource(source.put());
    }
    throw Error(code, std::move(description), std::move(source));
}

ErrorReport current_error() noexcept {
    try {
        return translate_current();
    } catch (...) {
        // Describing it ran out of memory: the code alone must do.
        return {E_OUTOFMEMORY, {}, {}};
    }
}

HRESULT raise_current_error(const wchar_t* source) noexcept {
    const ErrorReport error = current_error();
    // An older error's words must not stand for this one.
    SetErrorInfo(0, nullptr);
    try {
        ComPtr<ICreateErrorInfo> creator;
        check(CreateErrorInfo(creator.put()));
        creator->SetGUID(GUID_NULL);
        creator->SetDescription(error.description.get());
        creator->SetSource(error.source.empty() ? Bstr(source).get() : error.source.get());
        if (const auto info = creator.try_as<IErrorInfo>()) SetErrorInfo(0, info.get());
    } catch (...) {
        // The code alone must do.
    }
    return error.code;
}

}  // namespace automation
