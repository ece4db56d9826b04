// What the fuzz targets share: how the fuzzer's bytes become a text, and the checks on results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "codec/ansi_code_page.h"

namespace tessera::fuzz {

inline const AnsiCodePage& page() {
    return AnsiCodePage::windows_1252();
}

// A text whose memory ends with its last character, so that nothing behind it is read unseen.
// Bytes are characters of the code page; behind the byte-order mark FF FE they are 16-bit
// characters, so that the fuzzer reaches those that the code page lacks.
class Text {
  public:
    Text(const std::uint8_t* data, std::size_t size) {
        if (size >= 2 && data[0] == 0xFF && data[1] == 0xFE) {
            for (std::size_t i = 2; i + 1 < size; i += 2)
                characters_.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
            return;
        }
        for (std::size_t i = 0; i < size; ++i)
            characters_.push_back(page().to_char(data[i]));
    }

    std::u16string_view view() const { return {characters_.data(), characters_.size()}; }

  private:
    std::vector<char16_t> characters_;
};

inline void require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace tessera::fuzz
