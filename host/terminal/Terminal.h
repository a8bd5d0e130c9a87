#ifndef Orrelin_host_terminal_Terminal_h
#define Orrelin_host_terminal_Terminal_h

#include <cstdint>
#include <string>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Properties of the standard output */
struct Terminal {
    /* Whether to cut wider lines: on a terminal, or if the environment sets
       COLUMNS */
    bool isNarrow;
    bool isColored;
    /* In columns; 80 if unknown */
    std::size_t width;
};

const Terminal& terminal();

enum class Style : std::uint8_t { Plain, Bold, Dim, Good, Bad };

/* Columns that the text takes on a terminal. Combining characters take none,
   those of East Asian scripts and emoji two. */
std::size_t displayWidth(Containers::StringView text);

/* The text on one line. Nothing in it can move the cursor, change colors or
   reverse the order of what is around it: such characters are written as \u and
   four digits. */
Containers::String oneLine(Containers::String text);

/* The text cut to a width, with an ellipsis at the cut */
Containers::String shortened(Containers::StringView text, std::size_t width);

/* "1 term", "2 terms" */
Containers::String counted(std::size_t count, Containers::StringView noun);

/* A line for the standard output. All output goes through here or through the
   functions in Messages.h, which make one line of each text. */
class Line {
public:
    Line& add(Containers::StringView text, Style style = Style::Plain);
    Line& addSpaces(std::size_t count);
    void print() const;

private:
    std::string _line;
};

/* Prints a line of one text */
void printLine(Containers::StringView text = "", Style style = Style::Plain);

/* The same, cut to the width of the terminal if there is one */
void printCut(Containers::StringView text, Style style = Style::Plain);

/* Prints a part of JSON that begins and ends between characters. Characters that
   oneLine() escapes are escaped here as well, which is the same text to who
   reads it as JSON. */
void printJson(Containers::StringView json);

}}

#endif
