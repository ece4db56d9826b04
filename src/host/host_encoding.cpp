#include "host/host_encoding.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "automation/byte_array.h"
#include "automation/dispatch.h"
#include "codec/prefixed_text.h"
#include "host/program_names.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

Variant bytes_of(std::wstring_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return automation::make_byte_array(bytes.size(), [&](std::span<std::uint8_t> out) {
        std::ranges::copy(bytes, std::as_writable_bytes(out).begin());
    });
}

// Pairs of bytes; a last odd byte stands for no character. What the host answers must be an array.
Bstr text_of(const Variant& bytes) {
    if (bytes.vt != (VT_ARRAY | VT_UI1) || !bytes.parray)
        automation::fail(automation::error_type_mismatch);
    const automation::ByteArrayView array(bytes);
    std::wstring text(array.bytes().size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), array.bytes().data(), text.size() * sizeof(wchar_t));
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
