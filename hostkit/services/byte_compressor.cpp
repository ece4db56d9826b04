// Kelos.ByteCompressor: zlib behind a header with the size.
//
// Layout of compressed data: the four bytes of the marker, the size of the uncompressed bytes (four
// bytes, least significant first), a zlib stream.

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "automation/byte_array.h"
#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"

#include <zlib.h>

namespace hostkit {
namespace {

using automation::ByteArrayView;
using automation::ComPtr;
using automation::make_byte_array;
using automation::Variant;

constexpr std::array<std::uint8_t, 4> marker = {'K', 'B', 'C', '1'};
constexpr std::size_t size_length = 4;
constexpr std::size_t header_length = marker.size() + size_length;
// No zlib stream expands to more than this per byte: what claims more is forged, and must not make
// us allocate what it claims.
constexpr std::uint64_t greatest_ratio = 1032;

[[noreturn]] void fail_damaged() {
    automation::fail(E_INVALIDARG, L"The bytes are not compressed data, or they are damaged");
}

Variant compressed(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max() / 2)
        automation::fail(E_OUTOFMEMORY);
    std::vector<std::uint8_t> stream(compressBound(static_cast<uLong>(bytes.size())));
    auto stream_length = static_cast<uLongf>(stream.size());
    if (compress2(stream.data(), &stream_length, bytes.data(), static_cast<uLong>(bytes.size()),
                  Z_DEFAULT_COMPRESSION) != Z_OK)
        automation::fail(E_OUTOFMEMORY);
    return make_byte_array(header_length + stream_length, [&](std::span<std::uint8_t> out) {
        auto next = std::ranges::copy(marker, out.begin()).out;
        for (std::size_t i = 0; i < size_length; ++i)
            *next++ = static_cast<std::uint8_t>(bytes.size() >> (8 * i));
        std::copy_n(stream.begin(), stream_length, next);
    });
}

// The size that the header promises; refuses what cannot be true.
std::uint32_t checked_size(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < header_length || !std::ranges::equal(bytes.first(marker.size()), marker))
        fail_damaged();
    std::uint32_t size = 0;
    for (std::size_t i = 0; i < size_length; ++i)
        size |= std::uint32_t{bytes[marker.size() + i]} << (8 * i);
    if (size > (bytes.size() - header_length) * greatest_ratio) fail_damaged();
    return size;
}

Variant expanded(std::span<const std::uint8_t> bytes) {
    const std::uint32_t size = checked_size(bytes);
    const auto stream = bytes.subspan(header_length);
    return make_byte_array(size, [&](std::span<std::uint8_t> out) {
        // zlib wants an address also where nothing is to be written.
        std::uint8_t nothing = 0;
        auto length = static_cast<uLongf>(size);
        auto used = static_cast<uLong>(stream.size());
        const int code =
            uncompress2(out.empty() ? &nothing : out.data(), &length, stream.data(), &used);
        if (code != Z_OK || length != size || used != stream.size()) fail_damaged();
    });
}

class ByteCompressor
    : public automation::Object<ByteCompressor,
                                automation::Extends<IHostKitByteCompressor, IKelosByteCompressor>> {
  public:
    STDMETHODIMP Compress(VARIANT bytes, VARIANT* result) override {
        return answer(result, [&] { return compressed(ByteArrayView(bytes).bytes()); });
    }
    STDMETHODIMP Expand(VARIANT bytes, VARIANT* result) override {
        return answer(result, [&] { return expanded(ByteArrayView(bytes).bytes()); });
    }
};

}  // namespace

ComPtr<IUnknown> create_byte_compressor() {
    return automation::make<ByteCompressor>()->main_interface();
}

}  // namespace hostkit
