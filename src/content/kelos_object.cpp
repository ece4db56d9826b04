#include "content/kelos_object.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.KelosObject", label};
}

constexpr wchar_t item_uid[] = L"SystemUID";
constexpr wchar_t item_type[] = L"SystemType";
constexpr wchar_t item_path[] = L"PathFullName";

}  // namespace

STDMETHODIMP KelosObject::get_Object(IKelosObject** Result) {
    return trapped(Result, member(L"Property Get 'Object'"), [&](auto& result) {
        if (workset_ && !object_ && !system_uid_.empty() && system_type_ > 0) {
            load_by_type_and_uid();
            if (!object_ && !path_full_name_.empty()) find_by_path();
        }
        result = object_;
    });
}

STDMETHODIMP KelosObject::put_Object(IKelosObject* NewValue) {
    return trapped(member(L"Property Let 'Object'"), [&] { store(NewValue); });
}

STDMETHODIMP KelosObject::putref_Object(IKelosObject* NewValue) {
    return trapped(member(L"Property Set 'Object'"), [&] { store(NewValue); });
}

STDMETHODIMP KelosObject::get_SystemUID(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'SystemUID'"),
                   [&](Bstr& result) { result = system_uid_; });
}

STDMETHODIMP KelosObject::put_SystemUID(BSTR NewValue) {
    return trapped(member(L"Property Let 'SystemUID'"),
                   [&] { system_uid_ = Bstr(view_of(NewValue)); });
}

STDMETHODIMP KelosObject::get_PathFullName(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'PathFullName'"),
                   [&](Bstr& result) { result = path_full_name_; });
}

STDMETHODIMP KelosObject::put_PathFullName(BSTR NewValue) {
    return trapped(member(L"Property Let 'PathFullName'"),
                   [&] { path_full_name_ = Bstr(view_of(NewValue)); });
}

STDMETHODIMP KelosObject::get_SystemType(long* Result) {
    return trapped(Result, member(L"Property Get 'SystemType'"),
                   [&](long& result) { result = system_type_; });
}

STDMETHODIMP KelosObject::put_SystemType(long NewValue) {
    return trapped(member(L"Property Let 'SystemType'"), [&] { system_type_ = NewValue; });
}

void KelosObject::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_uid, system_uid_);
    write_long(title, item_type, system_type_);
    write_text(title, item_path, path_full_name_);
}

// Unlike `Object` get, reading needs no positive type and tries the path whenever there is a
// project.
void KelosObject::read_items(const dom::Node& title, std::int16_t) {
    object_.reset();
    system_uid_ = read_text(title, item_uid);
    system_type_ = read_long(title, item_type);
    path_full_name_ = read_text(title, item_path);
    if (!workset_ || system_uid_.empty()) return;
    load_by_type_and_uid();
    if (!object_) find_by_path();
}

void KelosObject::store(IKelosObject* object) {
    object_ = object;
    if (!object) {
        system_uid_ = Bstr();
        path_full_name_ = Bstr();
        system_type_ = 0;
        return;
    }
    system_uid_ = get(object, &IKelosObject::get_SystemUID);
    system_type_ = get(object, &IKelosObject::get_SystemType);
    const auto project = get(object, &IKelosObject::get_Project);
    path_full_name_ = get(object, &IKelosObject::get_PathFullName, project.get());
}

void KelosObject::load_by_type_and_uid() {
    object_ = get(workset_, &IKelosWorkset::LoadObject, system_type_, system_uid_.get());
}

void KelosObject::find_by_path() {
    const auto project = get(workset_, &IKelosWorkset::get_CurrentProject);
    if (!project) return;
    object_ = get(project, &IKelosProject::FindByPathFullName, path_full_name_.get());
}

}  // namespace tessera
