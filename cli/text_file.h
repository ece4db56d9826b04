// Text files: read in whatever encoding they are, written in the one that is asked for.
#pragma once

#include <optional>
#include <string>

#include "cli/output_file.h"
#include "cli/text.h"

namespace cli {

// The bytes of a file, of whatever kind; of standard input for "-". `role` names it in the Failure
// that says why it cannot be read: "the script".
std::string read_bytes(const std::wstring& path, const wchar_t* role);

// UTF-16 with a byte-order mark, UTF-8 with or without one, otherwise the system's ANSI code page.
std::u16string read_text_file(const std::wstring& path, const wchar_t* role);
// The same of bytes that have been read.
std::u16string decoded_text(std::string_view bytes, const std::wstring& path, const wchar_t* role);

enum class FileEncoding { utf8, utf16 };  // UTF-16: little-endian, with a byte-order mark

// Written as every result is: as a whole or not at all. "-" is standard output, which takes UTF-8.
class TextFile : public TextSink {
  public:
    TextFile(const std::wstring& path, FileEncoding encoding);

    // As an XML declaration says it.
    std::u16string_view encoding_name() const noexcept;
    void write(std::u16string_view text) override;
    void finish();

  private:
    FileEncoding encoding_;
    std::optional<OutputFile> file_;
    std::u16string for_standard_output_;
};

}  // namespace cli
