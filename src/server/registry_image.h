// What keys of the registry held, to be put back when a registration fails.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "server/registry_key.h"

namespace server {

// A key with all that is below it.
class KeyImage {
  public:
    // The parent stays open as long as the image. Throws when the key cannot be read.
    KeyImage(HKEY parent, std::wstring path);

    // Makes the key what it was, or takes it out when it was not there. What cannot be written
    // stays as it is.
    void restore() const noexcept;

  private:
    struct Value {
        std::wstring name;
        DWORD type;
        std::vector<BYTE> data;
    };
    struct Content {
        std::vector<Value> values;
        std::vector<std::wstring> names;  // of the keys below
        std::vector<Content> keys;
    };

    static Content read(HKEY key);
    static std::vector<Value> read_values(HKEY key);
    static void write(HKEY key, const Content& content);

    HKEY parent_;
    std::wstring path_;
    std::optional<Content> content_;
};

}  // namespace server
