#include "automation/unfinished_file.h"

#include <algorithm>

namespace automation {
namespace {

std::wstring_view folder_of(std::wstring_view path) noexcept {
    const std::size_t separator = path.find_last_of(L"/\\");
    if (separator != path.npos) return path.substr(0, separator + 1);
    return path.substr(0, path.substr(1, 1) == L":" ? 2 : 0);
}

}  // namespace

bool write_bytes(HANDLE file, std::string_view bytes) noexcept {
    constexpr std::size_t bytes_at_once = 1 << 20;
    while (!bytes.empty()) {
        const auto part = static_cast<DWORD>(std::min(bytes.size(), bytes_at_once));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), part, &written, nullptr)) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

UnfinishedFile::UnfinishedFile(std::wstring place) : place_(std::move(place)), file_(create()) {
    if (is_open()) let_vanish(true);
}

UnfinishedFile::~UnfinishedFile() {
    file_.close();
    if (!temporary_.empty()) DeleteFileW(temporary_.c_str());
}

// Under a name that no other file in the folder has.
HANDLE UnfinishedFile::create() {
    const std::wstring begin = std::wstring(folder_of(place_)) + L"tessera-" +
                               std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int number = 1;; ++number) {
        temporary_ = begin + std::to_wstring(number) + L".tmp";
        const HANDLE file = CreateFileW(temporary_.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                        nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS) continue;
        if (file == INVALID_HANDLE_VALUE) temporary_.clear();
        return file;
    }
}

void UnfinishedFile::let_vanish(bool vanishes) noexcept {
    FILE_DISPOSITION_INFO disposition{vanishes};
    SetFileInformationByHandle(file_.get(), FileDispositionInfo, &disposition, sizeof disposition);
}

bool UnfinishedFile::write(std::string_view bytes) noexcept {
    return write_bytes(file_.get(), bytes);
}

bool UnfinishedFile::move_into_place() noexcept {
    if (!FlushFileBuffers(file_.get())) return false;
    let_vanish(false);
    file_.close();
    if (!MoveFileExW(temporary_.c_str(), place_.c_str(), MOVEFILE_REPLACE_EXISTING)) return false;
    temporary_.clear();
    return true;
}

}  // namespace automation
