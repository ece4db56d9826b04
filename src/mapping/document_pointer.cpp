#include "mapping/document_pointer.h"

#include "automation/conversion.h"
#include "host/error_boundary.h"
#include "mapping/number_system.h"

namespace tessera {

using automation::Variant;

namespace {

std::wstring_view cell_of(std::wstring_view pointer, std::size_t first_mark) {
    const std::wstring_view rest = pointer.substr(first_mark + 1);
    return rest.substr(0, rest.find(L'!'));
}

// The letters before the first place from which the rest reads as a number.
std::wstring_view letters_of(std::wstring_view cell) {
    std::size_t length = 0;
    while (!automation::is_numeric(cell.substr(length))) {
        if (length == cell.size()) automation::fail(automation::error_invalid_procedure_call);
        ++length;
    }
    return cell.substr(0, length);
}

std::wstring upper_case(std::wstring_view text) {
    std::wstring upper(text);
    CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
    return upper;
}

}  // namespace

bool SplitExDocP(std::wstring_view pointer, std::wstring& sheet, long& column, long& row) noexcept {
    bool split = false;
    guarded({L"Tessera.SCGlobal", L"Private Function 'SplitExDocP'"}, [&] {
        const std::size_t mark = pointer.find(L'!');
        sheet = pointer.substr(0, mark);
        if (mark == std::wstring_view::npos)
            automation::fail(automation::error_subscript_out_of_range);
        const std::wstring_view cell = cell_of(pointer, mark);
        const std::wstring_view letters = letters_of(cell);
        row = automation::to_long(Variant(cell.substr(letters.size())));
        std::int32_t number = column;
        add_column_letters(automation::as_u16(upper_case(letters)), number);
        column = number;
        split = true;
    });
    return split;
}

}  // namespace tessera
