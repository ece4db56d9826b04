// The process's standard streams: characters to a terminal, UTF-8 to a file or a pipe, never a
// line end that was not written.
#pragma once

#include <string>
#include <string_view>

#include "automation/windows_headers.h"
#include "cli/text.h"

namespace cli {

class ConsoleStream : public TextSink {
  public:
    // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
    explicit ConsoleStream(DWORD stream);

    bool is_terminal() const noexcept { return is_terminal_; }
    // Columns that a line may have: the terminal's, or a page's when it is none.
    std::size_t width() const noexcept;

    void write(std::u16string_view text) override;
    void write(std::wstring_view text);
    // One line; control characters in it are made visible. On a terminal the mark that problems
    // begin with ("error: ") has a colour, unless the environment has NO_COLOR.
    void write_line(std::wstring_view text);

  private:
    void write_mark(std::wstring_view text, WORD colour);
    void write_characters(std::u16string_view text);
    void write_bytes(std::string_view bytes);

    HANDLE handle_;
    bool is_terminal_ = false;
    bool has_colours_ = false;
};

// The platform's words for its error, and what can be done: "Sharing violation; close the file in
// the program that has it open".
std::wstring reason_of(DWORD error);

struct Console {
    ConsoleStream out{STD_OUTPUT_HANDLE};
    ConsoleStream error{STD_ERROR_HANDLE};
};

}  // namespace cli
