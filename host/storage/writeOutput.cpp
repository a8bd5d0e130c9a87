#include "writeOutput.h"

#include <cstdio>
#include <fcntl.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Signals.h"
#include "files.h"

namespace OrrelinEngine { namespace Host {

Containers::String outputFault(
    const Containers::String& path, bool mayReplace) {
    struct stat status;
    if(::lstat(path.data(), &status) != 0)
        return errno == ENOENT ? Containers::String{} : fault("write", path);
    if(!S_ISREG(status.st_mode))
        return Utility::format("can't write {}: it isn't a regular file", path);
    return mayReplace
        ? Containers::String{}
        : Utility::format("{} is there already; --force replaces it", path);
}

Containers::String writeOutput(const Containers::String& path,
    Containers::StringView content, bool mayReplace) {
    const Containers::String reason = outputFault(path, mayReplace);
    if(!reason.isEmpty())
        return reason;
    /* A process that is killed leaves its temporary file */
    const SignalBlock block;
    const Descriptor folder = openFolder(AT_FDCWD, folderOf(path), true);
    const Containers::String name = Utility::Path::split(path).second();
    const Containers::String temporary =
        Utility::format(".orrelin-{}", ::getpid());
    if(!folder)
        return fault("write", path);
    const Descriptor file = createFile(*folder, temporary, false);
    if(file && writeAndSync(*file, content)) {
        /* Not over a file that came in between */
        if(::renameat2(*folder, temporary.data(), *folder, name.data(),
               mayReplace ? 0 : RENAME_NOREPLACE) == 0 ||
            (errno == EINVAL &&
                ::renameat(*folder, temporary.data(), *folder, name.data()) ==
                    0))
            return sync(*folder) ? Containers::String{} : fault("write", path);
    }
    const int error = errno;
    ::unlinkat(*folder, temporary.data(), 0);
    return fault("write", path, error);
}

}}
