#ifndef Orrelin_host_terminal_Table_h
#define Orrelin_host_terminal_Table_h

#include <functional>
#include <initializer_list>
#include <vector>
#include <Corrade/Containers/String.h>

#include "Terminal.h"

namespace OrrelinEngine { namespace Host {

/* How a column shows its cells */
enum class ColumnKind : std::uint8_t {
    Text,
    /* Aligned to the right */
    Number,
    /* A bar in the width that the other columns leave */
    Bar
};

struct Column {
    Containers::StringView title;
    ColumnKind kind = ColumnKind::Text;
};

struct Cell {
    Containers::String text;
    Style style = Style::Plain;
    /* How much of the bar is full, from 0 to 1 */
    double share = 0.0;
};

typedef std::vector<Cell> Row;

/* Aligned columns, cut to the width of the terminal if there is one */
class Table {
public:
    explicit Table(std::initializer_list<Column> columns);

    /* Add a row of as many cells as there are columns */
    void add(Row&& row);

    void print() const;

    /* For so many rows that they shouldn't be kept: prints those that the
       source passes on, which is called twice */
    typedef std::function<void(Row&&)> RowFunction;
    void print(const std::function<void(const RowFunction&)>& source) const;

private:
    std::vector<std::size_t> fitted(std::vector<std::size_t> widths) const;
    void printRow(const Row& row, const std::vector<std::size_t>& widths) const;

    std::vector<Column> _columns;
    Row _titles;
    std::vector<Row> _rows;
};

}}

#endif
