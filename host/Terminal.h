#ifndef Orrelin_host_Terminal_h
#define Orrelin_host_Terminal_h

#include <cstdint>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* What the standard output is */
struct Terminal {
    /* Whether what's wider is to be cut: on a terminal, or if the environment
       says COLUMNS */
    bool isNarrow;
    bool isColored;
    /* In columns; what's usual if nobody says */
    std::size_t width;
};

const Terminal& terminal();

enum class Style : std::uint8_t { Plain, Bold, Dim, Good, Bad };

/* The text in a style, or as it is if the output isn't to be colored */
Containers::String styled(Containers::StringView text, Style style);

/* Columns that the text takes on a terminal. Combining characters take none,
   those of East Asian scripts and emoji two. */
std::size_t displayWidth(Containers::StringView text);

/* The text on one line. Nothing in it can move the cursor or change colors. */
Containers::String oneLine(Containers::StringView text);

/* The text cut to a width, with an ellipsis where it was */
Containers::String shortened(Containers::StringView text, std::size_t width);

/* "1 term", "2 terms" */
Containers::String counted(std::size_t count, Containers::StringView noun);

/* Prints a line to the standard output */
void printLine(Containers::StringView line = "");

}}

#endif
