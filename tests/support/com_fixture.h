// What every test of Windows code starts from.
#pragma once

#include <string>

#include "automation/call.h"
#include "automation/dispatch.h"
#include "doctest/doctest.h"
#include "hostkit.h"
#include "tessera.h"

namespace doctest {

template <>
struct StringMaker<std::wstring> {
    static String convert(const std::wstring& text);
};
template <>
struct StringMaker<automation::Bstr> {
    static String convert(const automation::Bstr& text);
};

template <std::size_t length>
struct StringMaker<wchar_t[length]> {
    static String convert(const wchar_t* text) {
        return StringMaker<std::wstring>::convert(std::wstring(text));
    }
};
template <>
struct StringMaker<std::wstring_view> {
    static String convert(std::wstring_view text) {
        return StringMaker<std::wstring>::convert(std::wstring(text));
    }
};

}  // namespace doctest

namespace test {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

// Creates an object by name, as a client does: through the DLLs beside the test program.
template <class Interface>
ComPtr<Interface> create(const wchar_t* program_name) {
    return automation::create_object<Interface>(program_name);
}

// A test with COM, a recording host service without records, and the check that nothing of the
// component or the kit is alive when it ends.
class ComFixture {
  public:
    ComFixture();
    ~ComFixture();
    ComFixture(const ComFixture&) = delete;
    ComFixture& operator=(const ComFixture&) = delete;

    const ComPtr<IHostKitService>& service() const noexcept { return service_; }
    // Another thread has objects, too: those that are alive are no longer counted.
    void share_process() noexcept { shares_process_ = true; }

    long error_count() const;
    long message_count() const;
    // "source|label" of the n-th reported error (from 1).
    std::wstring error(long n) const;
    HRESULT error_code(long n) const;
    // "title|style|text" of the n-th message (from 1).
    std::wstring message(long n) const;
    std::wstring trace(long n) const;

  private:
    ComPtr<IHostKitService> service_;
    bool shares_process_ = false;
};

// Full paths of a sample, and of a file below tests/.
std::wstring sample(std::wstring_view name);
std::wstring test_data(std::wstring_view name);

// A project of the kit that is open for the test.
class ProjectFixture : public ComFixture {
  public:
    explicit ProjectFixture(const std::wstring& path = test_data(L"support/small_project.xml"));

    ComPtr<IHostKit> kit;
    ComPtr<IKelosWorkset> workset;
    ComPtr<IKelosDocument> document(const wchar_t* name) const;
    ComPtr<IKelosObject> object(const wchar_t* path) const;
};

// True when no object of the DLL is alive (or it is not loaded).
bool is_idle(const wchar_t* dll);

// The references that an object has at this moment.
ULONG reference_count(IUnknown* object);

}  // namespace test
