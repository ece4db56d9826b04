#include "cli/output_path.h"

#include "automation/file_handle.h"
#include "cli/failure.h"
#include "cli/standard_path.h"

namespace cli {
namespace {

std::wstring_view stem_of(std::wstring_view path) {
    path.remove_prefix(path.find_last_of(L"/\\:") + 1);
    const std::size_t dot = path.rfind(L'.');
    return dot == path.npos || dot == 0 ? path : path.substr(0, dot);
}

std::wstring usable(std::wstring_view name) {
    constexpr std::wstring_view escaped = L"%<>:\"/\\|?*";
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    std::wstring result;
    for (const wchar_t character : name) {
        if (character >= L' ' && escaped.find(character) == escaped.npos)
            result += character;
        else
            result.append(L"%").append({digits[character / 16], digits[character % 16]});
    }
    return result;
}

automation::FileHandle opened(const std::wstring& path) {
    constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return automation::FileHandle(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, shared, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// True when both lead to one file: links, drives and device paths give it many paths.
bool is_same_file(const std::wstring& left, const std::wstring& right) {
    const automation::FileHandle first = opened(left);
    const automation::FileHandle second = opened(right);
    BY_HANDLE_FILE_INFORMATION one{};
    BY_HANDLE_FILE_INFORMATION other{};
    return GetFileInformationByHandle(first.get(), &one) &&
           GetFileInformationByHandle(second.get(), &other) &&
           one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

}  // namespace

std::wstring content_file_name(std::wstring_view project_path, std::wstring_view document_name) {
    const std::wstring_view stem = is_standard(project_path) ? L"project" : stem_of(project_path);
    return usable(stem) + L"." + usable(document_name) + L".content.xml";
}

void check_output_path(const std::wstring& path, const std::wstring& input) {
    if (is_standard(path) || is_standard(input)) return;
    if (is_same_file(path, input))
        throw Failure(L"\"" + path +
                      L"\" is what is read and cannot be written at the same time; "
                      L"name another file to write");
}

ConsoleStream& teller(Console& console, const std::wstring& path) {
    return is_standard(path) ? console.error : console.out;
}

void tell_written(Console& console, const std::wstring& path, bool quiet) {
    if (!is_standard(path))
        console.out.write_line(quiet ? path : L"written: " + path);
    else if (!quiet)
        console.error.write_line(L"written to standard output");
}

}  // namespace cli
