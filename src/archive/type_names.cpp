#include "archive/type_names.h"

namespace tessera {
namespace {

struct ArchivedType {
    std::wstring_view name;
    VARTYPE type;
};

constexpr ArchivedType archived_types[] = {
    {L"String", VT_BSTR}, {L"Long", VT_I4},   {L"Integer", VT_I2}, {L"Boolean", VT_BOOL},
    {L"Empty", VT_EMPTY}, {L"Double", VT_R8}, {L"Single", VT_R4},  {L"Currency", VT_CY},
    {L"Date", VT_DATE},   {L"Byte", VT_UI1},  {L"Null", VT_NULL},
};

}  // namespace

std::optional<VARTYPE> archived_type(std::wstring_view type_name) noexcept {
    for (const ArchivedType& archived : archived_types)
        if (archived.name == type_name) return archived.type;
    return std::nullopt;
}

}  // namespace tessera
