#include "cli/preview/page.h"

#include <algorithm>

#include "automation/error.h"
#include "cli/preview/page_data.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::string_view open_mark = "<!--";
constexpr std::string_view close_mark = "-->";

// A part of the page as it lies in the program, UTF-8.
std::string_view resource(const wchar_t* name) {
    const HRSRC found = FindResourceW(nullptr, name, MAKEINTRESOURCEW(10));  // RT_RCDATA
    const HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
    if (!loaded) automation::fail(HRESULT_FROM_WIN32(GetLastError()));
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(nullptr, found)};
}

std::string html_text(std::u16string_view text) {
    std::string result;
    for (const char character : tessera::to_utf8(text)) {
        switch (character) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

void write(TextSink& sink, std::string_view utf8) {
    sink.write(tessera::from_utf8(utf8).value_or(u""));
}

void write_part(TextSink& sink, std::string_view name, const PageSource& source) {
    if (name == "title")
        write(sink, html_text(source.file));
    else if (name == "style")
        write(sink, resource(L"PREVIEW_STYLE"));
    else if (name == "data")
        write(sink, page_data(source));
    else if (name == "grid")
        write(sink, resource(L"PREVIEW_GRID"));
    else if (name == "script")
        write(sink, resource(L"PREVIEW_SCRIPT"));
}

}  // namespace

// The frame says by comments what stands where.
void write_page(TextSink& sink, const PageSource& source) {
    std::string_view frame = resource(L"PREVIEW_FRAME");
    while (!frame.empty()) {
        const std::size_t mark = std::min(frame.find(open_mark), frame.size());
        write(sink, frame.substr(0, mark));
        frame.remove_prefix(mark);
        if (frame.empty()) break;
        const std::size_t end = frame.find(close_mark);
        write_part(sink, frame.substr(open_mark.size(), end - open_mark.size()), source);
        frame.remove_prefix(end + close_mark.size());
    }
}

}  // namespace cli
