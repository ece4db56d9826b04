// Through the DLL's entry points, in a registry of the test's own.
#include <functional>
#include <string>
#include <vector>

#include "support/com_fixture.h"
#include "support/import_patch.h"

namespace {

HKEY make_key(HKEY parent, const wchar_t* path) {
    HKEY key = nullptr;
    RegCreateKeyExW(parent, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &key, nullptr);
    return key;
}

// Without what a test that was killed has left.
HKEY make_empty_key(HKEY parent, const wchar_t* path) {
    RegDeleteTreeW(parent, path);
    return make_key(parent, path);
}

// A line for every key and value below.
std::wstring listing(HKEY key, const std::wstring& path = {}) {
    std::wstring text;
    wchar_t name[256];
    DWORD length = 256;
    DWORD size = 0;
    BYTE data[2048];
    for (DWORD i = 0; size = sizeof data, length = 256,
               RegEnumValueW(key, i, name, &length, nullptr, nullptr, data, &size) == ERROR_SUCCESS;
         ++i)
        text += path + L" " + name + L"=" +
                std::wstring(reinterpret_cast<wchar_t*>(data), size / 2) + L"\n";
    for (DWORD i = 0; RegEnumKeyW(key, i, name, 256) == ERROR_SUCCESS; ++i) {
        HKEY below = nullptr;
        RegOpenKeyExW(key, name, 0, KEY_READ, &below);
        text += path + L"\\" + name + L"\n" + listing(below, path + L"\\" + name);
        RegCloseKey(below);
    }
    return text;
}

// Stands for the classes of the machine and of the user, in this process.
class OwnRegistry {
  public:
    OwnRegistry()
        : root_(make_empty_key(HKEY_CURRENT_USER, L"Software\\KelosTesseraTest")),
          machine_(make_key(root_, L"machine")),
          user_(make_key(root_, L"user")) {
        for (const HKEY key : {machine_, user_})
            RegCloseKey(make_key(key, L"Software\\Classes"));
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_);
        RegOverridePredefKey(HKEY_CURRENT_USER, user_);
    }
    ~OwnRegistry() {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegDeleteTreeW(root_, nullptr);
        for (const HKEY key : {user_, machine_, root_})
            RegCloseKey(key);
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KelosTesseraTest");
    }
    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;

    HKEY machine() const { return machine_; }
    HKEY user() const { return user_; }

  private:
    HKEY root_;
    HKEY machine_;
    HKEY user_;
};

struct Server {
    const HMODULE module = LoadLibraryW(L"Tessera.dll");
    ~Server() { FreeLibrary(module); }

    HRESULT call(const char* name) const {
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(module, name)))();
    }
    HRESULT install(bool registers, const wchar_t* command_line) const {
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)(BOOL, const wchar_t*)>(
            reinterpret_cast<void*>(GetProcAddress(module, "DllInstall")))(registers, command_line);
    }
};

long writes_until_failure = 0;

LSTATUS WINAPI set_value(HKEY key, const wchar_t* name, DWORD reserved, DWORD type,
                         const BYTE* data, DWORD size) {
    if (--writes_until_failure == 0) return ERROR_ACCESS_DENIED;
    return RegSetValueExW(key, name, reserved, type, data, size);
}

}  // namespace

TEST_CASE("a scope gets everything that is registered, and loses it again") {
    const Server server;
    struct Way {
        const char* name;
        bool for_user;
        std::function<HRESULT(bool registers)> run;
    };
    const auto install = [&](const wchar_t* command_line) {
        return [&server, command_line](bool registers) {
            return server.install(registers, command_line);
        };
    };
    const Way ways[] = {
        {"regsvr32", false,
         [&](bool registers) {
             return server.call(registers ? "DllRegisterServer" : "DllUnregisterServer");
         }},
        {"regsvr32 /n /i", false, install(L"")},
        {"no command line", false, install(nullptr)},
        {"regsvr32 /n /i:user", true, install(L"user")},
        {"in any case", true, install(L"USER")},
    };
    for (const Way& way : ways) {
        CAPTURE(way.name);
        const OwnRegistry registry;
        const HKEY written = way.for_user ? registry.user() : registry.machine();
        const HKEY untouched = way.for_user ? registry.machine() : registry.user();
        const std::wstring nothing = listing(written);
        CHECK(way.run(true) == S_OK);
        const std::wstring registered = listing(written);
        for (const wchar_t* line :
             {L"\\Tessera.VexScript\\CurVer =Tessera.VexScript.1",
              L"\\Tessera.VexScript.1\\CLSID ={A4D2C3E0-",
              L"\\InprocServer32 ThreadingModel=Apartment", L"\\ProxyStubClsid32 ={00020424-"})
            CHECK(registered.find(line) != std::wstring::npos);
        CHECK(listing(untouched) == nothing);
        CHECK(way.run(true) == S_OK);
        CHECK(listing(written) == registered);
        CHECK(way.run(false) == S_OK);
        CHECK(listing(written) == nothing);
        CHECK(way.run(false) == S_OK);
    }
}

TEST_CASE("a command line that is not understood registers nothing") {
    const Server server;
    const OwnRegistry registry;
    const std::wstring nothing = listing(registry.machine());
    for (const bool registers : {true, false})
        for (const wchar_t* command_line : {L"machine", L"user ", L"users"})
            CHECK(server.install(registers, command_line) == E_INVALIDARG);
    CHECK(listing(registry.machine()) == nothing);
    CHECK(listing(registry.user()) == nothing);
}

TEST_CASE("a registration that fails leaves what was there before") {
    const Server server;
    const test::ImportPatch patch(server.module, "RegSetValueExW", set_value);
    REQUIRE(patch.is_in_place());
    const OwnRegistry registry;
    const auto fail_everywhere = [&] {
        const std::wstring before = listing(registry.user());
        HRESULT result = E_FAIL;
        long failures = 0;
        for (long n = 1; result != S_OK; n += 61) {
            CAPTURE(n);
            writes_until_failure = n;
            result = server.install(true, L"user");
            if (result == S_OK) break;
            ++failures;
            REQUIRE(result == HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
            CHECK(listing(registry.user()) == before);
        }
        CHECK(failures > 3);
    };
    fail_everywhere();

    // An older one, from another place and with something more.
    const HKEY older = make_key(registry.user(),
                                L"Software\\Classes\\CLSID\\{A4D2C3E0-7B15-4F6A-8C21-90E5D7F31C31}"
                                L"\\InprocServer32");
    for (const wchar_t* name : {L"", L"Other"})
        RegSetValueExW(older, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(L"old.dll"), 16);
    RegCloseKey(older);
    fail_everywhere();
}
