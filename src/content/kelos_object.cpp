#include "content/kelos_object.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::ComPtr;
using automation::get;
using namespace automation::literals;

namespace {

constexpr RecordClass record_class{L"Tessera.KelosObject", L"KelosObject"_bstr, L"1"_bstr};

constexpr MemberName member(const wchar_t* label) {
    return {record_class.source, label};
}

constexpr MemberName get_object = member(L"Property Get 'Object'");

constexpr BstrView item_uid = L"SystemUID"_bstr;
constexpr BstrView item_type = L"SystemType"_bstr;
constexpr BstrView item_path = L"PathFullName"_bstr;

}  // namespace

KelosObject::KelosObject() noexcept : Record(record_class) {}

ComPtr<IKelosObject> KelosObject::object() noexcept {
    guarded(get_object, [&] {
        if (!workset_ || object_ || system_uid_.empty() || system_type_ <= 0) return;
        load_by_type_and_uid();
        if (!object_ && !path_full_name_.empty()) find_by_path();
    });
    return object_;
}

void KelosObject::set_object(IKelosObject* object, const wchar_t* label) noexcept {
    guarded(member(label), [&] {
        object_ = object;
        read_identity();
    });
}

STDMETHODIMP KelosObject::get_Object(IKelosObject** Result) {
    return answer(Result, get_object, [&] { return object(); });
}

STDMETHODIMP KelosObject::put_Object(IKelosObject* NewValue) {
    set_object(NewValue);
    return S_OK;
}

STDMETHODIMP KelosObject::putref_Object(IKelosObject* NewValue) {
    set_object(NewValue, L"Property Set 'Object'");
    return S_OK;
}

STDMETHODIMP KelosObject::get_SystemUID(BSTR* Result) {
    return give(Result, system_uid_, member(L"Property Get 'SystemUID'"));
}

STDMETHODIMP KelosObject::put_SystemUID(BSTR NewValue) {
    return keep(system_uid_, NewValue, member(L"Property Let 'SystemUID'"));
}

STDMETHODIMP KelosObject::get_PathFullName(BSTR* Result) {
    return give(Result, path_full_name_, member(L"Property Get 'PathFullName'"));
}

STDMETHODIMP KelosObject::put_PathFullName(BSTR NewValue) {
    return keep(path_full_name_, NewValue, member(L"Property Let 'PathFullName'"));
}

STDMETHODIMP KelosObject::get_SystemType(long* Result) {
    return give(Result, system_type_, member(L"Property Get 'SystemType'"));
}

STDMETHODIMP KelosObject::put_SystemType(long NewValue) {
    return keep(system_type_, NewValue);
}

void KelosObject::write_items(ArchiveNode& title, ArchiveNode&) {
    write_text(title, item_uid, system_uid_);
    write_long(title, item_type, system_type_);
    write_text(title, item_path, path_full_name_);
}

// Unlike `Object` get, reading needs no positive type and tries the path whenever there is a
// project.
void KelosObject::read_items(const ArchiveReader& title, std::int16_t) {
    object_.reset();
    system_uid_ = read_text(title, item_uid);
    system_type_ = read_long(title, item_type);
    path_full_name_ = read_text(title, item_path);
    if (!workset_ || system_uid_.empty()) return;
    load_by_type_and_uid();
    if (!object_) find_by_path();
}

void KelosObject::read_identity() {
    if (!object_) {
        system_uid_ = Bstr();
        path_full_name_ = Bstr();
        system_type_ = 0;
        return;
    }
    system_uid_ = get(object_, &IKelosObject::get_SystemUID);
    system_type_ = get(object_, &IKelosObject::get_SystemType);
    const auto project = get(object_, &IKelosObject::get_Project);
    path_full_name_ = get(object_, &IKelosObject::get_PathFullName, project.get());
}

// The host gets texts of its own: it may set this record's anew while it works with them.
void KelosObject::load_by_type_and_uid() {
    const Bstr uid = system_uid_;
    object_ = get(workset_, &IKelosWorkset::LoadObject, system_type_, uid.get());
}

void KelosObject::find_by_path() {
    const auto project = get(workset_, &IKelosWorkset::get_CurrentProject);
    if (!project) return;
    const Bstr path = path_full_name_;
    object_ = get(project, &IKelosProject::FindByPathFullName, path.get());
}

}  // namespace tessera
