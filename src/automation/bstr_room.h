// Automation strings that are written where they stand, without a copy.
#pragma once

#include <cstddef>

#include "automation/bstr.h"

namespace automation {

// The memory of an automation string whose characters come before its length is known.
class BstrRoom {
  public:
    // For at most so many characters. Throws std::bad_alloc.
    explicit BstrRoom(std::size_t characters);

    char16_t* begin() noexcept { return reinterpret_cast<char16_t*>(room_.get()); }
    // The string of the first `length` characters, which must have been written.
    Bstr finish(std::size_t length);

  private:
    Bstr room_;
};

}  // namespace automation
