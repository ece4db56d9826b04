#include "functions/system_code_page.h"

#include <string>
#include <vector>

#include "automation/windows_headers.h"

namespace tessera {
namespace {

constexpr char replacement = '?';

AnsiCodePage::ToUnicode characters_of_bytes() {
    AnsiCodePage::ToUnicode characters{};
    for (int value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        wchar_t character = 0;
        // A byte that begins a double-byte character stands for nothing by itself.
        const bool stands_alone = !IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(value));
        const bool known =
            stands_alone && MultiByteToWideChar(CP_ACP, 0, &byte, 1, &character, 1) == 1;
        characters[static_cast<std::size_t>(value)] =
            static_cast<char16_t>(known ? character : value);
    }
    return characters;
}

// What the platform writes for the characters from `first` to `last`. Surrogates must not be among
// them: two in a row would be taken for one character.
void add_best_fits(char16_t first, char16_t last, std::vector<AnsiCodePage::BestFit>& fits) {
    std::wstring characters;
    for (unsigned code = first; code <= last; ++code)
        characters.push_back(static_cast<wchar_t>(code));
    std::string bytes(characters.size(), '\0');
    const int size = static_cast<int>(characters.size());
    const int written = WideCharToMultiByte(CP_ACP, 0, characters.data(), size, bytes.data(), size,
                                            &replacement, nullptr);
    if (written != size) return;  // not one byte for each character
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] != replacement)
            fits.push_back(
                {static_cast<char16_t>(characters[i]), static_cast<std::uint8_t>(bytes[i])});
}

AnsiCodePage make_system_code_page() {
    std::vector<AnsiCodePage::BestFit> fits;
    CPINFO info{};
    if (GetCPInfo(CP_ACP, &info) && info.MaxCharSize == 1) {
        add_best_fits(0x0000, 0xD7FF, fits);
        add_best_fits(0xE000, 0xFFFF, fits);
    }
    return AnsiCodePage(characters_of_bytes(), replacement, fits);
}

}  // namespace

const AnsiCodePage& system_code_page() {
    static const AnsiCodePage page = make_system_code_page();
    return page;
}

}  // namespace tessera
