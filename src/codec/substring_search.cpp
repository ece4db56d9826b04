#include "codec/substring_search.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

// x64 always has SSE2; a 32-bit build has it when the compiler is told so.
#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#define TESSERA_SEARCH_SSE2 1
#include <emmintrin.h>
#endif

// AVX2 is asked for at run time. Without optimisation gcc keeps vectors on the stack, which on
// Windows it does not align for vectors of this size.
#if defined(_M_X64) && !defined(__GNUC__)
#define TESSERA_SEARCH_AVX2 1
#define TESSERA_TARGET_AVX2
#include <intrin.h>
#elif defined(__x86_64__) && (!defined(_WIN32) || defined(__OPTIMIZE__))
#define TESSERA_SEARCH_AVX2 1
#define TESSERA_TARGET_AVX2 __attribute__((target("avx2")))
#include <immintrin.h>
#endif

namespace tessera {
namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;

// Four characters at once.
constexpr std::size_t kWord = sizeof(std::uint64_t) / sizeof(char16_t);

std::uint64_t word_at(std::u16string_view text, std::size_t at) {
    std::uint64_t word;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
}

std::size_t find_portable(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    return text.find(needle, from);
}

#if TESSERA_SEARCH_SSE2

bool occurs_at(std::u16string_view text, std::size_t place, std::u16string_view needle) {
    return std::memcmp(text.data() + place, needle.data(), needle.size() * sizeof(char16_t)) == 0;
}

// The vector searches look at `kPlaces` places at once. The last two characters of the needle
// tell most of them apart: a candidate that is being lengthened has much in common with what
// occurs often, except there. What is left is tried with the first character, then in full.
constexpr std::size_t kPlaces = 32;

struct Candidates {
    std::size_t from;      // where the places begin
    std::uint32_t places;  // one bit for each; none when the rest of the text is too short
};
using NextCandidates = Candidates (*)(std::u16string_view text, std::u16string_view needle,
                                      std::size_t from);

// The loops over the text call nothing, so that all their vectors stay in registers.
std::size_t find_among(NextCandidates next, std::u16string_view text, std::u16string_view needle,
                       std::size_t from) {
    for (;; from += kPlaces) {
        Candidates found = next(text, needle, from);
        from = found.from;
        if (found.places == 0) {
            return find_portable(text, needle, from);
        }
        for (; found.places != 0; found.places &= found.places - 1) {
            const auto place = from + static_cast<std::size_t>(std::countr_zero(found.places));
            if (occurs_at(text, place, needle)) {
                return place;
            }
        }
    }
}

inline __m128i equal(const char16_t* text, __m128i character) {
    return _mm_cmpeq_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text)), character);
}

inline __m128i equal_pair(const char16_t* text, __m128i first, __m128i second) {
    return _mm_and_si128(equal(text, first), equal(text + 1, second));
}

// One bit for each of 32 lanes.
inline std::uint32_t bits(__m128i m0, __m128i m1, __m128i m2, __m128i m3) {
    const auto low = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(m0, m1)));
    const auto high = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(m2, m3)));
    return low | high << 16;
}

Candidates next_candidates_sse2(std::u16string_view text, std::u16string_view needle,
                                std::size_t from) {
    const std::size_t end = needle.size() - 2;
    const __m128i a = _mm_set1_epi16(static_cast<short>(needle[end]));
    const __m128i b = _mm_set1_epi16(static_cast<short>(needle[end + 1]));
    const __m128i first = _mm_set1_epi16(static_cast<short>(needle[0]));
    for (; from + needle.size() - 1 + kPlaces <= text.size(); from += kPlaces) {
        const char16_t* at = text.data() + from + end;
        std::uint32_t places = bits(equal_pair(at, a, b), equal_pair(at + 8, a, b),
                                    equal_pair(at + 16, a, b), equal_pair(at + 24, a, b));
        if (places == 0) [[likely]] {
            continue;
        }
        at -= end;
        places &= bits(equal(at, first), equal(at + 8, first), equal(at + 16, first),
                       equal(at + 24, first));
        if (places != 0) {
            return {from, places};
        }
    }
    return {from, 0};
}

std::size_t find_sse2(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    return find_among(next_candidates_sse2, text, needle, from);
}

#endif

#if TESSERA_SEARCH_AVX2

#if defined(__GNUC__)
bool machine_has_avx2() {
    return __builtin_cpu_supports("avx2");
}
#else
bool machine_has_avx2() {
    int registers[4];
    __cpuid(registers, 0);
    if (registers[0] < 7) {
        return false;
    }
    __cpuid(registers, 1);
    constexpr int kSystemSavesVectors = 3 << 27;  // the system and the processor agree on AVX
    if ((registers[2] & kSystemSavesVectors) != kSystemSavesVectors || (_xgetbv(0) & 6) != 6) {
        return false;
    }
    __cpuidex(registers, 7, 0);
    return (registers[1] & 1 << 5) != 0;
}
#endif

TESSERA_TARGET_AVX2 inline __m256i equal(const char16_t* text, __m256i character) {
    const __m256i lanes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
    return _mm256_cmpeq_epi16(lanes, character);
}

// One bit for each of 32 lanes.
TESSERA_TARGET_AVX2 inline std::uint32_t bits(__m256i low, __m256i high) {
    // Packing goes by halves and leaves the quarters in the order 0 2 1 3.
    const __m256i packed = _mm256_permute4x64_epi64(_mm256_packs_epi16(low, high), 0xD8);
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(packed));
}

TESSERA_TARGET_AVX2 Candidates next_candidates_avx2(std::u16string_view text,
                                                    std::u16string_view needle, std::size_t from) {
    const std::size_t end = needle.size() - 2;
    const __m256i a = _mm256_set1_epi16(static_cast<short>(needle[end]));
    const __m256i b = _mm256_set1_epi16(static_cast<short>(needle[end + 1]));
    const __m256i first = _mm256_set1_epi16(static_cast<short>(needle[0]));
    for (; from + needle.size() - 1 + kPlaces <= text.size(); from += kPlaces) {
        const char16_t* at = text.data() + from + end;
        const __m256i low = _mm256_and_si256(equal(at, a), equal(at + 1, b));
        const __m256i high = _mm256_and_si256(equal(at + 16, a), equal(at + 17, b));
        const __m256i any = _mm256_or_si256(low, high);
        if (_mm256_testz_si256(any, any) != 0) [[likely]] {
            continue;
        }
        at -= end;
        const std::uint32_t places = bits(_mm256_and_si256(low, equal(at, first)),
                                          _mm256_and_si256(high, equal(at + 16, first)));
        if (places != 0) {
            return {from, places};
        }
    }
    return {from, 0};
}

std::size_t find_avx2(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    return find_among(next_candidates_avx2, text, needle, from);
}

#endif

}  // namespace

std::vector<SubstringSearch> substring_searches() {
    std::vector<SubstringSearch> searches = {find_portable};
#if TESSERA_SEARCH_SSE2
    searches.push_back(find_sse2);
#endif
#if TESSERA_SEARCH_AVX2
    if (machine_has_avx2()) {
        searches.push_back(find_avx2);
    }
#endif
    return searches;
}

std::size_t find_substring(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    static const SubstringSearch best = substring_searches().back();
    return best(text, needle, from);
}

std::size_t common_length(std::u16string_view a, std::u16string_view b) {
    const std::size_t limit = std::min(a.size(), b.size());
    std::size_t length = 0;
    std::uint64_t difference = 0;
    for (; difference == 0 && length + kWord <= limit; length += kWord) {
        difference = word_at(a, length) ^ word_at(b, length);
    }
    length -= difference != 0 ? kWord : 0;
    while (length < limit && a[length] == b[length]) {
        ++length;
    }
    return length;
}

PrefixMatch find_longest_prefix(std::u16string_view text, std::size_t from,
                                std::u16string_view needle, std::size_t least) {
    PrefixMatch match;
    while (least <= needle.size()) {
        const std::size_t place = find_substring(text, needle.substr(0, least), from);
        if (place == kNowhere) {
            break;
        }
        match = {place, common_length(text.substr(place), needle)};
        least = match.length + 1;
        from = place + 1;
    }
    return match;
}

}  // namespace tessera
