#include "hostkit/call_watch.h"

#include <algorithm>
#include <utility>

#include "automation/bstr.h"
#include "automation/error.h"
#include "automation/thread_slot.h"

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::ThreadSlot;

// Its kit owns the watch: an object of the thread's own could outlive the library's code.
const ThreadSlot& watch_of_thread() {
    static const ThreadSlot slot;
    return slot;
}

std::wstring type_name(IUnknown* object) {
    const auto dispatch = ComPtr<IUnknown>(object).try_as<IDispatch>();
    ComPtr<ITypeInfo> type;
    automation::Bstr name;
    if (dispatch && SUCCEEDED(dispatch->GetTypeInfo(0, 0, type.put())) && type)
        type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
    return name.empty() ? L"object" : name.str();
}

std::string_view after_last(std::string_view text, std::string_view separators) {
    const auto end = text.find_last_of(separators);
    return end == text.npos ? text : text.substr(end + 1);
}

// Where the list of parameters begins, behind what clang calls a namespace without a name.
std::size_t parameters_of(std::string_view function) {
    constexpr std::string_view unnamed = "(anonymous namespace)";
    auto place = function.find('(');
    while (place != function.npos && function.substr(place).starts_with(unnamed))
        place = function.find('(', place + unnamed.size());
    return std::min(place, function.size());
}

std::string_view class_made(std::string_view function) {
    constexpr std::string_view parameter = "Self = ";
    const auto found = function.find(parameter);
    if (found == function.npos) return {};
    const std::string_view value = function.substr(found + parameter.size());
    return after_last(value.substr(0, value.find_first_of(";,]")), ":");
}

std::string_view class_of(std::string_view qualified) {
    return after_last(qualified.substr(0, qualified.find('<')), ": ");
}

}  // namespace

std::wstring shown(std::wstring_view text) {
    std::wstring result = L"\"";
    for (const wchar_t character : text) {
        if (character == L'\r')
            result += L"\\r";
        else if (character == L'\n')
            result += L"\\n";
        else
            result += character;
    }
    return result + L'"';
}

std::wstring shown(const wchar_t* text) {
    return shown(text ? std::wstring_view(text) : std::wstring_view());
}

// Error codes are negative and far below every other number.
std::wstring shown(long number) {
    if (number >= -0x10000) return std::to_wstring(number);
    wchar_t text[16];
    swprintf(text, std::size(text), L"&H%08lX", static_cast<unsigned long>(number));
    return text;
}

std::wstring shown(double number) {
    wchar_t text[32];
    swprintf(text, std::size(text), L"%.15g", number);
    return text;
}

std::wstring shown(VARIANT_BOOL value) {
    return value == VARIANT_FALSE ? L"False" : L"True";
}

std::wstring shown(const VARIANT& value) {
    switch (value.vt) {
        case VT_BSTR:
            return shown(value.bstrVal);
        case VT_I2:
            return shown(long{value.iVal});
        case VT_I4:
            return shown(value.lVal);
        case VT_R8:
            return shown(value.dblVal);
        case VT_BOOL:
            return shown(value.boolVal);
        case VT_EMPTY:
            return L"Empty";
        case VT_NULL:
            return L"Null";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return shown(value.punkVal);
        case VT_ERROR:
            return L"Missing";
        default:
            return L"type " + std::to_wstring(value.vt);
    }
}

std::wstring shown(IUnknown* object) {
    return object ? type_name(object) : L"Nothing";
}

std::wstring shown(const DISPPARAMS& parameters) {
    std::wstring result = L"(";
    for (UINT i = parameters.cArgs; i-- > 0;)
        result += shown(parameters.rgvarg[i]) + (i > 0 ? L", " : L"");
    return result + L")";
}

std::wstring call_name(std::string_view function) {
    const auto parameters = parameters_of(function);
    const std::string_view qualified = function.substr(0, parameters);
    const auto separator = qualified.rfind("::");
    if (separator == qualified.npos) return std::wstring(qualified.begin(), qualified.end());
    const std::string_view made = class_made(function.substr(parameters));
    const std::string_view owner = made.empty() ? class_of(qualified.substr(0, separator)) : made;
    std::wstring name(owner.begin(), owner.end());
    const std::string_view member = qualified.substr(separator + 2);
    return (name += L'.').append(member.begin(), member.end());
}

CallWatch::~CallWatch() {
    if (call_watch() == this) watch_of_thread().set(nullptr);
}

void CallWatch::log(bool wanted) {
    is_logging_ = wanted;
    lines_.clear();
    watch_of_thread().set(this);
}

std::wstring CallWatch::take_lines() noexcept {
    return std::exchange(lines_, {});
}

void CallWatch::fail(std::wstring_view name, long occurrence, HRESULT code) {
    failing_ = name;
    occurrence_ = occurrence;
    code_ = code;
    watch_of_thread().set(this);
}

void CallWatch::note(const std::wstring& name, const std::wstring& arguments) {
    if (is_logging_) lines_ += name + arguments + L"\n";
    if (!is_to_fail(name)) return;
    const HRESULT code = code_;
    if (occurrence_ == 1) code_ = S_OK;
    automation::fail(code, L"Failed on request");
}

// Counts down, or up, to the first call that fails. A host all of whose calls fail still takes
// reports of it.
bool CallWatch::is_to_fail(std::wstring_view name) {
    const bool is_any = failing_ == L"*";
    const bool is_meant = is_any ? name != L"Service.ReportError" : name == failing_;
    if (SUCCEEDED(code_) || !is_meant) return false;
    if (occurrence_ > 1) return --occurrence_, false;
    if (occurrence_ < -1) return ++occurrence_, false;
    return !is_any || occurrence_ > 0 || name != L"new Kelos.Service";
}

CallWatch* call_watch() {
    return static_cast<CallWatch*>(watch_of_thread().get());
}

void note_creation(std::wstring_view program_name) {
    if (CallWatch* const watch = call_watch())
        watch->note(L"new " + std::wstring(program_name), {});
}

}  // namespace hostkit
