#include "cli/findings.h"

#include <algorithm>

#include "automation/call.h"

namespace cli {

using automation::ComPtr;
using automation::get;

namespace {

constexpr std::wstring_view progress_class = L"Tessera.Progress";

// A form that could not be shown is no error when none was wanted.
bool is_error(const ComPtr<IHostKitError>& error, bool with_windows) {
    return with_windows || get(error, &IHostKitError::get_Source).view() != progress_class;
}

// Messages are written for boxes of several lines.
std::wstring in_one_line(std::wstring_view text) {
    constexpr std::wstring_view line_ends = L"\r\n";
    std::wstring result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(line_ends), text.size());
        result.append(text.substr(0, end));
        text.remove_prefix(end);
        const std::size_t next = std::min(text.find_first_not_of(line_ends), text.size());
        if (next > 0) result += L' ';
        text.remove_prefix(next);
    }
    return result;
}

std::wstring place(long row, const RowName& row_name) {
    return row > 0 && row_name ? row_name(row) + L": " : L"";
}

std::wstring message_text(const ComPtr<IHostKitMessage>& message, const RowName& row_name) {
    return in_one_line(place(get(message, &IHostKitMessage::get_Row), row_name) +
                       get(message, &IHostKitMessage::get_Title).str() + L": " +
                       get(message, &IHostKitMessage::get_Text).str());
}

std::wstring error_text(const ComPtr<IHostKitError>& error, const RowName& row_name) {
    wchar_t number[16];
    const auto code = static_cast<unsigned long>(get(error, &IHostKitError::get_Number));
    swprintf(number, std::size(number), L" (%08lX)", code);
    return place(get(error, &IHostKitError::get_Row), row_name) +
           get(error, &IHostKitError::get_Source).str() + L", " +
           get(error, &IHostKitError::get_Label).str() + L": " +
           get(error, &IHostKitError::get_Description).str() + number;
}

ScriptErrorFound script_error(const ComPtr<IKelosScriptError>& error) {
    return {get(error, &IKelosScriptError::get_Description).str(),
            get(error, &IKelosScriptError::get_Source).str(),
            get(error, &IKelosScriptError::get_LineNr),
            get(error, &IKelosScriptError::get_LineText).str()};
}

// Not every engine has a text for each of its errors; who raised it says something, too.
std::wstring what_happened(const ScriptErrorFound& error) {
    if (error.description.empty()) return error.source.empty() ? L"script error" : error.source;
    return error.source.empty() ? error.description : error.source + L": " + error.description;
}

std::wstring indented(std::wstring_view line) {
    std::wstring result = L"    ";
    for (const wchar_t character : line)
        character == L'\t' ? result.append(L"    ") : result.append(1, character);
    return result;
}

}  // namespace

std::wstring count_of(std::size_t count, const wchar_t* noun) {
    return std::to_wstring(count) + L" " + noun + (count == 1 ? L"" : L"s");
}

std::wstring replaced_text(std::size_t count) {
    return count_of(count, L"character") + L" that XML does not allow, replaced by U+FFFD";
}

std::wstring Findings::counted() const {
    return count_of(messages.size(), L"message") + L", " +
           count_of(errors.size() + script_errors.size(), L"error");
}

Findings collect_findings(const ComPtr<IHostKitService>& service, bool with_windows,
                          const RowName& row_name) {
    Findings findings;
    const auto messages = get(service, &IHostKitService::get_Messages);
    const long message_count = get(messages, &IHostKitMessages::get_Count);
    for (long i = 1; i <= message_count; ++i)
        findings.messages.push_back(
            message_text(get(messages, &IHostKitMessages::get_Item, i), row_name));

    const auto errors = get(service, &IHostKitService::get_Errors);
    const long error_count = get(errors, &IHostKitErrors::get_Count);
    for (long i = 1; i <= error_count; ++i) {
        const auto error = get(errors, &IHostKitErrors::get_Item, i);
        if (is_error(error, with_windows)) findings.errors.push_back(error_text(error, row_name));
    }

    const auto script_errors = get(service, &IHostKitService::get_ScriptErrors);
    const long script_error_count = get(script_errors, &IHostKitScriptErrors::get_Count);
    for (long i = 1; i <= script_error_count; ++i)
        findings.script_errors.push_back(
            script_error(get(script_errors, &IHostKitScriptErrors::get_Item, i)));
    return findings;
}

ErrorCounter::ErrorCounter(const ComPtr<IHostKitService>& service, bool with_windows)
    : errors_(get(service, &IHostKitService::get_Errors)), with_windows_(with_windows) {}

std::size_t ErrorCounter::count() {
    const long there = get(errors_, &IHostKitErrors::get_Count);
    while (seen_ < there)
        if (is_error(get(errors_, &IHostKitErrors::get_Item, ++seen_), with_windows_)) ++count_;
    return count_;
}

void tell_messages(ConsoleStream& stream, const Findings& findings) {
    for (const std::wstring& message : findings.messages)
        stream.write_line(L"message: " + message);
}

void tell_errors(ConsoleStream& stream, const Findings& findings, const std::wstring& script) {
    for (const ScriptErrorFound& error : findings.script_errors) {
        stream.write_line(script + L":" + std::to_wstring(error.line) + L": " +
                          what_happened(error));
        if (!error.line_text.empty()) stream.write_line(indented(error.line_text));
    }
    for (const std::wstring& error : findings.errors)
        stream.write_line(L"error: " + error);
}

}  // namespace cli
