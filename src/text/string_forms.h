// The two forms of line breaks: host text has CR LF, office text (spreadsheet cells) has LF.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

// Host form: every LF becomes CR LF. A CR LF of the input comes out as CR CR LF: there is no check
// for pairs, and stored texts rely on that.
std::u16string vb_string(std::u16string_view office_text);

// Office form: every CR LF becomes LF, then every LF CR becomes LF. A lone CR stays.
std::u16string office_string(std::u16string_view vb_text);

}  // namespace tessera
