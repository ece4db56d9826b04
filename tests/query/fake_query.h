// Queries of plain data behind the host contract, which count their calls and fail on request.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "kelos.h"

namespace fake {

struct Column {
    std::wstring name;
    bool relevant = true;
    long lcid = 1031;
    std::wstring set_name;
};

struct Cell {
    std::wstring text;
    bool missing = false;
    automation::ComPtr<IKelosObject> object;
    automation::Variant value;  // the text when Empty
};

struct Query;

struct Row {
    std::vector<Cell> cells;
    std::shared_ptr<Query> nested;
};

struct Query {
    std::wstring name;
    std::vector<Column> columns;
    std::vector<Row> rows;
    bool has_table = true;
    bool has_columns = true;
};

// Calls by member name, of all fakes of the program.
struct Calls {
    std::map<std::string, long> counts;
    std::string failing;  // the member that fails
    long count(const std::string& member) { return counts[member]; }
};
Calls& calls();
inline constexpr HRESULT failure = static_cast<HRESULT>(0x80041234L);

automation::ComPtr<IKelosQuery> make_query(std::shared_ptr<Query> query);
// An object that belongs to a project without being below it: its path is its type and identifier.
automation::ComPtr<IKelosObject> make_object(const wchar_t* uid, long type);
automation::ComPtr<IKelosWorkset> make_workset(long lcid);

// A query with these columns and one row per list of texts; "-" is a missing cell.
std::shared_ptr<Query> query(const wchar_t* name, std::vector<std::wstring> columns,
                             std::vector<std::vector<std::wstring>> rows = {});
// The row (from 1) of the query, so that something can be nested in it.
Row& row(const std::shared_ptr<Query>& query, std::size_t number);

}  // namespace fake
