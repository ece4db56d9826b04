// Text files: read in whatever encoding they are, written in the one that is asked for.
#pragma once

#include <string>

#include "automation/file_handle.h"
#include "cli/text.h"

namespace cli {

// UTF-16 with a byte-order mark, UTF-8 with or without one, otherwise the system's ANSI code page.
// `role` names the file in the Failure that says why it cannot be read: "the script".
std::u16string read_text_file(const std::wstring& path, const wchar_t* role);

enum class FileEncoding { utf8, utf16 };  // UTF-16: little-endian, with a byte-order mark

// A file being written. A file that is not finished is taken away again.
class TextFile : public TextSink {
  public:
    TextFile(const std::wstring& path, FileEncoding encoding);
    ~TextFile() override;

    void write(std::u16string_view text) override;
    void finish();

  private:
    void write_bytes(const void* data, std::size_t size);
    [[noreturn]] void fail() const;

    std::wstring path_;
    FileEncoding encoding_;
    automation::FileHandle file_;
    bool finished_ = false;
};

}  // namespace cli
