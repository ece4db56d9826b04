#include "hostkit/project_file/text_blocks.h"

#include <algorithm>
#include <string_view>

#include "automation/plain_object.h"

namespace hostkit::project_file {
namespace {

constexpr bool is_ascii(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0x80) == 0;
}

class TextBlocks : public automation::PlainObject<ISequentialStream> {
  public:
    TextBlocks(std::string text, bool& is_stuck)
        : text_(std::move(text)), rest_(text_), is_stuck_(is_stuck) {}

    STDMETHODIMP Read(void* buffer, ULONG size, ULONG* read) override {
        std::string_view block = rest_.substr(0, size);
        if (block.size() < rest_.size()) {
            const auto last = std::find_if(block.rbegin(), block.rend(), is_ascii);
            is_stuck_ = last == block.rend();
            if (is_stuck_) return STG_E_READFAULT;
            block.remove_suffix(static_cast<std::size_t>(last - block.rbegin()));
        }
        std::copy(block.begin(), block.end(), static_cast<char*>(buffer));
        rest_.remove_prefix(block.size());
        if (read) *read = static_cast<ULONG>(block.size());
        return S_OK;
    }
    STDMETHODIMP Write(const void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }

  private:
    const std::string text_;
    std::string_view rest_;
    bool& is_stuck_;
};

}  // namespace

automation::ComPtr<ISequentialStream> make_text_blocks(std::string text, bool& is_stuck) {
    return automation::make_plain<TextBlocks>(std::move(text), is_stuck);
}

}  // namespace hostkit::project_file
