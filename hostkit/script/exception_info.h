// Automation's exception info, with the ownership of its strings.
#pragma once

#include "automation/bstr.h"

namespace hostkit {

struct ExceptionInfo : EXCEPINFO {
    ExceptionInfo() noexcept : EXCEPINFO{} {}
    ~ExceptionInfo() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    [[nodiscard]] EXCEPINFO detach() noexcept {
        return std::exchange(static_cast<EXCEPINFO&>(*this), EXCEPINFO{});
    }
};

}  // namespace hostkit
