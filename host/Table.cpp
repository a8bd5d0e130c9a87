#include "Table.h"

#include <algorithm>
#include <string>
#include <Corrade/Containers/StringStl.h>

namespace OrrelinEngine { namespace Host {

namespace {

constexpr std::size_t Gap = 2;
constexpr std::size_t MinTextWidth = 8;
constexpr std::size_t MinBarWidth = 10;
constexpr std::size_t MaxBarWidth = 30;

/* Width of the table if no column is wider than the limit */
std::size_t totalWidth(
    const std::vector<std::size_t>& widths, std::size_t limit) {
    std::size_t out = Gap * (widths.size() - 1);
    for(const std::size_t width: widths)
        out += std::min(width, limit);
    return out;
}

std::string bar(double share, std::size_t width) {
    /* Rounded down, so that a full bar means that all is there */
    const std::size_t full = std::size_t(share * double(width));
    std::string out;
    for(std::size_t i = 0; i != width; ++i)
        out += i < full ? "█" : "░";
    return out;
}

}

Table::Table(std::initializer_list<Column> columns): _columns{columns} {
    std::vector<Cell> titles;
    for(const Column& column: columns)
        titles.push_back({column.title, Style::Bold});
    _rows.push_back(std::move(titles));
}

void Table::add(std::vector<Cell>&& row) {
    for(Cell& cell: row)
        cell.text = oneLine(cell.text);
    _rows.push_back(std::move(row));
}

std::vector<std::size_t> Table::widths() const {
    std::vector<std::size_t> out(_columns.size());
    for(const std::vector<Cell>& row: _rows)
        for(std::size_t i = 0; i != row.size(); ++i)
            out[i] = std::max(out[i], displayWidth(row[i].text));

    const std::size_t available = terminal().width;
    for(std::size_t i = 0; i != out.size(); ++i) {
        if(_columns[i].kind != ColumnKind::Bar)
            continue;
        const std::size_t used = totalWidth(out, ~std::size_t{}) - out[i];
        out[i] = std::clamp(
            available - std::min(available, used), MinBarWidth, MaxBarWidth);
    }

    if(!terminal().isNarrow)
        return out;
    /* The widest columns give, all to the same width */
    std::size_t limit = std::min(*std::max_element(out.begin(), out.end()),
        std::max(available, MinTextWidth));
    while(limit > MinTextWidth && totalWidth(out, limit) > available)
        --limit;
    for(std::size_t& width: out)
        width = std::min(width, limit);
    return out;
}

void Table::printRow(const std::vector<Cell>& row,
    const std::vector<std::size_t>& widths) const {
    Line line;
    /* Spaces before the next cell, so that none are at the end of the line */
    std::size_t spaces = 0;
    for(std::size_t i = 0; i != row.size(); ++i) {
        const ColumnKind kind = _columns[i].kind;
        const Containers::String text =
            kind == ColumnKind::Bar && &row != &_rows.front()
            ? Containers::String{bar(row[i].share, widths[i])}
            : shortened(row[i].text, widths[i]);
        const std::size_t padding = widths[i] - displayWidth(text);
        if(kind == ColumnKind::Number)
            spaces += padding;
        if(!text.isEmpty()) {
            line.add(std::string(spaces, ' ')).add(text, row[i].style);
            spaces = 0;
        }
        if(kind != ColumnKind::Number)
            spaces += padding;
        spaces += Gap;
    }
    line.print();
}

void Table::print() const {
    const std::vector<std::size_t> w = widths();
    for(const std::vector<Cell>& row: _rows)
        printRow(row, w);
}

}}
