#include "server/registry_image.h"

#include <utility>

namespace server {
namespace {

// The longest name that a value or a key can have, with its end.
constexpr DWORD name_room = 16384;

std::vector<std::wstring> names_of_keys(HKEY key) {
    std::vector<std::wstring> names;
    std::vector<wchar_t> name(name_room);
    for (DWORD i = 0;; ++i) {
        DWORD length = name_room;
        const LSTATUS status =
            RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) return names;
        check_status(status);
        names.emplace_back(name.data(), length);
    }
}

}  // namespace

KeyImage::KeyImage(HKEY parent, std::wstring path) : parent_(parent), path_(std::move(path)) {
    if (const KeyHandle key = find_key(parent_, path_)) content_ = read(key.get());
}

KeyImage::Content KeyImage::read(HKEY key) {
    Content content{read_values(key), names_of_keys(key), {}};
    for (const std::wstring& name : content.names)
        content.keys.push_back(read(find_key(key, name).get()));
    return content;
}

std::vector<KeyImage::Value> KeyImage::read_values(HKEY key) {
    DWORD longest = 0;
    check_status(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, &longest, nullptr, nullptr));
    std::vector<Value> values;
    std::vector<wchar_t> name(name_room);
    for (DWORD i = 0;; ++i) {
        Value value{{}, REG_NONE, std::vector<BYTE>(longest)};
        DWORD length = name_room;
        DWORD size = longest;
        const LSTATUS status = RegEnumValueW(key, i, name.data(), &length, nullptr, &value.type,
                                             value.data.data(), &size);
        if (status == ERROR_NO_MORE_ITEMS) return values;
        check_status(status);
        value.name.assign(name.data(), length);
        value.data.resize(size);
        values.push_back(std::move(value));
    }
}

void KeyImage::write(HKEY key, const Content& content) {
    for (const Value& value : content.values)
        check_status(RegSetValueExW(key, value.name.c_str(), 0, value.type, value.data.data(),
                                    static_cast<DWORD>(value.data.size())));
    for (std::size_t i = 0; i < content.keys.size(); ++i)
        write(RegistryKey(key, content.names[i]).get(), content.keys[i]);
}

void KeyImage::restore() const noexcept {
    remove_tree(parent_, path_);
    if (!content_) return;
    try {
        write(RegistryKey(parent_, path_).get(), *content_);
    } catch (...) {
        // The caller has the failure that it restores after.
    }
}

}  // namespace server
