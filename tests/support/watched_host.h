// A host whose calls a test reads and lets fail by their names.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <sstream>

#include "support/com_fixture.h"

namespace test {

// A kit without an open project.
class KitFixture : public ComFixture {
  public:
    ComPtr<IHostKit> kit = create<IHostKit>(L"Kelos.HostKit");
};

// Base is a fixture with a kit.
template <class Base>
class WatchedHost : public Base {
  public:
    using Base::Base;

    // From here on the kit writes down the calls that it gets.
    void log_calls() const { call(this->kit, &IHostKit::put_LogsCalls, VARIANT_TRUE); }
    // The calls since the last time, one a line and a line end before the first, so that they
    // compare with a raw literal; all, or those whose line contains one of the parts.
    std::wstring calls() const { return calls({L""}); }
    std::wstring calls(std::initializer_list<std::wstring_view> parts) const {
        std::wistringstream lines(get(this->kit, &IHostKit::TakeCalls).str());
        std::wstring result = L"\n";
        for (std::wstring line; std::getline(lines, line);)
            if (std::ranges::any_of(parts, [&](auto part) { return line.find(part) != line.npos; }))
                result += (line.size() > longest ? line.substr(0, longest) + L"..." : line) + L"\n";
        return result;
    }
    static constexpr std::size_t longest = 160;
    // The member's n-th call fails (0: every one), or none does any more.
    void fail(std::wstring_view member, long occurrence = 0, HRESULT code = failure) const {
        call(this->kit, &IHostKit::FailCallNamed, Bstr(member).get(), occurrence, long{code});
    }
    void fail_nothing() const { fail(L"", 0, S_OK); }
    static constexpr HRESULT failure = static_cast<HRESULT>(0x80041234L);

    // "source|label" of all reported errors, one a line, which are forgotten with all records.
    std::wstring take_errors() const {
        std::wstring result;
        for (long n = 1; n <= this->error_count(); ++n)
            result += this->error(n) + L"\n";
        call(this->service(), &IHostKitService::Clear);
        return result;
    }

    // The forms that the host's window service shows.
    long form_count() const { return get(forms_, &IHostKitForms::get_Count); }
    ComPtr<IHostKitForm> form(long n = 1) const { return get(forms_, &IHostKitForms::get_Item, n); }
    HWND form_window(long n = 1) const {
        return static_cast<HWND>(LongToHandle(get(form(n), &IHostKitForm::get_Window)));
    }
    // The form's button, label or bar by its window class; null when it has none.
    HWND form_control(const wchar_t* window_class) const {
        return FindWindowExW(form_window(), nullptr, window_class, nullptr);
    }
    ComPtr<ITesseraProgress> form_controller() const {
        return get(form(), &IHostKitForm::get_Controller).template as<ITesseraProgress>();
    }

  private:
    // Asked for once, so that looking at forms adds nothing to the calls.
    const ComPtr<IHostKitForms> forms_ = [this] {
        const auto application = get(this->service(), &IKelosService::get_Application);
        const auto windows = get(application, &IKelosApplication::get_WindowService);
        return get(windows.template as<IHostKitWindowService>(), &IHostKitWindowService::get_Forms);
    }();
};

using WatchedKit = WatchedHost<KitFixture>;
using WatchedProject = WatchedHost<ProjectFixture>;

}  // namespace test
