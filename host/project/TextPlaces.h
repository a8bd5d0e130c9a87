#ifndef Orrelin_host_project_TextPlaces_h
#define Orrelin_host_project_TextPlaces_h

#include <functional>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* In a file, counted from 1. Columns are characters. */
struct Place {
    std::size_t line = 1;
    std::size_t column = 1;
};

/* Moves a place on with the text from one position to another one, which it
   returns */
const char* countPlace(const char* from, const char* to, Place& place);

/* Calls the function with each text in the object "translation" of a language
   file and the place where it begins, up to the first error in the file. The
   parser of the import doesn't know places, so this reads the content anew. */
void forEachPlace(const Containers::String& content,
    const std::function<void(Containers::StringView key,
        Containers::StringView text, const Place& place)>& function);

}}

#endif
