// What bytes are written to.
#pragma once

#include <string_view>

namespace cli {

class ByteSink {
  public:
    virtual ~ByteSink() = default;
    // Throws Failure when the bytes cannot be written.
    virtual void write(std::string_view bytes) = 0;
};

}  // namespace cli
