#include "automation/late_arguments.h"

#include <list>
#include <vector>

#include "automation/conversion.h"
#include "automation/error.h"

namespace automation {
namespace {

// The description of a member, for as long as this object lives.
class MemberDescription {
  public:
    MemberDescription(ITypeInfo* info, DISPID member, WORD kind) : info_(info) {
        TYPEATTR* attributes = nullptr;
        check(info->GetTypeAttr(&attributes), info);
        const UINT count = attributes->cFuncs;
        info->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < count; ++i) {
            check(info->GetFuncDesc(i, &description_), info);
            if (description_->memid == member && (description_->invkind & kind)) return;
            release();
        }
    }
    ~MemberDescription() { release(); }
    MemberDescription(const MemberDescription&) = delete;
    MemberDescription& operator=(const MemberDescription&) = delete;

    // Nothing for a parameter that the member does not have.
    const TYPEDESC* parameter(std::size_t index) const noexcept {
        const bool known = description_ && index < parameter_count();
        return known ? &description_->lprgelemdescParam[index].tdesc : nullptr;
    }
    std::size_t parameter_count() const noexcept {
        return description_ ? static_cast<std::size_t>(description_->cParams) : 0;
    }

  private:
    void release() noexcept {
        if (description_) info_->ReleaseFuncDesc(std::exchange(description_, nullptr));
    }

    ITypeInfo* info_;
    FUNCDESC* description_ = nullptr;
};

bool is_changed_text(const TYPEDESC& type) noexcept {
    return type.vt == VT_PTR && type.lptdesc->vt == VT_BSTR;
}

bool is_interface(ITypeInfo* info, HREFTYPE reference) {
    ComPtr<ITypeInfo> referred;
    check(info->GetRefTypeInfo(reference, referred.put()), info);
    TYPEATTR* attributes = nullptr;
    check(referred->GetTypeAttr(&attributes), referred);
    const TYPEKIND kind = attributes->typekind;
    referred->ReleaseTypeAttr(attributes);
    return kind == TKIND_DISPATCH || kind == TKIND_INTERFACE || kind == TKIND_COCLASS;
}

bool is_object(ITypeInfo* info, const TYPEDESC& type) {
    if (type.vt == VT_DISPATCH || type.vt == VT_UNKNOWN) return true;
    return type.vt == VT_PTR && type.lptdesc->vt == VT_USERDEFINED &&
           is_interface(info, type.lptdesc->hreftype);
}

bool is_nothing(const VARIANT& value) noexcept {
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return !value.punkVal;
        default:
            return false;
    }
}

// The arguments of one call in the types that the member declares, where they can be had.
class AdaptedArguments {
  public:
    AdaptedArguments(ITypeInfo* info, const MemberDescription& member, const DISPPARAMS& given)
        : arguments_(given.rgvarg, given.rgvarg + given.cArgs), parameters_(given) {
        parameters_.rgvarg = arguments_.data();
        for (std::size_t i = 0; i < arguments_.size(); ++i)
            if (const TYPEDESC* const type = member.parameter(position(i, member)))
                adapt(arguments_[i], info, *type);
    }

    bool is_adapted() const noexcept { return adapted_; }
    DISPPARAMS* parameters() noexcept { return &parameters_; }

    // Gives the variables the texts that the member left.
    void hand_back() noexcept {
        for (ChangedText& text : texts_) {
            Variant value(std::move(text.value));
            VariantClear(text.variable);
            *text.variable = value.detach();
        }
    }

  private:
    struct ChangedText {
        VARIANT* variable;
        Bstr value;
    };

    // Arguments come last first, after those that are named by their position.
    std::size_t position(std::size_t index, const MemberDescription& member) const noexcept {
        if (index >= parameters_.cNamedArgs) return arguments_.size() - 1 - index;
        const DISPID name = parameters_.rgdispidNamedArgs[index];
        return name == DISPID_PROPERTYPUT ? member.parameter_count() - 1
                                          : static_cast<std::size_t>(name);
    }

    void adapt(VARIANT& argument, ITypeInfo* info, const TYPEDESC& type) {
        if (is_changed_text(type) && argument.vt == (VT_BYREF | VT_VARIANT))
            lend_text(argument);
        else if (is_object(info, type) && is_nothing(Variant::value_of(argument)))
            pass_nothing(argument);
    }
    void lend_text(VARIANT& argument) {
        const VARIANT& value = *argument.pvarVal;
        texts_.push_back({argument.pvarVal, is_nothing(value) ? Bstr() : to_text(value)});
        argument.vt = VT_BYREF | VT_BSTR;
        argument.pbstrVal = texts_.back().value.address();
        adapted_ = true;
    }
    void pass_nothing(VARIANT& argument) noexcept {
        argument.vt = VT_DISPATCH;
        argument.pdispVal = nullptr;
        adapted_ = true;
    }

    std::vector<VARIANT> arguments_;  // shallow: they are the caller's
    DISPPARAMS parameters_;
    std::list<ChangedText> texts_;  // keep their addresses
    bool adapted_ = false;
};

// Answers with which the platform refuses an argument before it calls the member.
bool refuses_arguments(HRESULT code) noexcept {
    return code == DISP_E_TYPEMISMATCH || code == DISP_E_BADVARTYPE ||
           code == DISP_E_PARAMNOTFOUND || code == DISP_E_PARAMNOTOPTIONAL;
}

}  // namespace

HRESULT invoke_member(ITypeInfo* info, void* object, DISPID member, WORD kind,
                      DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                      UINT* bad_argument) noexcept {
    // Some engines ask for the walk over a collection as for a method, some as for a property.
    if (member == DISPID_NEWENUM) kind |= DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    const HRESULT code =
        info->Invoke(object, member, kind, parameters, result, exception, bad_argument);
    if (!refuses_arguments(code)) return code;
    try {
        const MemberDescription description(info, member, kind);
        AdaptedArguments adapted(info, description, *parameters);
        if (!adapted.is_adapted()) return code;
        const HRESULT second = info->Invoke(object, member, kind, adapted.parameters(), result,
                                            exception, bad_argument);
        if (SUCCEEDED(second)) adapted.hand_back();
        return second;
    } catch (...) {
        return code;
    }
}

}  // namespace automation
