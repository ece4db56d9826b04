// A handle of a file.
#pragma once

#include "automation/windows_headers.h"

namespace automation {

// Takes over what CreateFileW answers, also that it failed.
class FileHandle {
  public:
    explicit FileHandle(HANDLE handle) noexcept : handle_(handle) {}
    ~FileHandle() { close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    bool is_open() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const noexcept { return handle_; }
    void close() noexcept {
        if (is_open()) CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle_;
};

}  // namespace automation
