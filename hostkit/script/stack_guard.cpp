#include "hostkit/script/stack_guard.h"

#include <algorithm>
#include <cstdint>

#include "automation/plain_object.h"
#include "automation/text.h"
#include "hostkit/script/script_error_text.h"

namespace hostkit {
namespace {

using automation::equal_ignoring_case;

constexpr wchar_t question[] = L" : KelosStack.Check";
constexpr wchar_t member_name[] = L"Check";
constexpr DISPID member_id = 1;
constexpr auto out_of_stack_space = static_cast<HRESULT>(0x800A001C);

bool is_blank(wchar_t character) noexcept {
    return character == L' ' || character == L'\t';
}

bool is_of_name(wchar_t character) noexcept {
    return character == L'_' || (character >= L'0' && character <= L'9') ||
           (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

// Goes over the words that a procedure begins with.
class HeadReader {
  public:
    explicit HeadReader(std::wstring_view code) noexcept : code_(code) {}

    // The length of the head that the code begins with; 0 when there is none. What cannot be
    // understood is left to the engine.
    std::size_t length() noexcept {
        while (takes({L"Public", L"Private", L"Default"})) {
        }
        if (takes({L"Property"})) {
            if (!takes({L"Get", L"Let", L"Set"})) return 0;
        } else if (!takes({L"Sub", L"Function"})) {
            return 0;
        }
        if (word().empty()) return 0;
        at_ = skip_blanks() + word().size();
        return takes_parameters() && stands_at_end() ? at_ : 0;
    }

  private:
    std::size_t skip_blanks() const noexcept {
        std::size_t at = at_;
        while (at < code_.size() && is_blank(code_[at]))
            ++at;
        return at;
    }
    std::wstring_view word() const noexcept {
        const std::wstring_view rest = code_.substr(skip_blanks());
        return rest.substr(
            0, static_cast<std::size_t>(std::ranges::find_if_not(rest, is_of_name) - rest.begin()));
    }
    bool takes(std::initializer_list<std::wstring_view> words) noexcept {
        const std::wstring_view next = word();
        if (std::ranges::none_of(words, [&](auto each) { return equal_ignoring_case(each, next); }))
            return false;
        at_ = skip_blanks() + next.size();
        return true;
    }
    // Parameters may be arrays, with parentheses of their own and no others inside, and stand in
    // several lines.
    bool takes_parameters() noexcept {
        constexpr int deepest = 2;
        std::size_t at = skip_blanks();
        if (at == code_.size() || code_[at] != L'(') return true;
        int depth = 0;
        for (; at < code_.size(); ++at) {
            depth += code_[at] == L'(' ? 1 : code_[at] == L')' ? -1 : 0;
            if (depth > deepest) return false;
            if (depth > 0) continue;
            at_ = at + 1;
            return true;
        }
        return false;
    }
    bool stands_at_end() const noexcept {
        const std::size_t at = skip_blanks();
        return at == code_.size() || std::wstring_view(L"\r\n:'").find(code_[at]) != code_.npos;
    }

    std::wstring_view code_;
    std::size_t at_ = 0;
};

// How much of the code is a string, a comment, or neither and one character long.
std::size_t piece_length(std::wstring_view code) noexcept {
    const std::size_t line_end = std::min(code.find(L'\n'), code.size());
    if (code.front() == L'\'') return line_end;
    if (code.front() != L'"') return 1;
    const std::size_t end = code.find(L'"', 1);
    return end < line_end ? end + 1 : line_end;
}

class StackGuard : public automation::PlainObject<IDispatch> {
  public:
    StackGuard() noexcept {
        MEMORY_BASIC_INFORMATION stack{};
        VirtualQuery(&stack, &stack, sizeof stack);
        const auto end = reinterpret_cast<std::uintptr_t>(stack.AllocationBase);
        lowest_ = end + (reinterpret_cast<std::uintptr_t>(&stack) - end) / 4;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info) *info = nullptr;
        return info ? DISP_E_BADINDEX : E_POINTER;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (count != 1 || !equal_ignoring_case(*names, member_name)) return DISP_E_UNKNOWNNAME;
        *ids = member_id;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                        EXCEPINFO* exception, UINT*) override {
        if (member != member_id) return DISP_E_MEMBERNOTFOUND;
        if (reinterpret_cast<std::uintptr_t>(&member) > lowest_) return S_OK;
        if (!exception) return out_of_stack_space;
        *exception = {};
        exception->scode = out_of_stack_space;
        exception->bstrDescription = SysAllocString(description_.c_str());
        return DISP_E_EXCEPTION;
    }

  private:
    const std::wstring description_ = runtime_error_text(out_of_stack_space);
    std::uintptr_t lowest_;  // stacks grow downwards
};

}  // namespace

std::wstring guarded(std::wstring_view code) {
    std::wstring result;
    for (bool statement_begins = true; !code.empty();) {
        const std::size_t head = statement_begins ? HeadReader(code).length() : 0;
        const std::size_t length = head > 0 ? head : piece_length(code);
        result += code.substr(0, length);
        if (head > 0) result += question;
        statement_begins = code[length - 1] == L'\n' || (head == 0 && code.front() == L':');
        code.remove_prefix(length);
    }
    return result;
}

automation::ComPtr<IDispatch> make_stack_guard() {
    return automation::make_plain<StackGuard>();
}

}  // namespace hostkit
