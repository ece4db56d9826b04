#include "hostkit/classes.h"

#include "hostkit.h"
#include "server/class_table.h"

namespace server {

std::span<const ClassEntry> module_classes() noexcept {
    static const ClassEntry classes[] = {
        {L"Kelos.HostKit", L"Kelos host kit", __uuidof(::HostKit), hostkit::create_host_kit},
        {L"Kelos.Service", L"Kelos host service", __uuidof(::Service), hostkit::create_service},
        {L"KelosScript.Engine", L"Kelos script engine", __uuidof(::ScriptEngine),
         hostkit::create_script_engine},
        {L"KelosQuery.QColumnDef", L"Kelos query column definition", __uuidof(::QColumnDef),
         hostkit::create_column_definition},
        {L"KelosQuery.PropertyConstant", L"Kelos property constant", __uuidof(::PropertyConstant),
         hostkit::create_property_constant},
        {L"Kelos.ByteCompressor", L"Kelos byte compressor", __uuidof(::ByteCompressor),
         hostkit::create_byte_compressor},
        {L"Kelos.ByteTextEncoder", L"Kelos byte-to-text encoder", __uuidof(::ByteTextEncoder),
         hostkit::create_byte_text_encoder},
        {L"Kelos.StandardControls", L"Kelos standard controls", __uuidof(::StandardControls),
         hostkit::create_standard_controls},
        {L"Kelos.WpfBridge", L"Kelos presentation bridge", __uuidof(::WpfBridge),
         hostkit::create_wpf_bridge},
        {L"Kelos.TextBox", L"Kelos text box", __uuidof(::TextBox), hostkit::create_text_box},
        {L"Kelos.ScriptControl", L"Kelos rich script control", __uuidof(::ScriptControl),
         hostkit::create_script_control},
    };
    return classes;
}

}  // namespace server
