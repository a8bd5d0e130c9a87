#ifndef Orrelin_host_project_undescribedTypes_h
#define Orrelin_host_project_undescribedTypes_h

#include <map>
#include <set>

#include "Project.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

struct UndescribedType {
    std::size_t componentCount = 0;
    /* Parameters that may be texts, as some component has a text there */
    std::set<Containers::StringView, StrLess> texts;
};

typedef std::map<Containers::StringView, UndescribedType, StrLess>
    UndescribedTypes;

/* The types of the project's components, by name, that nobody described, so
   that their texts aren't terms. Valid until the project changes. */
UndescribedTypes findUndescribedTypes(Project& project);

/* A line for each type that tells what to add to the description */
std::vector<Containers::String> hints(
    const Project& project, const UndescribedTypes& types);

/* Whether there are undescribed types, for a command that would lose texts: they
   may be of these types. Prints that if so. */
bool mayLoseUndescribed(
    Project& project, std::size_t lostCount, Containers::StringView example);

/* The file that describes the types, as messages name it */
Containers::StringView descriptionFile(const Project& project);

}}

#endif
