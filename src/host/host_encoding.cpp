#include "host/host_encoding.h"

#include <cstring>
#include <string>

#include "automation/dispatch.h"
#include "codec/prefixed_text.h"
#include "host/program_names.h"

namespace tessera {

using automation::Bstr;
using automation::check;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

// The data of a one-dimensional byte array, locked for as long as this object lives.
class ByteArrayAccess {
  public:
    explicit ByteArrayAccess(const VARIANT& value) {
        if (value.vt != (VT_ARRAY | VT_UI1) || !value.parray || SafeArrayGetDim(value.parray) != 1)
            automation::fail(automation::error_type_mismatch);
        check(SafeArrayAccessData(value.parray, &data_));
        array_ = value.parray;
    }
    ~ByteArrayAccess() { SafeArrayUnaccessData(array_); }
    ByteArrayAccess(const ByteArrayAccess&) = delete;
    ByteArrayAccess& operator=(const ByteArrayAccess&) = delete;

    void* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return array_->rgsabound[0].cElements; }

  private:
    SAFEARRAY* array_ = nullptr;
    void* data_ = nullptr;
};

Variant bytes_of(std::wstring_view text) {
    Variant bytes;
    bytes.parray =
        SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(text.size() * sizeof(wchar_t)));
    if (!bytes.parray) automation::fail(E_OUTOFMEMORY);
    bytes.vt = VT_ARRAY | VT_UI1;
    const ByteArrayAccess access(bytes);
    if (!text.empty()) std::memcpy(access.data(), text.data(), access.size());
    return bytes;
}

// Pairs of bytes; a last odd byte stands for no character.
Bstr text_of(const VARIANT& bytes) {
    const ByteArrayAccess access(bytes);
    std::wstring text(access.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), access.data(), text.size() * sizeof(wchar_t));
    return Bstr(text);
}

}  // namespace

const ComPtr<IKelosByteCompressor>& HostEncoding::compressor() {
    if (!compressor_)
        compressor_ =
            automation::create_object<IKelosByteCompressor>(program_names::byte_compressor);
    return compressor_;
}

const ComPtr<IKelosByteTextEncoder>& HostEncoding::encoder() {
    if (!encoder_)
        encoder_ =
            automation::create_object<IKelosByteTextEncoder>(program_names::byte_text_encoder);
    return encoder_;
}

void HostEncoding::create() {
    compressor();
    encoder();
}

Bstr HostEncoding::encode(std::wstring_view text) {
    const Variant bytes = bytes_of(text);
    const Variant compressed =
        get(compressor(), &IKelosByteCompressor::Compress, static_cast<VARIANT>(bytes));
    const Bstr encoded =
        get(encoder(), &IKelosByteTextEncoder::EncodeBytes, static_cast<VARIANT>(compressed));
    std::u16string result(encode_prefix);
    result.append(host_encoded_marker).append(encoded.u16());
    return Bstr(result);
}

Bstr HostEncoding::decode(std::wstring_view payload) {
    const Bstr text(payload);
    const Variant compressed = get(encoder(), &IKelosByteTextEncoder::DecodeText, text.get());
    const Variant bytes =
        get(compressor(), &IKelosByteCompressor::Expand, static_cast<VARIANT>(compressed));
    return text_of(bytes);
}

}  // namespace tessera
