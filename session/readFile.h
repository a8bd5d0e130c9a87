#ifndef Orrelin_session_readFile_h
#define Orrelin_session_readFile_h

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Reads a regular file that is smaller than 4 GiB. Refuses a pipe instead of
   waiting for somebody to write into it. Returns the fault, or nothing. */
Containers::StringView readFile(
    Containers::StringView file, Containers::String& content);

}

#endif
