#include "automation/variant.h"

#include "automation/error.h"

namespace automation {

Variant Variant::value_of(const VARIANT& source) {
    Variant result;
    check(VariantCopyInd(&result, const_cast<VARIANT*>(&source)));
    return result;
}

void Variant::assign(const VARIANT& source) {
    check(VariantCopy(this, const_cast<VARIANT*>(&source)));
}

}  // namespace automation
