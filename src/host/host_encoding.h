// The current layout of encoded texts: made by the host's byte compressor and text encoder.
#pragma once

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// The two host objects that encoding takes, each created when it is first needed.
class HostEncoding {
  public:
    // Creates what is missing of both; throws when the host cannot.
    void create();

    // Prefix, marker and the encoder's text of the compressed characters (two bytes each, low byte
    // first).
    automation::Bstr encode(std::wstring_view text);
    // The characters behind what follows prefix and marker.
    automation::Bstr decode(std::wstring_view payload);

  private:
    const automation::ComPtr<IKelosByteCompressor>& compressor();
    const automation::ComPtr<IKelosByteTextEncoder>& encoder();

    automation::ComPtr<IKelosByteCompressor> compressor_;
    automation::ComPtr<IKelosByteTextEncoder> encoder_;
};

}  // namespace tessera
