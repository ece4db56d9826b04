// The log of the calls that a host gets, and the one that fails by its name.
//
// A call is named by the member that it arrives at, "Class.member"; std::source_location knows it,
// so that no member has to say its own name. Nothing is watched unless a kit asks for it: a call
// then costs one look at a pointer.
#pragma once

#include <string>
#include <string_view>
#include <tuple>

#include "automation/com_ptr.h"

namespace hostkit {

// Values as the log shows them: texts in quotes with their line breaks spelled, objects by their
// type's name.
std::wstring shown(const wchar_t* text);
std::wstring shown(std::wstring_view text);
std::wstring shown(long number);
std::wstring shown(double number);
std::wstring shown(VARIANT_BOOL value);
std::wstring shown(const VARIANT& value);
std::wstring shown(IUnknown* object);
// The arguments of a late-bound call, in the order in which they were written.
std::wstring shown(const DISPPARAMS& parameters);

// The arguments of a call that its line in the log shows. It only refers to them: they are put
// into words when there is a log.
template <class... Values>
class Given {
  public:
    explicit Given(const Values&... values) noexcept : values_(values...) {}

    std::wstring text() const {
        std::wstring result;
        const auto add = [&](const auto& value) {
            result += result.empty() ? L" " : L", ";
            result += shown(value);
        };
        std::apply([&](const auto&... values) { (add(values), ...); }, values_);
        return result;
    }

  private:
    std::tuple<const Values&...> values_;
};

// "Class.member" of a function's name as the compiler writes it. A template's class is its
// parameter "Self", the class that is made of it.
std::wstring call_name(std::string_view function);

class CallWatch {
  public:
    CallWatch() = default;
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;
    // Ends the watch when it is the thread's.
    ~CallWatch();

    void log(bool wanted);
    bool is_logging() const noexcept { return is_logging_; }
    // The log's lines so far, which it forgets.
    std::wstring take_lines() noexcept;
    // The n-th call of this name from now on fails, with 0 every one, with -n that and all after
    // it; a code of 0 ends it. "*" is the name of every call but those that reports of errors need.
    void fail(std::wstring_view name, long occurrence, HRESULT code);

    // Writes the call down; throws when it is the one that is to fail.
    void note(const std::wstring& name, const std::wstring& arguments);

  private:
    bool is_to_fail(std::wstring_view name);

    bool is_logging_ = false;
    std::wstring lines_;
    std::wstring failing_;
    long occurrence_ = 0;
    HRESULT code_ = S_OK;
};

// The calling thread's watch, or null.
CallWatch* call_watch();

// For the creation of a class, which no member stands for.
void note_creation(std::wstring_view program_name);

}  // namespace hostkit
