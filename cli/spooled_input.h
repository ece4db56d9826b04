// Standard input as a file, for readers that take nothing else.
#pragma once

#include <string>

namespace cli {

// The bytes that come from standard input, in a file that goes with this object. Throws Failure.
class SpooledInput {
  public:
    SpooledInput();
    ~SpooledInput();
    SpooledInput(const SpooledInput&) = delete;
    SpooledInput& operator=(const SpooledInput&) = delete;

    const std::wstring& path() const noexcept { return path_; }
    // The sentence with the file called what it is for the user.
    std::wstring renamed(std::wstring sentence) const;

  private:
    std::wstring path_;
};

}  // namespace cli
