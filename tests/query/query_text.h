// Queries that a test puts together, as the text of a project file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/literal_project.h"

namespace test {

struct Column {
    std::wstring name;
    bool relevant = true;
    long lcid = 0;
    std::wstring property = L"DisplayValue";
};

// The text of a cell that shows its column's property.
constexpr wchar_t evaluated[] = L"*";

struct Cell {
    std::wstring text;
    std::wstring more;  // further attributes of the file's element
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

    // The row with the number (from 1).
    Row& row(std::size_t number) { return rows.at(number - 1); }
    Cell& cell(std::size_t number, std::size_t column) { return row(number).cells.at(column - 1); }
    std::wstring xml() const;
};

// A query with these columns and one row per list of texts; "-" is a missing cell.
inline std::shared_ptr<Query> query(const wchar_t* name, std::vector<std::wstring> columns,
                                    std::vector<std::vector<std::wstring>> rows = {}) {
    auto result = std::make_shared<Query>();
    result->name = name;
    for (std::wstring& column : columns)
        result->columns.emplace_back().name = std::move(column);
    for (std::vector<std::wstring>& texts : rows) {
        Row& row = result->rows.emplace_back();
        for (std::wstring& text : texts)
            row.cells.push_back({text, text == L"-" ? L" missing='yes'" : L""});
    }
    return result;
}

// A query with this many rows and one column, "1" to its number.
inline std::shared_ptr<Query> long_query(int rows) {
    std::vector<std::vector<std::wstring>> texts;
    for (int i = 1; i <= rows; ++i)
        texts.push_back({std::to_wstring(i)});
    return query(L"Q", {L"N"}, texts);
}

// A query of one row that nests a query of one row and so on, this many levels below the top.
inline std::shared_ptr<Query> deep_query(int levels) {
    const std::wstring name = L"Q" + std::to_wstring(levels);
    auto result = query(name.c_str(), {L"C"}, {{name}});
    if (levels > 0) result->row(1).nested = deep_query(levels - 1);
    return result;
}

inline std::string utf8(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, text.data(), size, bytes.data(), size * 3, nullptr, nullptr)));
    return bytes;
}

inline std::wstring attribute_text(std::wstring_view text) {
    std::wstring result;
    for (const wchar_t character : text) {
        const bool plain =
            character >= L' ' && character != L'&' && character != L'\'' && character != L'<';
        result += plain ? std::wstring(1, character)
                        : L"&#" + std::to_wstring(unsigned{character}) + L";";
    }
    return result;
}

inline std::wstring text_of(const Cell& cell) {
    return L" text='" + attribute_text(cell.text) + L"'";
}

inline std::wstring Query::xml() const {
    std::wstring result = L"<query name='" + name + L"'>";
    for (const Column& column : columns)
        result += L"<column name='" + column.name + L"' property='" + column.property +
                  L"' heading='" + attribute_text(L"Heading " + column.name) + L"' lcid='" +
                  std::to_wstring(column.lcid) + L"' relevant='" +
                  (column.relevant ? L"yes" : L"no") + L"'/>";
    for (const Row& row : rows) {
        result += L"<row>";
        for (const Cell& cell : row.cells)
            result += L"<cell" + (cell.text == evaluated ? L"" : text_of(cell)) + cell.more + L"/>";
        result += (row.nested ? row.nested->xml() : L"") + L"</row>";
    }
    return result + L"</query>";
}

}  // namespace test
