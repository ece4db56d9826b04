#include "type_library_listing.h"

#include <vector>

#include "automation/conversion.h"
#include "automation/error.h"
#include "automation/variant.h"

using automation::Bstr;
using automation::check;
using automation::ComPtr;
using automation::Variant;

namespace tools {
namespace {

using Line = std::wstring;

// What a type description lends: `release` gives it back.
template <class Description>
class Lent {
  public:
    using Release = void (STDMETHODCALLTYPE ITypeInfo::*)(Description*);
    Lent(ITypeInfo* owner, Release release) : owner_(owner), release_(release) {}
    ~Lent() {
        if (description_) (owner_->*release_)(description_);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    Description** put() noexcept { return &description_; }
    const Description* operator->() const noexcept { return description_; }
    const Description& operator*() const noexcept { return *description_; }

  private:
    ITypeInfo* owner_;
    Release release_;
    Description* description_ = nullptr;
};

Line name_of(ITypeInfo* type, MEMBERID member = MEMBERID_NIL) {
    Bstr name;
    check(type->GetDocumentation(member, name.put(), nullptr, nullptr, nullptr));
    return name.str();
}

Line guid_text(const GUID& guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return text;
}

Line hexadecimal(unsigned long value) {
    wchar_t text[16];
    swprintf(text, 16, L"0x%lx", value);
    return text;
}

ComPtr<ITypeInfo> referred(ITypeInfo* type, HREFTYPE reference) {
    ComPtr<ITypeInfo> info;
    check(type->GetRefTypeInfo(reference, info.put()));
    return info;
}

Line simple_type_name(VARTYPE type) {
    struct Name {
        VARTYPE type;
        const wchar_t* name;
    };
    static constexpr Name names[] = {
        {VT_I2, L"short"},
        {VT_I4, L"long"},
        {VT_I8, L"int64"},
        {VT_UI1, L"byte"},
        {VT_UI4, L"ulong"},
        {VT_R4, L"float"},
        {VT_R8, L"double"},
        {VT_CY, L"CURRENCY"},
        {VT_DATE, L"DATE"},
        {VT_BSTR, L"BSTR"},
        {VT_DISPATCH, L"IDispatch*"},
        {VT_UNKNOWN, L"IUnknown*"},
        {VT_BOOL, L"VARIANT_BOOL"},
        {VT_VARIANT, L"VARIANT"},
        {VT_INT, L"int"},
        {VT_UINT, L"uint"},
        {VT_VOID, L"void"},
        {VT_HRESULT, L"HRESULT"},
    };
    for (const Name& known : names)
        if (known.type == type) return known.name;
    return L"VT" + std::to_wstring(type);
}

Line type_text(ITypeInfo* owner, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return type_text(owner, *type.lptdesc) + L"*";
    if (type.vt == VT_SAFEARRAY) return L"SAFEARRAY(" + type_text(owner, *type.lptdesc) + L")";
    if (type.vt == VT_USERDEFINED) return name_of(referred(owner, type.hreftype).get());
    return simple_type_name(type.vt);
}

Line value_text(const VARIANT& value) {
    const Line text = automation::to_text(value).str();
    return value.vt == VT_BSTR ? L"\"" + text + L"\"" : text;
}

Line parameter_text(ITypeInfo* owner, const ELEMDESC& element, const Line& name) {
    struct Flag {
        USHORT bit;
        const wchar_t* name;
    };
    static constexpr Flag flags[] = {{PARAMFLAG_FIN, L"in "},
                                     {PARAMFLAG_FOUT, L"out "},
                                     {PARAMFLAG_FOPT, L"optional "},
                                     {PARAMFLAG_FLCID, L"lcid "},
                                     {PARAMFLAG_FRETVAL, L"retval "}};
    const PARAMDESC& parameter = element.paramdesc;
    Line text;
    for (const Flag& flag : flags)
        if (parameter.wParamFlags & flag.bit) text += flag.name;
    text += type_text(owner, element.tdesc) + L" " + name;
    if (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT)
        text += L" = " + value_text(parameter.pparamdescex->varDefaultValue);
    return text;
}

const wchar_t* kind_of(INVOKEKIND kind) {
    switch (kind) {
        case INVOKE_FUNC:
            return L"method";
        case INVOKE_PROPERTYGET:
            return L"get";
        case INVOKE_PROPERTYPUT:
            return L"put";
        case INVOKE_PROPERTYPUTREF:
            return L"putref";
    }
    return L"?";
}

Line function_line(ITypeInfo* type, UINT index) {
    Lent<FUNCDESC> function(type, &ITypeInfo::ReleaseFuncDesc);
    check(type->GetFuncDesc(index, function.put()));
    std::vector<BSTR> lent(function->cParams + 1u);
    UINT count = 0;
    check(type->GetNames(function->memid, lent.data(), static_cast<UINT>(lent.size()), &count));
    std::vector<Bstr> names;
    for (BSTR name : lent)
        names.push_back(Bstr::attach(name));
    Line text = L"  [" + hexadecimal(static_cast<unsigned long>(function->memid)) + L"] " +
                kind_of(function->invkind) + L" " + names[0].str() + L"(";
    for (SHORT i = 0; i < function->cParams; ++i)
        text += (i ? L", " : L"") + parameter_text(type, function->lprgelemdescParam[i],
                                                   names[static_cast<std::size_t>(i) + 1].str());
    text += L"): " + type_text(type, function->elemdescFunc.tdesc);
    if (function->wFuncFlags) text += L" flags " + hexadecimal(function->wFuncFlags);
    return text + L"\n";
}

Line variable_line(ITypeInfo* type, UINT index) {
    Lent<VARDESC> variable(type, &ITypeInfo::ReleaseVarDesc);
    check(type->GetVarDesc(index, variable.put()));
    Line text = L"  " + name_of(type, variable->memid);
    if (variable->varkind == VAR_CONST)
        text += L" = " + value_text(*variable->lpvarValue);
    else
        text += L": " + type_text(type, variable->elemdescVar.tdesc);
    return text + L"\n";
}

Line implemented_line(ITypeInfo* type, UINT index) {
    HREFTYPE reference = 0;
    INT flags = 0;
    check(type->GetRefTypeOfImplType(index, &reference));
    check(type->GetImplTypeFlags(index, &flags));
    return L"  : " + name_of(referred(type, reference).get()) +
           (flags & IMPLTYPEFLAG_FDEFAULT ? L" default" : L"") +
           (flags & IMPLTYPEFLAG_FSOURCE ? L" source" : L"") + L"\n";
}

const wchar_t* kind_of(TYPEKIND kind) {
    static constexpr const wchar_t* names[] = {L"enum",      L"record",        L"module",
                                               L"interface", L"dispinterface", L"coclass",
                                               L"alias",     L"union"};
    return kind < TKIND_MAX ? names[kind] : L"?";
}

// A dual interface is listed as the vtable has it, which names every parameter.
ComPtr<ITypeInfo> vtable_side(ComPtr<ITypeInfo> type) {
    HREFTYPE reference = 0;
    if (type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference) != S_OK) return type;
    return referred(type.get(), reference);
}

Line type_lines(const ComPtr<ITypeInfo>& listed) {
    const ComPtr<ITypeInfo> type = vtable_side(listed);
    Lent<TYPEATTR> attributes(type.get(), &ITypeInfo::ReleaseTypeAttr);
    check(type->GetTypeAttr(attributes.put()));
    Line text = Line(kind_of(attributes->typekind)) + L" " + name_of(type.get()) + L" " +
                guid_text(attributes->guid) + L" flags " + hexadecimal(attributes->wTypeFlags) +
                L"\n";
    for (UINT i = 0; i < attributes->cImplTypes; ++i)
        text += implemented_line(type.get(), i);
    for (UINT i = 0; i < attributes->cFuncs; ++i)
        text += function_line(type.get(), i);
    for (UINT i = 0; i < attributes->cVars; ++i)
        text += variable_line(type.get(), i);
    return text;
}

Line library_line(ITypeLib* library) {
    Bstr name, help;
    check(library->GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr));
    TLIBATTR* attributes = nullptr;
    check(library->GetLibAttr(&attributes));
    const Line text = L"library " + name.str() + L" " + guid_text(attributes->guid) + L" " +
                      std::to_wstring(attributes->wMajorVerNum) + L"." +
                      std::to_wstring(attributes->wMinorVerNum) + L" \"" + help.str() + L"\"\n";
    library->ReleaseTLibAttr(attributes);
    return text;
}

std::string utf8(const Line& text) {
    const auto size = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), needed, nullptr, nullptr);
    return result;
}

}  // namespace

std::string list_type_library(const std::wstring& file) {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.put()));
    Line text = library_line(library.get());
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> type;
        check(library->GetTypeInfo(i, type.put()));
        text += type_lines(type);
    }
    return utf8(text);
}

}  // namespace tools
