#include "hostkit/query/property_table.h"

#include "hostkit/model/texts.h"
#include "kelos.h"

namespace hostkit {
namespace {

constexpr PropertyInfo properties[] = {
    {kqpDescription, L"Description", L"Description", false, false, false},
    {kqpDescription2, L"Description2", L"Description2", false, false, false},
    {kqpDescription3, L"Description3", L"Description3", false, false, false},
    {kqpName, L"Name", L"Name", false, false, false},
    {kqpFullName, L"Fullname", L"", false, false, false},
    {kqpSystemFullName, L"SystemFullName", L"", false, false, false},
    {kqpNestedName, L"NestedName", L"", false, false, false},
    {kqpLabel, L"Label", L"Label", false, false, false},
    {kqpFullLabel, L"FullLabel", L"", false, false, false},
    {kqpSignedLabel, L"SignedLabel", L"", false, false, false},
    {kqpAliasFullLabel, L"AliasFullLabel", L"", false, false, false},
    {kqpAliasSignedLabel, L"AliasSignedLabel", L"", false, false, false},
    {kqpDisplayValue, L"DisplayValue", L"DisplayValue", true, false, false},
    {kqpGetDisplayXValue, L"GetDisplayXValue", L"SetXValue", true, false, true},
    {kqpValue, L"Value", L"Value", true, false, false},
    {kqpGetXValue, L"GetXValue", L"SetXValue", true, false, true},
    {kqpProductValue, L"ProductValue", L"", true, false, false},
    {kqpGetStatus, L"GetStatus", L"", false, false, false},
    {kqpGetInternationalDescription, L"GetInternationalDescription", L"SetInternationalDescription",
     false, true, false},
    {kqpGetInternationalDescription2, L"GetInternationalDescription2",
     L"SetInternationalDescription2", false, true, false},
    {kqpGetInternationalDescription3, L"GetInternationalDescription3",
     L"SetInternationalDescription3", false, true, false},
    {kqpGetInternationalValue, L"GetInternationalValue", L"SetInternationalValue", true, true,
     false},
    {kqpGetInternationalXValue, L"GetInternationalXValue", L"SetInternationalXValue", true, true,
     true},
    {kqpLogin, L"Login", L"", false, false, false},
    {kqpFileName, L"FileName", L"FileName", false, false, false},
};

}  // namespace

const PropertyInfo* find_property(long constant) noexcept {
    for (const PropertyInfo& property : properties)
        if (property.constant == constant) return &property;
    return nullptr;
}

const PropertyInfo* find_property(std::wstring_view name) noexcept {
    for (const PropertyInfo& property : properties)
        if (equal_in_any_case(property.name, name)) return &property;
    return nullptr;
}

}  // namespace hostkit
