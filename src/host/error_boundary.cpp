#include "host/error_boundary.h"

#include "host/service.h"

namespace tessera {

void report_current_error(const MemberName& member) noexcept {
    const automation::ErrorReport error = automation::current_error();
    try {
        const automation::Bstr source(member.source);
        const automation::Bstr label(member.label);
        host_service()->ReportError(error.code, error.description.get(), source.get(), label.get());
    } catch (...) {
        // The host cannot be told; the caller must not be either.
    }
}

HRESULT report_missing_place(const MemberName& member) noexcept {
    return trapped(member, [] { automation::fail(E_POINTER); });
}

}  // namespace tessera
