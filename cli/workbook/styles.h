// The styles of a workbook's cells: each that is asked for is written once.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "cli/workbook/workbook_plan.h"

namespace cli {

struct CellStyle {
    CellRole role = CellRole::output;
    std::u16string format;  // code of the number format
    CellContent::Kind kind = CellContent::Kind::blank;
    bool is_wrapped = false;
    bool is_quoted = false;  // typed in again, the text stays a text

    bool operator<(const CellStyle& other) const { return fields() < other.fields(); }
    std::tuple<CellRole, const std::u16string&, CellContent::Kind, bool, bool> fields() const {
        return {role, format, kind, is_wrapped, is_quoted};
    }
};

// Texts that are wider than this many characters are wrapped.
inline constexpr std::size_t widest_column = 60;

CellStyle style_of(const PlannedCell& cell);

// True for formats that say how a number is shown.
bool is_number_format(std::u16string_view code) noexcept;

// A style sheet that exists and gets what is asked for behind what it has.
class StyleSheet {
  public:
    // The style sheet's text; the plainest one that there is without it.
    explicit StyleSheet(std::string_view text = plain_styles);

    // The index by which cells refer to the style.
    std::size_t index_of(const CellStyle& style);
    // The style with this index, made to show numbers in the format when it says nothing of them.
    std::size_t showing(std::size_t style, const std::u16string& format);
    std::string text() const;

  private:
    static const std::string_view plain_styles;

    std::int64_t format_id(const std::u16string& code);
    void add(std::string element, std::size_t& index);
    std::string own_style(const CellStyle& style);

    std::string text_;
    std::vector<std::string> cell_styles_;  // those that exist
    std::size_t fonts_ = 0;                 // how many exist
    std::size_t fills_ = 0;
    std::size_t borders_ = 0;
    std::int64_t next_format_;
    std::map<CellStyle, std::size_t> known_;
    std::map<std::pair<std::size_t, std::u16string>, std::size_t> shown_;
    std::map<std::u16string, std::int64_t> formats_;
    std::vector<std::string> added_;
};

}  // namespace cli
