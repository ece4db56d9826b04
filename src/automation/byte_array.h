// Arrays of bytes as automation passes them.
#pragma once

#include <cstdint>
#include <span>

#include "automation/variant.h"

namespace automation {

// The bytes of a one-dimensional byte array in a variant, given by value or by reference, for as
// long as this object lives. An array without storage is empty; any other type is a type mismatch.
class ByteArrayView {
  public:
    explicit ByteArrayView(const VARIANT& value);
    ~ByteArrayView();
    ByteArrayView(const ByteArrayView&) = delete;
    ByteArrayView& operator=(const ByteArrayView&) = delete;

    std::span<const std::uint8_t> bytes() const noexcept { return bytes_; }

  private:
    SAFEARRAY* array_ = nullptr;
    std::span<const std::uint8_t> bytes_;
};

// A new array of the given size in a variant; `fill` writes its bytes.
template <class Fill>
Variant make_byte_array(std::size_t size, Fill&& fill);

namespace detail {

// An array that is being written to.
class NewByteArray {
  public:
    explicit NewByteArray(std::size_t size);
    ~NewByteArray();
    NewByteArray(const NewByteArray&) = delete;
    NewByteArray& operator=(const NewByteArray&) = delete;

    std::span<std::uint8_t> bytes() noexcept { return bytes_; }
    Variant finish() noexcept;

  private:
    SAFEARRAY* array_;
    std::span<std::uint8_t> bytes_;
};

}  // namespace detail

template <class Fill>
Variant make_byte_array(std::size_t size, Fill&& fill) {
    detail::NewByteArray array(size);
    fill(array.bytes());
    return array.finish();
}

}  // namespace automation
