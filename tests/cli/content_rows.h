// Content documents written down in short, and what reports say of them.
#pragma once

#include <initializer_list>
#include <sstream>
#include <string>

namespace test {

// What a "Content" element says; the rest of it is a pump's description, in both directions.
struct ContentRow {
    std::string pointer = "S!A1";
    std::string property = "Description";
    std::string text = "text";
    std::string type = "String";
    std::string direction = "IO";
    std::string flags = {};  // further items of "Value"
    std::string unit = {};
    std::string parameter = {};
    std::string uid = "P1";
    std::string path = "Pump";
    int system_type = 120;
    std::string list = {};  // in place of the one value item
    int presentation = 0;
};

inline std::string item(const std::string& name, const std::string& type, const std::string& data) {
    return "<" + name + " Type=\"" + type + "\" Data=\"" + data + "\"/>";
}

inline std::string value_item(const std::string& type, const std::string& value,
                              const std::string& display) {
    return "<ValueItem Version=\"1\">" + item("Value", type, value) +
           item("DisplayValue", "String", display) + "</ValueItem>";
}

inline std::string content(const ContentRow& row) {
    std::string items = row.list;
    if (items.empty() && row.flags.find("KelosValue") == std::string::npos)
        items = value_item(row.type, row.text, row.text);
    return "<Content Version=\"1\"><KelosObject Version=\"1\">" +
           item("SystemUID", "String", row.uid) +
           item("SystemType", "Long", std::to_string(row.system_type)) +
           item("PathFullName", "String", row.path) + "</KelosObject><Property Version=\"2\">" +
           item("GetName", "String", row.property) + item("GetParameter", "String", row.parameter) +
           item("PhysUnit", "String", row.unit) + "</Property><Value Version=\"1\">" +
           item("IOMode", "String", row.direction) + row.flags +
           "</Value><Document Version=\"1\">" + item("Pointer", "String", row.pointer) +
           "</Document><ValueItems Version=\"1\">" + items + "</ValueItems>" +
           item("Presentation", "Long", std::to_string(row.presentation)) + "</Content>";
}

inline std::string document(std::string contents) {
    return "<Contents Version=\"1\">" + contents + "</Contents>";
}

}  // namespace test
