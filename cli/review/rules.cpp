#include "cli/review/rules.h"

#include <algorithm>

namespace cli {

const RuleText& text_of(Rule rule) noexcept {
    return *std::ranges::find(rules, rule, &RuleText::rule);
}

std::u16string_view name_of(Severity severity) noexcept {
    switch (severity) {
        case Severity::error:
            return u"error";
        case Severity::warning:
            return u"warning";
        case Severity::notice:
            return u"notice";
    }
    return {};
}

}  // namespace cli
