// Automation's exception info, with the ownership of its strings.
#pragma once

#include <utility>

#include "automation/windows_headers.h"

namespace automation {

struct ExceptionInfo : EXCEPINFO {
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ~ExceptionInfo() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    // Callees may leave it empty until somebody wants to know.
    void fill_in() {
        if (pfnDeferredFillIn) pfnDeferredFillIn(this);
    }
    [[nodiscard]] EXCEPINFO detach() noexcept {
        return std::exchange(static_cast<EXCEPINFO&>(*this), EXCEPINFO{});
    }
};

}  // namespace automation
