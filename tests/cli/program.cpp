#include "cli/program.h"

#include <fstream>
#include <sstream>

#include "automation/dom.h"

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t in_name[] = L"standard-input";
constexpr wchar_t out_name[] = L"standard-output";
constexpr wchar_t error_name[] = L"standard-error";

fs::path program_path() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path() / L"tessera.exe";
}

std::wstring quoted(const std::wstring& argument) {
    return argument.empty() || argument.find(L' ') != argument.npos ? L"\"" + argument + L"\""
                                                                    : argument;
}

std::wstring command_line(const std::vector<std::wstring>& arguments) {
    std::wstring line = quoted(program_path().wstring());
    for (const std::wstring& argument : arguments)
        line += L" " + quoted(argument);
    return line;
}

std::string read_file(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

// Nothing where there is none.
HANDLE open_inherited(const fs::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, &inherited,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

HANDLE create_inherited(const fs::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

RunningProgram::RunningProgram(const fs::path& folder, const std::vector<std::wstring>& arguments,
                               DWORD creation_flags)
    : folder_(folder) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = open_inherited(folder / in_name);
    start.hStdOutput = create_inherited(folder / out_name);
    start.hStdError = create_inherited(folder / error_name);
    // Under Wine a start fails now and then while other processes start or end.
    BOOL started = FALSE;
    for (int attempt = 0; attempt < 5 && !started; ++attempt) {
        if (attempt > 0) Sleep(200);
        std::wstring line = command_line(arguments);
        started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, creation_flags,
                                 nullptr, folder.c_str(), &start, &process_);
    }
    if (start.hStdInput) CloseHandle(start.hStdInput);
    CloseHandle(start.hStdOutput);
    CloseHandle(start.hStdError);
    REQUIRE(started);
}

RunningProgram::~RunningProgram() {
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

bool RunningProgram::has_ended() const {
    return WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0;
}

Outcome RunningProgram::wait() {
    WaitForSingleObject(process_.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process_.hProcess, &code);
    return {static_cast<int>(code), read_file(folder_ / out_name), read_file(folder_ / error_name)};
}

Workplace::Workplace() {
    static int number = 0;
    folder_ =
        fs::temp_directory_path() / (L"tessera-cli-" + std::to_wstring(GetCurrentProcessId()) +
                                     L"-" + std::to_wstring(++number));
    fs::create_directories(folder_);
}

Workplace::~Workplace() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Workplace::write(const wchar_t* name, std::string_view bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
}

std::string Workplace::read(const wchar_t* name) const {
    REQUIRE(has(name));
    return read_file(folder_ / name);
}

bool Workplace::has(const wchar_t* name) const {
    return fs::exists(folder_ / name);
}

Outcome Workplace::run(const std::vector<std::wstring>& arguments) const {
    return RunningProgram(folder_, arguments, 0).wait();
}

Outcome Workplace::run(const std::vector<std::wstring>& arguments, std::string_view input) const {
    write(in_name, input);
    return run(arguments);
}

std::string project_file(std::string_view documents, std::string_view queries) {
    constexpr std::string_view head = R"(<?xml version="1.0" encoding="UTF-8"?>
<kelos-project-file version="1" lcid="1033">
  <languages current="English"><language name="English" lcid="1033"/></languages>
  <users current="me"><user login="me" rights="1"/></users>
  <system-types>
    <system-type name="project" number="1"/>
    <system-type name="pump" number="120"/>
    <system-type name="mapping table" number="300"/>
  </system-types>
  <units>
    <unit-group name="LENGTH">
      <unit name="M" label="m"/>
      <unit name="CM" label="cm" factor="0.01"/>
    </unit-group>
  </units>
  <attribute-types>
    <attribute-type name="Process.Head" type="double" unit="LENGTH.M"/>
  </attribute-types>
  <project type="project" name="Plant" uid="P" current="yes">
    <object type="pump" name="Pump" uid="P1" description="Förderpumpe">
      <attribute name="Process.Head" value="12.5"/>
    </object>
)";
    return std::string(head)
        .append(documents)
        .append("  </project>\n")
        .append(queries)
        .append("</kelos-project-file>\n");
}

std::string mapping_document(std::string_view rows) {
    return R"(<document name="List" uid="D1" type-text="L" sub-type-text="2">)"
           R"(<object type="mapping table" name="Map" uid="M1"><mapping><rows sheet="Pumps">)" +
           std::string(rows) + "</rows></mapping></object></document>\n";
}

std::string scripted_document(std::string_view name, std::string_view script) {
    const std::string text(name);
    return "<document name=\"" + text + "\" uid=\"S-" + text +
           R"(" type-text="L" sub-type-text="2"><script><![CDATA[)" + std::string(script) +
           "]]></script></document>\n";
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        result.push_back(line);
    return result;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != text.npos;
}

std::string utf16_text(const std::string& bytes) {
    REQUIRE(bytes.size() % 2 == 0);
    REQUIRE(bytes.starts_with("\xFF\xFE"));
    std::wstring text;
    for (std::size_t i = 2; i < bytes.size(); i += 2)
        text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    const int size =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(),
                            static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    REQUIRE(size > 0);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(), size,
                        nullptr, nullptr);
    return result;
}

ComPtr<IXMLDOMDocument> parsed(const fs::path& path) {
    const auto document = dom::create_document();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->load(Variant(path.c_str()), &loaded);
    REQUIRE(loaded != VARIANT_FALSE);
    return document;
}

}  // namespace test
