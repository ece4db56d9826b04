#include "automation/byte_array.h"

#include <limits>
#include <new>

#include "automation/error.h"

namespace automation {
namespace {

SAFEARRAY* array_of(const VARIANT& value) {
    if (value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal) return array_of(*value.pvarVal);
    if ((value.vt & ~VT_BYREF) != (VT_ARRAY | VT_UI1)) fail(error_type_mismatch);
    if (!(value.vt & VT_BYREF)) return value.parray;
    return value.pparray ? *value.pparray : nullptr;
}

}  // namespace

ByteArrayView::ByteArrayView(const VARIANT& value) {
    SAFEARRAY* const array = array_of(value);
    if (!array) return;
    if (SafeArrayGetDim(array) != 1 || SafeArrayGetElemsize(array) != 1) fail(error_type_mismatch);
    void* data = nullptr;
    check(SafeArrayAccessData(array, &data));
    array_ = array;
    bytes_ = {static_cast<const std::uint8_t*>(data), array->rgsabound[0].cElements};
}

ByteArrayView::~ByteArrayView() {
    if (array_) SafeArrayUnaccessData(array_);
}

namespace detail {

NewByteArray::NewByteArray(std::size_t size) {
    if (size > std::numeric_limits<ULONG>::max()) throw std::bad_alloc();
    array_ = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(size));
    if (!array_) throw std::bad_alloc();
    bytes_ = {static_cast<std::uint8_t*>(array_->pvData), size};
}

NewByteArray::~NewByteArray() {
    if (array_) SafeArrayDestroy(array_);
}

Variant NewByteArray::finish() noexcept {
    Variant result;
    result.vt = VT_ARRAY | VT_UI1;
    result.parray = std::exchange(array_, nullptr);
    return result;
}

}  // namespace detail

}  // namespace automation
