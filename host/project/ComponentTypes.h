#ifndef Orrelin_host_project_ComponentTypes_h
#define Orrelin_host_project_ComponentTypes_h

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Registers the script component types in a file's content: an object of types,
   each an object of type names by parameter name. On a failure prints the fault
   and returns false. */
bool addComponentTypes(EditorSession& session, Containers::StringView file,
    Containers::StringView content);

}}

#endif
