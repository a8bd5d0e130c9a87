#ifndef Orrelin_host_Messages_h
#define Orrelin_host_Messages_h

#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* What the program exits with */
enum : int { Success = 0, UsageError = 1, Failure = 2 };

/* Prints an error as one line. Returns Failure for the caller to pass on. */
int fail(Containers::StringView message);

/* The same with a line that an operation printed, without the operation's
   name, which means nothing to the user */
int failWithoutName(Containers::StringView line);

/* Prints lines that something else meant for the standard error output, after
   what was printed to the standard output */
void passOn(Containers::StringView lines);

/* Calls the function. The errors it prints are passed on as they are; returns
   whether there were none. */
template<class F> bool succeeds(F&& function) {
    Containers::String lines;
    {
        Utility::Error redirect{&lines};
        function();
    }
    passOn(lines);
    return lines.isEmpty();
}

/* Calls the function. If it returns false, what it printed becomes an error of
   this program's own. */
template<class F> bool succeedsOrFails(F&& function) {
    Containers::String lines;
    bool succeeded;
    {
        Utility::Error redirect{&lines};
        succeeded = function();
    }
    if(!succeeded)
        failWithoutName(lines);
    return succeeded;
}

}}

#endif
