// Kelos.ByteTextEncoder: the platform's Base64 without line breaks.

#include <algorithm>

#include "automation/byte_array.h"
#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"

#include <wincrypt.h>

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ByteArrayView;
using automation::ComPtr;
using automation::make_byte_array;
using automation::Variant;
using automation::view_of;

constexpr DWORD format = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;

[[noreturn]] void fail_last_error() {
    automation::fail(HRESULT_FROM_WIN32(GetLastError()));
}

Bstr encoded(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) return {};
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD length = 0;  // with the terminator, when asked for
    if (!CryptBinaryToStringW(bytes.data(), size, format, nullptr, &length)) fail_last_error();
    std::wstring text(length, L'\0');
    if (!CryptBinaryToStringW(bytes.data(), size, format, text.data(), &length)) fail_last_error();
    text.resize(length);
    return Bstr(text);
}

bool is_digit(wchar_t character) noexcept {
    return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z') ||
           (character >= L'0' && character <= L'9') || character == L'+' || character == L'/';
}

// Whole groups of four digits, the last of which may be filled up. The platform would also make
// something of cut-off texts.
bool is_well_formed(std::wstring_view text) noexcept {
    if (text.size() % 4 != 0) return false;
    for (int filling = 0; filling < 2 && !text.empty() && text.back() == L'='; ++filling)
        text.remove_suffix(1);
    return std::ranges::all_of(text, is_digit);
}

Variant decoded(std::wstring_view text) {
    if (text.empty()) return make_byte_array(0, [](auto) {});
    if (!is_well_formed(text)) automation::fail(E_INVALIDARG, L"The text is not Base64");
    const auto length = static_cast<DWORD>(text.size());
    DWORD size = 0;
    if (!CryptStringToBinaryW(text.data(), length, CRYPT_STRING_BASE64, nullptr, &size, nullptr,
                              nullptr))
        fail_last_error();
    return make_byte_array(size, [&](std::span<std::uint8_t> out) {
        if (!CryptStringToBinaryW(text.data(), length, CRYPT_STRING_BASE64, out.data(), &size,
                                  nullptr, nullptr))
            fail_last_error();
    });
}

class ByteTextEncoder
    : public automation::Object<
          ByteTextEncoder, automation::Extends<IHostKitByteTextEncoder, IKelosByteTextEncoder>> {
  public:
    STDMETHODIMP EncodeBytes(VARIANT bytes, BSTR* result) override {
        return answer(result, [&] { return encoded(ByteArrayView(bytes).bytes()); });
    }
    STDMETHODIMP DecodeText(BSTR text, VARIANT* result) override {
        return answer(result, Given(text), [&] { return decoded(view_of(text)); });
    }
};

}  // namespace

ComPtr<IUnknown> create_byte_text_encoder() {
    return automation::make<ByteTextEncoder>()->main_interface();
}

}  // namespace hostkit
