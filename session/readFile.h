#ifndef Orrelin_session_readFile_h
#define Orrelin_session_readFile_h

#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Reads a regular file that is smaller than 4 GiB, without waiting for anybody
   to write into it. Returns what is wrong, nothing if all is well. */
Containers::StringView readFile(
    Containers::StringView file, Containers::String& content);

}

#endif
