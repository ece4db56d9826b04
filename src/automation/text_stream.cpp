#include "automation/text_stream.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

#include "automation/plain_object.h"

namespace automation {
namespace {

constexpr bool is_ascii(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0x80) == 0;
}

// Far less than a block: no block is without an ASCII character then.
constexpr std::size_t longest_run = 512;

// The number of bytes of the character that begins with this one; 1 where none begins.
std::size_t size_of_character(char first) noexcept {
    const auto byte = static_cast<unsigned char>(first);
    return byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
}

// "&#x4E2D;" for a character of two or three bytes.
std::string reference_to(std::string_view character) {
    unsigned value =
        static_cast<unsigned char>(character[0]) & (character.size() == 2 ? 0x1F : 0xF);
    for (const char byte : character.substr(1))
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3F);
    char text[16];
    snprintf(text, sizeof text, "&#x%X;", value);
    return text;
}

// The text with a reference in place of a character wherever many come one behind the other that
// are no ASCII. Sections without references stay as they are.
std::string with_short_runs(std::string_view text) {
    constexpr std::string_view section = "<![CDATA[";
    std::string result;
    result.reserve(text.size());
    std::size_t run = 0;
    for (std::size_t at = 0, size = 0; at < text.size(); at += size) {
        size = size_of_character(text[at]);
        if (text.substr(at, section.size()) == section)
            size = std::min(text.find("]]>", at), text.size()) - at;
        const std::string_view piece = text.substr(at, size);
        run = is_ascii(text[at]) ? 0 : run + piece.size();
        const bool is_broken = run > longest_run && (piece.size() == 2 || piece.size() == 3);
        is_broken ? result.append(reference_to(piece)) : result.append(piece);
        if (is_broken) run = 0;
    }
    return result;
}

std::size_t good_length(std::string_view block) {
    const auto found = std::find_if(block.rbegin(), block.rend(), is_ascii);
    return found == block.rend() ? block.size() : static_cast<std::size_t>(block.rend() - found);
}

bool is_utf16(std::string_view text) noexcept {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

class TextStream : public PlainObject<ISequentialStream> {
  public:
    explicit TextStream(std::string text)
        : is_utf16_(is_utf16(text)),
          text_(is_utf16_ ? std::move(text) : with_short_runs(text)),
          rest_(text_) {}

    STDMETHODIMP Read(void* buffer, ULONG size, ULONG* read) override {
        const std::string_view block = rest_.substr(0, size);
        const bool is_last = block.size() == rest_.size();
        const std::size_t length = is_last || is_utf16_ ? block.size() : good_length(block);
        std::copy_n(block.data(), length, static_cast<char*>(buffer));
        rest_.remove_prefix(length);
        if (read) *read = static_cast<ULONG>(length);
        return S_OK;
    }
    STDMETHODIMP Write(const void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }

  private:
    const bool is_utf16_;
    const std::string text_;
    std::string_view rest_;
};

}  // namespace

ComPtr<ISequentialStream> make_text_stream(std::string text) {
    return make_plain<TextStream>(std::move(text));
}

}  // namespace automation
