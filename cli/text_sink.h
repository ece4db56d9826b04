// Where text is written to.
#pragma once

#include <string_view>

namespace cli {

class TextSink {
  public:
    virtual ~TextSink() = default;
    // Throws Failure when the text cannot be written.
    virtual void write(std::u16string_view text) = 0;
};

}  // namespace cli
