// Text files: read in whatever encoding they are, written in the one that is asked for.
#pragma once

#include <string>

#include "automation/file_handle.h"
#include "cli/text.h"

namespace cli {

// The bytes of a file, of whatever kind. `role` names it in the Failure that says why it cannot be
// read: "the script".
std::string read_bytes(const std::wstring& path, const wchar_t* role);

// UTF-16 with a byte-order mark, UTF-8 with or without one, otherwise the system's ANSI code page.
std::u16string read_text_file(const std::wstring& path, const wchar_t* role);

enum class FileEncoding { utf8, utf16 };  // UTF-16: little-endian, with a byte-order mark

// A file being written: beside its place and under a name of its own ("tessera-….tmp"), moved there
// when it is finished. Until then, and for good when it never is, what was there before stays.
class TextFile : public TextSink {
  public:
    TextFile(const std::wstring& path, FileEncoding encoding);
    ~TextFile() override;

    void write(std::u16string_view text) override;
    void finish();

  private:
    HANDLE open();
    void write_bytes(const void* data, std::size_t size);
    [[noreturn]] void fail() const;

    std::wstring path_;
    FileEncoding encoding_;
    std::wstring temporary_;  // empty when the place itself is written
    automation::FileHandle file_;
};

}  // namespace cli
