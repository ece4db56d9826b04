// An automation object whose members are lambdas, to stand in for whatever calls or is called.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "automation/plain_object.h"
#include "support/com_fixture.h"

namespace test {

// What a member does: gets its arguments in the order of their declaration.
using Member = std::function<Variant(const std::vector<Variant>& arguments)>;

class ScriptedObject : public automation::PlainObject<IDispatch, IOleWindow> {
  public:
    explicit ScriptedObject(std::map<std::wstring, Member> members)
        : members_(std::move(members)) {}

    IDispatch* dispatch() noexcept { return this; }

    // The window that the object shows as its own.
    HWND shown_window = nullptr;

    // Only an object that shows a window has one.
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (id == IID_IOleWindow && !shown_window) {
            *result = nullptr;
            return E_NOINTERFACE;
        }
        return PlainObject::QueryInterface(id, result);
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto found = find(names[0]);
        if (found == members_.end()) return DISP_E_UNKNOWNNAME;
        ids[0] = static_cast<DISPID>(std::distance(members_.begin(), found)) + 1;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override {
        try {
            std::vector<Variant> arguments;
            for (UINT i = parameters->cArgs; i > 0; --i)
                arguments.push_back(Variant::value_of(parameters->rgvarg[i - 1]));
            const Member body = std::next(members_.begin(), member - 1)->second;
            Variant value = body(arguments);
            if (result) *result = value.detach();
            return S_OK;
        } catch (const automation::Error& error) {
            if (!exception) return error.code();
            *exception = {};
            exception->scode = error.code();
            exception->bstrDescription = Bstr(error.description()).detach();
            exception->bstrSource = Bstr(error.source()).detach();
            return DISP_E_EXCEPTION;
        }
    }

    STDMETHODIMP GetWindow(HWND* result) override {
        *result = shown_window;
        return shown_window ? S_OK : E_FAIL;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  private:
    std::map<std::wstring, Member>::iterator find(const wchar_t* name) {
        return std::find_if(members_.begin(), members_.end(), [&](const auto& entry) {
            return _wcsicmp(entry.first.c_str(), name) == 0;
        });
    }

    std::map<std::wstring, Member> members_;
};

inline ComPtr<ScriptedObject> make_object(std::map<std::wstring, Member> members = {}) {
    return automation::make_plain<ScriptedObject>(std::move(members));
}

}  // namespace test
