#ifndef Orrelin_session_ProjectLook_h
#define Orrelin_session_ProjectLook_h

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* The layout of a project file, by default that of a new one. A file is saved
   with the layout that it was opened with, so that only edited lines differ and
   version control shows nothing else. */
struct ProjectLook {
    /* Text around the root object, such as a byte order mark and a line end */
    Containers::String before;
    Containers::String after = "\n";

    /* Empty if the root object is in one line */
    Containers::String lineEnd = "\n";
    /* Of one level */
    Containers::String indent = "    ";
    Containers::String colon = ": ";
    /* Between items in one line */
    Containers::String comma = ", ";

    /* Arrays that hold neither arrays nor objects take one line */
    bool oneLineArrays = false;
    /* Empty objects and arrays take two lines */
    bool openEmpty = false;

    /* All characters but ASCII are escaped */
    bool ascii = false;
    /* The digits of escapes are 0 to f, not 0 to F */
    bool lowerCaseDigits = false;
};

/* The look of a JSON text whose root is an object. The first place that shows
   a trait decides for the whole file. Of a large text, most traits are looked
   for in the beginning only. */
ProjectLook lookOf(Containers::StringView json);

/* Writes a project document with given look, but copies from the text what
   means the same there, so that it keeps spelling and layout. It may be any
   text; the less it's like the document, the less is copied. Sets lost like
   writeProject(). Returns false if the text isn't JSON, or the document can't
   be written, and then out is of no use. */
bool updateProject(Containers::StringView text, const JsonValue& document,
    const ProjectLook& look, Containers::Array<char>& out, std::size_t& lost,
    unsigned int maxDepth);

}

#endif
