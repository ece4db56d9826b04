#include "hostkit/classes.h"

#include "hostkit.h"
#include "hostkit/call_watch.h"
#include "server/class_table.h"

namespace {

// Creating an object is a call of the host, too.
template <server::Factory create>
automation::ComPtr<IUnknown> watched() {
    for (const server::ClassEntry& entry : server::module_classes())
        if (entry.create == &watched<create>) hostkit::note_creation(entry.program_name);
    return create();
}

}  // namespace

namespace server {

std::span<const ClassEntry> module_classes() noexcept {
    static const ClassEntry classes[] = {
        {L"Kelos.HostKit", L"Kelos host kit", __uuidof(::HostKit),
         watched<hostkit::create_host_kit>},
        {L"Kelos.Service", L"Kelos host service", __uuidof(::Service),
         watched<hostkit::create_service>},
        {L"KelosScript.Engine", L"Kelos script engine", __uuidof(::ScriptEngine),
         watched<hostkit::create_script_engine>},
        {L"KelosQuery.QColumnDef", L"Kelos query column definition", __uuidof(::QColumnDef),
         watched<hostkit::create_column_definition>},
        {L"KelosQuery.PropertyConstant", L"Kelos property constant", __uuidof(::PropertyConstant),
         watched<hostkit::create_property_constant>},
        {L"Kelos.ByteCompressor", L"Kelos byte compressor", __uuidof(::ByteCompressor),
         watched<hostkit::create_byte_compressor>},
        {L"Kelos.ByteTextEncoder", L"Kelos byte-to-text encoder", __uuidof(::ByteTextEncoder),
         watched<hostkit::create_byte_text_encoder>},
        {L"Kelos.StandardControls", L"Kelos standard controls", __uuidof(::StandardControls),
         watched<hostkit::create_standard_controls>},
        {L"Kelos.WpfBridge", L"Kelos presentation bridge", __uuidof(::WpfBridge),
         watched<hostkit::create_wpf_bridge>},
        {L"Kelos.TextBox", L"Kelos text box", __uuidof(::TextBox),
         watched<hostkit::create_text_box>},
        {L"Kelos.ScriptControl", L"Kelos rich script control", __uuidof(::ScriptControl),
         watched<hostkit::create_script_control>},
    };
    return classes;
}

}  // namespace server
