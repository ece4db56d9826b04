// How a command can end.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace cli {

inline constexpr int exit_success = 0;
inline constexpr int exit_with_errors = 1;  // it ran, and something was reported or is missing
inline constexpr int exit_not_run = 2;      // arguments or files that cannot be used

// What ends a command before it has run: told in one line on standard error, exit code 2.
class Failure : public std::exception {
  public:
    explicit Failure(std::wstring text) : text_(std::move(text)) {}
    const std::wstring& text() const noexcept { return text_; }
    const char* what() const noexcept override { return "the command cannot be run"; }

  private:
    std::wstring text_;
};

// The user wants a command to end that has not written anything yet: told in one line, exit code 1.
class Stopped : public std::exception {
  public:
    const char* what() const noexcept override { return "the command was stopped"; }
};

}  // namespace cli
