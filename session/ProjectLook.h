#ifndef Orrelin_session_ProjectLook_h
#define Orrelin_session_ProjectLook_h

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* How a project file spells what it says, by default as a new one does. Saved
   in the same way, a file differs only in the lines that were edited. */
struct ProjectLook {
    /* Around the root object, such as a byte order mark and a line end */
    Containers::String before;
    Containers::String after = "\n";

    /* Empty if all is in one line */
    Containers::String lineEnd = "\n";
    /* Of each level */
    Containers::String indent = "    ";
    Containers::String colon = ": ";
    /* Between what is in the same line */
    Containers::String comma = ", ";

    /* Arrays of neither arrays nor objects are in one line */
    bool oneLineArrays = false;
    /* Empty objects and arrays take two lines */
    bool openEmpty = false;

    /* All but ASCII is escaped */
    bool ascii = false;
    bool lowerCaseDigits = false;
};

/* The look of a JSON text whose root is an object. Each trait is that of the
   first place that shows it; only the beginning of a large text is searched. */
ProjectLook lookOf(Containers::StringView json);

}

#endif
