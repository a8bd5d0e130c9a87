#ifndef Orrelin_host_project_ObjectNames_h
#define Orrelin_host_project_ObjectNames_h

#include <unordered_map>

#include "Project.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

/* The record path of the object that a text belongs to, which the text's path
   begins with; empty if there is none */
Containers::StringView objectPath(Containers::StringView path);

/* Names of the objects, for the paths of their texts. Valid until the project
   changes. */
class ObjectNames {
public:
    explicit ObjectNames(Project& project);

    /* An empty view if there is none. Fast for texts of one object in a row. */
    Containers::StringView find(Containers::StringView path);

private:
    std::unordered_map<Containers::StringView, Containers::StringView, StrHash,
        StrEq>
        _names;
    Containers::StringView _lastPath, _lastName;
};

}}

#endif
