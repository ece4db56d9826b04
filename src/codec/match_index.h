// The window behind a reading position, indexed by what stands there, so that the longest earlier
// occurrence of the text ahead is found without reading the window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessera {

struct Match {
    std::size_t position = 0;
    std::size_t length = 0;  // 0: there is none
};

// How many characters the beginnings of two texts have in common.
std::size_t common_length(std::u16string_view a, std::u16string_view b);

class MatchIndex {
  public:
    // No shorter match is looked for.
    static constexpr std::size_t least_length = 3;

    // The text must outlive the index. A window reaches back by up to `window` characters.
    MatchIndex(std::u16string_view text, std::size_t window);

    // Moves the end of the window, which never goes back.
    void advance_to(std::size_t end);

    // The leftmost place within the window of the longest beginning of `ahead` that lies in it.
    Match longest(std::u16string_view ahead) const;

  private:
    using Position = std::uint32_t;
    struct Chain {
        Position first;
        Position last;
    };

    std::size_t bucket(std::u16string_view beginning) const;
    Position& following(std::size_t position) { return following_[position & place_mask_]; }
    Position following(std::size_t position) const { return following_[position & place_mask_]; }
    void add(std::size_t position);
    void drop_before(std::size_t start);

    std::u16string_view text_;
    std::size_t window_;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    std::size_t added_ = 0;
    int hash_bits_;
    std::size_t place_mask_;
    // The places whose beginnings share a bucket, from left to right.
    std::vector<Chain> chains_;
    std::vector<Position> following_;
};

}  // namespace tessera
