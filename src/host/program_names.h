// Programmatic names of the host's classes that the component creates.
#pragma once

namespace tessera::program_names {

inline constexpr wchar_t service[] = L"Kelos.Service";
inline constexpr wchar_t script_engine[] = L"KelosScript.Engine";
inline constexpr wchar_t column_definition[] = L"KelosQuery.QColumnDef";
inline constexpr wchar_t property_constant[] = L"KelosQuery.PropertyConstant";
inline constexpr wchar_t byte_compressor[] = L"Kelos.ByteCompressor";
inline constexpr wchar_t byte_text_encoder[] = L"Kelos.ByteTextEncoder";
inline constexpr wchar_t standard_controls[] = L"Kelos.StandardControls";
inline constexpr wchar_t wpf_bridge[] = L"Kelos.WpfBridge";

}  // namespace tessera::program_names
