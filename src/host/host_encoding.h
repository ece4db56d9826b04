// The current layout of encoded texts: made by the host's byte compressor and text encoder.
#pragma once

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// The two host objects that encoding takes.
class HostEncoding {
  public:
    // Creates them; throws when the host cannot.
    HostEncoding();

    // Prefix, marker and the encoder's text of the compressed characters (two bytes each, low byte
    // first).
    automation::Bstr encode(std::wstring_view text) const;
    // The characters behind what follows prefix and marker.
    automation::Bstr decode(std::wstring_view payload) const;

  private:
    automation::ComPtr<IKelosByteCompressor> compressor_;
    automation::ComPtr<IKelosByteTextEncoder> encoder_;
};

}  // namespace tessera
