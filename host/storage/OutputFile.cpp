#include "OutputFile.h"

#include <cstdio>
#include <fcntl.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "files.h"

namespace OrrelinEngine { namespace Host {

OutputFile::OutputFile(const Containers::String& path, bool mayReplace):
    _path{path}, _mayReplace{mayReplace} {
    static int count = 0;
    struct stat status;
    const bool exists = ::lstat(_path.data(), &status) == 0;
    if(exists && !S_ISREG(status.st_mode))
        _fault =
            Utility::format("can't write {}: it isn't a regular file", _path);
    else if(exists && !mayReplace)
        _fault =
            Utility::format("{} is there already; --force replaces it", _path);
    if(!_fault.isEmpty())
        return;
    _temporary = Utility::Path::join(folderOf(_path),
        Utility::format(".orrelin-{}-{}", ::getpid(), ++count));
    _file = createFile(AT_FDCWD, _temporary, false);
    if(!_file)
        setFault();
}

OutputFile::~OutputFile() {
    if(_file)
        ::unlink(_temporary.data());
}

void OutputFile::setFault() {
    _fault = Host::fault("write", _path);
}

void OutputFile::flush() {
    if(_fault.isEmpty() && !writeAll(*_file, _buffer))
        setFault();
    _buffer.clear();
}

void OutputFile::finish() {
    flush();
    if(_fault.isEmpty() && !sync(*_file))
        setFault();
}

void OutputFile::publish() {
    if(!_fault.isEmpty())
        return;
    /* Not over a file that came in between, where the system can see to that */
    const char* const from = _temporary.data();
    const unsigned int flags = _mayReplace ? 0 : RENAME_NOREPLACE;
    if(::renameat2(AT_FDCWD, from, AT_FDCWD, _path.data(), flags) != 0 &&
        (errno != EINVAL || ::rename(from, _path.data()) != 0)) {
        setFault();
        return;
    }
    _file = Descriptor{};
    const Descriptor folder = openFolder(AT_FDCWD, folderOf(_path), true);
    if(!folder || !sync(*folder))
        setFault();
}

}}
