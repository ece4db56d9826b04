// Text files: read in whatever encoding they are, written in the one that is asked for.
#pragma once

#include <string>

#include "cli/output_file.h"
#include "cli/text.h"

namespace cli {

// The bytes of a file, of whatever kind. `role` names it in the Failure that says why it cannot be
// read: "the script".
std::string read_bytes(const std::wstring& path, const wchar_t* role);

// UTF-16 with a byte-order mark, UTF-8 with or without one, otherwise the system's ANSI code page.
std::u16string read_text_file(const std::wstring& path, const wchar_t* role);

enum class FileEncoding { utf8, utf16 };  // UTF-16: little-endian, with a byte-order mark

// Written as every result is: as a whole or not at all.
class TextFile : public TextSink {
  public:
    TextFile(const std::wstring& path, FileEncoding encoding);

    void write(std::u16string_view text) override;
    void finish() { file_.finish(); }

  private:
    FileEncoding encoding_;
    OutputFile file_;
};

}  // namespace cli
