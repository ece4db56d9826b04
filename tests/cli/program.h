// Runs tessera.exe as a user does: as a process of its own in a folder of its own, its output going
// to files.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/com_fixture.h"

namespace test {

struct Outcome {
    int code = -1;
    std::string out;
    std::string error;
};

// A program that has been started and is not waited for yet.
class RunningProgram {
  public:
    RunningProgram(const std::filesystem::path& folder, const std::vector<std::wstring>& arguments,
                   DWORD creation_flags);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    bool has_ended() const;
    DWORD id() const noexcept { return process_.dwProcessId; }
    Outcome wait();

  private:
    std::filesystem::path folder_;
    PROCESS_INFORMATION process_{};
};

// An empty folder for the length of a test.
class Workplace {
  public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    void write(const wchar_t* name, std::string_view bytes) const;
    std::string read(const wchar_t* name) const;
    bool has(const wchar_t* name) const;
    const std::filesystem::path& folder() const noexcept { return folder_; }

    Outcome run(const std::vector<std::wstring>& arguments) const;
    // The same with these bytes on standard input.
    Outcome run(const std::vector<std::wstring>& arguments, std::string_view input) const;

  private:
    std::filesystem::path folder_;
};

// A project file with one pump, "Pump", whose description is "Förderpumpe", and the given
// documents and queries.
std::string project_file(std::string_view documents, std::string_view queries = {});
// A document "List" with a mapping table of these rows on the sheet "Pumps".
std::string mapping_document(std::string_view rows);
// A document with a script of its own.
std::string scripted_document(std::string_view name, std::string_view script);

// The lines of a text; nothing after the last line end.
std::vector<std::string> lines(const std::string& text);
bool contains(std::string_view text, std::string_view part);

// A file of UTF-16 with a byte-order mark as UTF-8; fails the test when it is none.
std::string utf16_text(const std::string& bytes);
// The file as the platform's parser reads it; fails the test when the parser does not.
ComPtr<IXMLDOMDocument> parsed(const std::filesystem::path& path);

}  // namespace test
