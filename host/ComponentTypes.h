#ifndef Orrelin_host_ComponentTypes_h
#define Orrelin_host_ComponentTypes_h

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Registers the script component types of a file with given content, an object
   of types, each an object of type names by parameter name. Prints what's wrong
   with it and returns false if something is. */
bool addComponentTypes(EditorSession& session, Containers::StringView file,
    Containers::StringView content);

}}

#endif
