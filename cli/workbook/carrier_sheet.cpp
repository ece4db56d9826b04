#include "cli/workbook/carrier_sheet.h"

#include <zlib.h>

#include <new>
#include <string>

#include "automation/windows_headers.h"

#include <wincrypt.h>

#include "automation/error.h"
#include "cli/workbook/sheet_writer.h"

namespace cli {
namespace {

constexpr std::u16string_view mark = u"Tessera content document 1";
constexpr std::size_t longest_chunk = 32000;

std::string compressed(std::string_view bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string result(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()),
                  Z_DEFAULT_COMPRESSION) != Z_OK)
        throw std::bad_alloc();
    result.resize(size);
    return result;
}

std::u16string base64(std::string_view bytes) {
    constexpr DWORD form = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;
    const auto* data = reinterpret_cast<const BYTE*>(bytes.data());
    const auto count = static_cast<DWORD>(bytes.size());
    DWORD size = 0;
    bool done = CryptBinaryToStringW(data, count, form, nullptr, &size);
    std::wstring text(size, L'\0');
    done = done && CryptBinaryToStringW(data, count, form, text.data(), &size);
    if (!done) throw automation::Error(HRESULT_FROM_WIN32(GetLastError()));
    return std::u16string(text.begin(), text.begin() + size);
}

void write_row(XmlWriter& writer, std::int32_t row, std::u16string_view text) {
    writer.start(u"row");
    writer.attribute(u"r", row);
    write_text_cell(writer, {1, row}, text);
    writer.end();
}

}  // namespace

void write_carrier_sheet(XmlWriter& writer, std::string_view document) {
    const std::u16string text = base64(compressed(document));
    const std::string chunks = std::to_string((text.size() + longest_chunk - 1) / longest_chunk);
    writer.start(u"worksheet");
    writer.attribute(u"xmlns", spreadsheet_namespace);
    writer.start(u"sheetData");
    write_row(writer, 1, mark);
    write_row(writer, 2, std::u16string(chunks.begin(), chunks.end()));
    std::int32_t row = 3;
    for (std::size_t start = 0; start < text.size(); start += longest_chunk)
        write_row(writer, row++, std::u16string_view(text).substr(start, longest_chunk));
    writer.end();
    write_protection(writer);
    writer.end();
}

}  // namespace cli
