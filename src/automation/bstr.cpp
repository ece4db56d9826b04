#include "automation/bstr.h"

#include <limits>
#include <new>

namespace automation {

Bstr::Bstr(std::wstring_view text) {
    if (text.empty()) return;
    if (text.size() > std::numeric_limits<UINT>::max() / sizeof(wchar_t)) throw std::bad_alloc();
    text_ = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!text_) throw std::bad_alloc();
}

}  // namespace automation
