// What ends a command before it has run: told in one line on standard error, exit code 2.
#pragma once

#include <exception>
#include <string>

namespace cli {

class Failure : public std::exception {
  public:
    explicit Failure(std::wstring text) : text_(std::move(text)) {}
    const std::wstring& text() const noexcept { return text_; }
    const char* what() const noexcept override { return "the command cannot be run"; }

  private:
    std::wstring text_;
};

}  // namespace cli
