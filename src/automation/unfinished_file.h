// Files that are written as a whole or not at all.
#pragma once

#include <string>
#include <string_view>

#include "automation/file_handle.h"

namespace automation {

// A file on its way to its place: beside it and under a name of its own ("tessera-….tmp"), gone,
// however the process ends, until it is moved there. Where an answer is false, GetLastError says
// why.
class UnfinishedFile {
  public:
    explicit UnfinishedFile(std::wstring place);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    bool is_open() const noexcept { return file_.is_open(); }
    bool write(std::string_view bytes) noexcept;
    // What was there before is replaced.
    bool move_into_place() noexcept;

  private:
    HANDLE create();
    void let_vanish(bool vanishes) noexcept;

    const std::wstring place_;
    std::wstring temporary_;  // empty when there is none any more
    FileHandle file_;
};

// All of the bytes; false, with the system's last error, when they cannot be written.
bool write_bytes(HANDLE file, std::string_view bytes) noexcept;

}  // namespace automation
