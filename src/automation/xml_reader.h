// The platform's streaming XML reader.
#pragma once

#include "automation/windows_headers.h"

#include <xmllite.h>

#include "automation/com_ptr.h"

namespace automation {

// One for files that nobody vouches for: of any depth, and without document type definitions.
// make_text_stream gives it a text. Throws where there is none.
ComPtr<IXmlReader> create_xml_reader();

}  // namespace automation
