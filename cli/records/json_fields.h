// What the reports for programs have in common.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/records/content_records.h"
#include "text/utf8.h"

namespace cli {

// Fields stay in the order in which they are set.
using Json = nlohmann::ordered_json;

inline std::string json_text(std::u16string_view text) {
    return tessera::to_utf8(text);
}

// Which cell it is, and whose value.
inline Json place_fields(const ContentRecord& record) {
    return {{"row", record.number},
            {"pointer", json_text(record.pointer.text)},
            {"sheet", json_text(record.pointer.sheet)},
            {"cell", json_text(record.pointer.cell_text)},
            {"object", json_text(record.object.path)},
            {"property", json_text(property_text(record.property))}};
}

// The whole report, with a line end.
inline std::u16string report_text(const Json& report) {
    return tessera::from_utf8(report.dump(2)).value_or(u"") + u"\n";
}

}  // namespace cli
