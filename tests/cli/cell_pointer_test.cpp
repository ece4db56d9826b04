#include "cli/records/cell_pointer.h"

#include <string>

#include "cli/records/content_records.h"
#include "doctest/doctest.h"
#include "text/utf8.h"

namespace {

std::string told(const cli::CellPointer& pointer) {
    const std::string sheet = "[" + tessera::to_utf8(pointer.sheet) + "]";
    if (!pointer.cell) return sheet + " nowhere";
    return sheet + " " + std::to_string(pointer.cell->column) + "," +
           std::to_string(pointer.cell->row) + " " + tessera::to_utf8(cell_name(*pointer.cell));
}

TEST_CASE("Pointers lead to the cells that the component counts from") {
    const struct {
        std::u16string_view pointer;
        std::string_view told;
    } cases[] = {
        {u"Sheet1!A1", "[Sheet1] 1,1 A1"},
        {u"Data!aa10", "[Data] 27,10 AA10"},
        {u"S!ZZ3", "[S] 702,3 ZZ3"},
        {u"S!XFD1048576", "[S] 16384,1048576 XFD1048576"},
        {u"!C4", "[] 3,4 C4"},
        {u"S!B2!X", "[S] 2,2 B2"},
        {u"S!A 5", "[S] 1,5 A5"},
        {u"S!FXSHRXW1", "[S] 2147483647,1 FXSHRXW1"},
        {u"S!FXSHRXX1", "[S] nowhere"},
        {u"S!A2147483648", "[S] nowhere"},
        {u"S!A0", "[S] nowhere"},
        {u"S!12", "[S] nowhere"},
        {u"S!AB", "[S] nowhere"},
        {u"S!$A$1", "[S] nowhere"},
        {u"S!A1:B2", "[S] nowhere"},
        {u"A1", "[] nowhere"},
        {u"", "[] nowhere"},
    };
    for (const auto& [pointer, expected] : cases)
        CHECK(told(cli::parse_pointer(pointer)) == expected);
}

TEST_CASE("A property is known in any case, a number, or else an expression") {
    const struct {
        const char16_t* name;
        cli::PropertyKind kind;
    } cases[] = {
        {u"", cli::PropertyKind::none},
        {u"fullNAME", cli::PropertyKind::known},
        {u"32", cli::PropertyKind::numbered},
        {u"32a", cli::PropertyKind::expression},
        {u"Values", cli::PropertyKind::expression},
    };
    for (const auto& [name, kind] : cases) {
        cli::ContentRecord record;
        record.property.name = name;
        CHECK(record.property_kind() == kind);
    }
}

}  // namespace
