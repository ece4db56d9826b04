#include "cli/workbook/carrier_sheet.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <string>

#include "automation/windows_headers.h"

#include <wincrypt.h>

#include "automation/error.h"
#include "cli/failure.h"
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

std::string bytes_of(const std::u16string& base64) {
    const std::wstring text(automation::as_wide(base64));
    const auto length = static_cast<DWORD>(text.size());
    DWORD size = 0;
    bool done = CryptStringToBinaryW(text.c_str(), length, CRYPT_STRING_BASE64, nullptr, &size,
                                     nullptr, nullptr);
    std::string bytes(done ? size : 0, '\0');
    done = done &&
           CryptStringToBinaryW(text.c_str(), length, CRYPT_STRING_BASE64,
                                reinterpret_cast<BYTE*>(bytes.data()), &size, nullptr, nullptr);
    return done ? bytes : std::string();
}

// Nothing for what is no whole stream, or is larger than any document.
std::optional<std::string> expanded(const std::string& bytes) {
    constexpr std::size_t greatest_ratio = 1032;  // of the compression
    constexpr std::size_t greatest_size = 1 << 30;
    std::size_t size = std::min<std::size_t>(bytes.size() * 16 + 1024, greatest_size);
    for (;;) {
        std::string result(size, '\0');
        auto used = static_cast<uLongf>(size);
        const int code = uncompress(reinterpret_cast<Bytef*>(result.data()), &used,
                                    reinterpret_cast<const Bytef*>(bytes.data()),
                                    static_cast<uLong>(bytes.size()));
        result.resize(used);
        if (code == Z_OK) return result;
        const bool is_short =
            code == Z_BUF_ERROR && size < greatest_size && size < bytes.size() * greatest_ratio;
        if (!is_short) return {};
        size = std::min(size * 4, greatest_size);
    }
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

std::optional<std::string> read_carrier_sheet(const SheetCells& sheet, const std::wstring& place) {
    const auto text_at = [&](std::int32_t row) -> std::u16string {
        const SheetCell* const cell = sheet.find({1, row});
        return cell ? shown_value(*cell) : std::u16string();
    };
    if (text_at(1) != mark) return {};
    const auto rows = archived_number(text_at(2)).value_or(0);
    std::u16string base64;
    for (std::int32_t row = 0; row < std::min(rows, static_cast<double>(last_cell.row)); ++row) {
        const std::u16string chunk = text_at(row + 3);
        if (chunk.empty()) break;
        base64 += chunk;
    }
    if (auto document = expanded(bytes_of(base64))) return document;
    throw Failure(place +
                  L" carries the content document, but its cells were changed; "
                  L"take that back, or export the workbook anew");
}

}  // namespace cli
