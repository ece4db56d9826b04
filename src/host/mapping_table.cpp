#include "host/mapping_table.h"

#include "automation/dispatch.h"
#include "host/error_boundary.h"

namespace tessera {

using automation::ComPtr;
using automation::get;

namespace {

ComPtr<IKelosMappingTable> mapping_table_of(const ComPtr<IKelosObject>& object) noexcept {
    try {
        return automation::object_as<IKelosMappingTable>(
            automation::get_property(object.get(), L"XObj"));
    } catch (...) {
        return {};
    }
}

ComPtr<IKelosObject> object_at(const ComPtr<IKelosObjects>& objects, long index) noexcept {
    ComPtr<IKelosObject> object;
    if (FAILED(objects->get_Item(index, object.put()))) object.reset();
    return object;
}

}  // namespace

FoundMappingTable find_mapping_table(IKelosDocument* document, const wchar_t* source) noexcept {
    FoundMappingTable found;
    guarded({source, set_mapping_table_label}, [&] {
        const auto objects = get(document, &IKelosDocument::get_Objects);
        const long count = get(objects, &IKelosObjects::get_Count);
        for (long i = 1; i <= count && !found.table; ++i) {
            found.object = object_at(objects, i);
            if (found.object) found.table = mapping_table_of(found.object);
        }
        if (!found.table) found.object.reset();
    });
    return found;
}

}  // namespace tessera
