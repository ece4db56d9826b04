#include "cli/console.h"

#include <algorithm>
#include <string>

#include "automation/bstr.h"
#include "cli/failure.h"
#include "text/utf8.h"

namespace cli {
namespace {

constexpr std::size_t page_width = 140;
constexpr std::size_t narrowest = 60;
// What the platform's console takes at once has a limit of its own.
constexpr std::size_t characters_at_once = 8192;

constexpr WORD red = FOREGROUND_RED | FOREGROUND_INTENSITY;
constexpr WORD yellow = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_INTENSITY;
constexpr WORD all_of_foreground =
    FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE | FOREGROUND_INTENSITY;

struct Mark {
    std::wstring_view text;
    WORD colour;
};
constexpr Mark marks[] = {
    {L"tessera: ", red},
    {L"error: ", red},
    {L"message: ", yellow},
    {L"not in the workbook: ", yellow},
};

// Nothing for a line that tells no problem.
Mark mark_of(std::wstring_view line) {
    for (const Mark& mark : marks)
        if (line.starts_with(mark.text)) return mark;
    return {};
}

// https://no-color.org: set to whatever it is, but not empty.
bool wants_colours() {
    return GetEnvironmentVariableW(L"NO_COLOR", nullptr, 0) <= 1;
}

const wchar_t* advice_for(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
            return L"; check the name";
        case ERROR_PATH_NOT_FOUND:
            return L"; check the name of the folder";
        case ERROR_ACCESS_DENIED:
            return L"; check that it is a file, and that you may use it";
        case ERROR_SHARING_VIOLATION:
            return L"; close the file in the program that has it open";
        case ERROR_DISK_FULL:
            return L"; make room on the disk, or write elsewhere";
        default:
            return L"";
    }
}

std::size_t part_length(std::u16string_view text) {
    if (text.size() <= characters_at_once) return text.size();
    const char16_t last = text[characters_at_once - 1];
    const bool would_split_pair = last >= 0xD800 && last <= 0xDBFF;
    return characters_at_once - (would_split_pair ? 1 : 0);
}

[[noreturn]] void fail_writing() {
    throw Failure(L"standard output cannot be written: " + reason_of(GetLastError()));
}

}  // namespace

std::wstring reason_of(DWORD error) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, error, 0, text, 512, nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.'))
        --length;
    if (length == 0) return L"error " + std::to_wstring(error);
    return std::wstring(text, length) + advice_for(error);
}

ConsoleStream::ConsoleStream(DWORD stream) : handle_(GetStdHandle(stream)) {
    if (handle_ == INVALID_HANDLE_VALUE) handle_ = nullptr;
    DWORD mode = 0;
    is_terminal_ = handle_ && GetConsoleMode(handle_, &mode);
    has_colours_ = is_terminal_ && wants_colours();
}

std::size_t ConsoleStream::width() const noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!is_terminal_ || !GetConsoleScreenBufferInfo(handle_, &info)) return page_width;
    // A full line would make the terminal begin another one.
    const int columns = info.srWindow.Right - info.srWindow.Left;
    return std::max(narrowest, static_cast<std::size_t>(std::max(columns, 0)));
}

void ConsoleStream::write(std::u16string_view text) {
    if (!handle_) return;
    if (!is_terminal_) return write_bytes(tessera::to_utf8(text));
    while (!text.empty()) {
        const std::size_t length = part_length(text);
        write_characters(text.substr(0, length));
        text.remove_prefix(length);
    }
}

void ConsoleStream::write(std::wstring_view text) {
    write(automation::as_u16(text));
}

void ConsoleStream::write_line(std::wstring_view text) {
    const Mark mark = has_colours_ ? mark_of(text) : Mark{};
    if (!mark.text.empty()) write_mark(mark.text, mark.colour);
    text.remove_prefix(mark.text.size());
    write(visible(automation::as_u16(text)) + u'\n');
}

void ConsoleStream::write_mark(std::wstring_view text, WORD colour) {
    CONSOLE_SCREEN_BUFFER_INFO before;
    if (!GetConsoleScreenBufferInfo(handle_, &before)) return write(text);
    const auto background = static_cast<WORD>(before.wAttributes & ~all_of_foreground);
    SetConsoleTextAttribute(handle_, static_cast<WORD>(background | colour));
    write(text);
    SetConsoleTextAttribute(handle_, before.wAttributes);
}

void ConsoleStream::write_characters(std::u16string_view text) {
    const std::wstring_view wide = automation::as_wide(text);
    DWORD written = 0;
    if (!WriteConsoleW(handle_, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr))
        fail_writing();
}

void ConsoleStream::write_bytes(std::string_view bytes) {
    constexpr std::size_t bytes_at_once = 1 << 20;
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min(bytes.size(), bytes_at_once));
        DWORD written = 0;
        if (!WriteFile(handle_, bytes.data(), size, &written, nullptr)) fail_writing();
        bytes.remove_prefix(written);
    }
}

}  // namespace cli
