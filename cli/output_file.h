// Files of results: written as a whole or not at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/unfinished_file.h"
#include "cli/byte_sink.h"

namespace cli {

// A file being written, which comes to its place when it is finished. Until then, and for good when
// it never is, what was there before stays. What goes to standard output ("-") goes there when it
// is finished; where there is no file ("NUL", a pipe), the place takes the result itself.
class OutputFile : public ByteSink {
  public:
    explicit OutputFile(const std::wstring& path);

    void write(std::string_view bytes) override;
    void finish();

  private:
    HANDLE open_device() const;
    [[noreturn]] void fail() const;

    std::wstring path_;
    automation::FileHandle device_;
    std::optional<automation::UnfinishedFile> file_;
    std::string for_standard_output_;
};

}  // namespace cli
