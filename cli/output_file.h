// Files of results: written as a whole or not at all.
#pragma once

#include <string>
#include <string_view>

#include "automation/file_handle.h"
#include "cli/byte_sink.h"

namespace cli {

// A file being written: beside its place and under a name of its own ("tessera-….tmp"), moved there
// when it is finished. Until then, and for good when it never is, what was there before stays. What
// goes to standard output ("-") goes there when it is finished.
class OutputFile : public ByteSink {
  public:
    explicit OutputFile(const std::wstring& path);
    ~OutputFile() override;

    void write(std::string_view bytes) override;
    void finish();

  private:
    HANDLE open();
    void write_to(HANDLE file, std::string_view bytes) const;
    [[noreturn]] void fail() const;

    std::wstring path_;
    std::wstring temporary_;  // empty when the place itself is written
    std::string for_standard_output_;
    automation::FileHandle file_;
};

}  // namespace cli
