#include "Table.h"

#include <algorithm>
#include <string>
#include <Corrade/Containers/StringStl.h>

namespace OrrelinEngine { namespace Host {

namespace {

constexpr std::size_t Gap = 2;
constexpr std::size_t MinTextWidth = 8;
constexpr std::size_t MinBarWidth = 8;
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
    for(const Column& column: columns)
        _titles.push_back({column.title, Style::Bold});
}

void Table::add(Row&& row) {
    _rows.push_back(std::move(row));
}

void Table::print() const {
    print([this](const RowFunction& pass) {
        for(const Row& row: _rows)
            pass(Row{row});
    });
}

void Table::print(const std::function<void(const RowFunction&)>& source) const {
    std::vector<std::size_t> widths(_columns.size());
    const auto measure = [&](Row&& row) {
        for(std::size_t i = 0; i != row.size(); ++i)
            widths[i] = std::max(
                widths[i], displayWidth(oneLine(std::move(row[i].text))));
    };
    measure(Row{_titles});
    source(measure);
    widths = fitted(std::move(widths));

    printRow(_titles, widths);
    source([&](Row&& row) {
        for(std::size_t i = 0; i != row.size(); ++i)
            row[i].text = _columns[i].kind == ColumnKind::Bar
                ? Containers::String{bar(row[i].share, widths[i])}
                : oneLine(std::move(row[i].text));
        printRow(row, widths);
    });
}

/* To what is there */
std::vector<std::size_t> Table::fitted(std::vector<std::size_t> widths) const {
    const std::size_t available = terminal().width;
    for(std::size_t i = 0; i != widths.size(); ++i) {
        if(_columns[i].kind != ColumnKind::Bar)
            continue;
        const std::size_t used = totalWidth(widths, ~std::size_t{}) - widths[i];
        widths[i] = std::clamp(
            available - std::min(available, used), MinBarWidth, MaxBarWidth);
    }

    if(!terminal().isNarrow)
        return widths;
    /* The widest columns give, all to the same width */
    std::size_t limit =
        std::min(*std::max_element(widths.begin(), widths.end()),
            std::max(available, MinTextWidth));
    while(limit > MinTextWidth && totalWidth(widths, limit) > available)
        --limit;
    for(std::size_t& width: widths)
        width = std::min(width, limit);
    return widths;
}

void Table::printRow(
    const Row& row, const std::vector<std::size_t>& widths) const {
    Line line;
    /* Spaces before the next cell, so that none are at the end of the line */
    std::size_t spaces = 0;
    for(std::size_t i = 0; i != row.size(); ++i) {
        const ColumnKind kind = _columns[i].kind;
        Containers::String cut;
        Containers::StringView text = row[i].text;
        std::size_t width = displayWidth(text);
        if(width > widths[i]) {
            cut = shortened(text, widths[i]);
            text = cut;
            width = displayWidth(text);
        }
        const std::size_t padding = widths[i] - width;
        if(kind == ColumnKind::Number)
            spaces += padding;
        if(!text.isEmpty()) {
            line.addSpaces(spaces).add(text, row[i].style);
            spaces = 0;
        }
        if(kind != ColumnKind::Number)
            spaces += padding;
        spaces += Gap;
    }
    line.print();
}

}}
