#include "mapping/language.h"

#include <algorithm>

#include "automation/conversion.h"
#include "host/error_boundary.h"
#include "host/known_properties.h"
#include "text/leading_number.h"

namespace tessera {

using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

// Operations of objects: rows name them as expressions.
constexpr std::u16string_view unlisted_language_dependent[] = {
    u"GetOwnInternationalDescription", u"GetOwnInternationalValue", u"GetOwnInternationalXValue"};

// Names are compared exactly here.
bool depends_on_language(std::u16string_view name) {
    const auto* const known =
        kelos::find_property_if([&](std::u16string_view listed) { return listed == name; });
    if (known) return known->takes_language;
    return std::ranges::find(unlisted_language_dependent, name) !=
           std::end(unlisted_language_dependent);
}

// The project's current language is read in any case.
ComPtr<IKelosLanguage> language_for(const ComPtr<IKelosProject>& project,
                                    std::wstring_view property_name, std::wstring_view parameter) {
    const auto current = get(project, &IKelosProject::get_CurrentLanguage);
    if (!depends_on_language(automation::as_u16(property_name))) return current;
    const std::int16_t index =
        automation::to_short(Variant(leading_number(automation::as_u16(parameter))));
    const auto languages = get(project, &IKelosProject::get_Languages);
    if (index < 1 || index > get(languages, &IKelosLanguages::get_Count)) return current;
    return get(languages, &IKelosLanguages::get_Item, static_cast<long>(index));
}

}  // namespace

std::int16_t GetLCID(IKelosObject* object, std::wstring_view property_name,
                     std::wstring_view parameter) noexcept {
    std::int16_t lcid = 0;
    guarded({L"Tessera.SCGlobal", L"Private Function 'GetLCID'"}, [&] {
        const auto workset = get(object, &IKelosObject::get_WorkSet);
        if (!workset) return;
        const auto project = get(workset, &IKelosWorkset::get_CurrentProject);
        if (!project) return;
        const auto language = language_for(project, property_name, parameter);
        lcid = automation::to_short(Variant(get(language, &IKelosLanguage::get_LCID)));
    });
    return lcid;
}

}  // namespace tessera
