#include "ProjectFolders.h"

#include <cstdlib>
#include <memory>
#include <fcntl.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* Null if it can't be found */
Containers::String realPath(const Containers::String& path) {
    const std::unique_ptr<char, decltype(&std::free)> real{
        ::realpath(path.data(), nullptr), std::free};
    return Containers::StringView{real.get()};
}

bool isInside(
    const Containers::String& real, const Containers::String& folder) {
    const Containers::String root = realPath(folder);
    return root == "/" ||
        (!root.isEmpty() && Containers::StringView{real}.hasPrefix(root + "/"));
}

}

Containers::String ProjectFolders::open(Containers::StringView projectFile) {
    file = projectFile;
    folder = openFolder(AT_FDCWD, path(), true);
    const Containers::String real = realPath(path());
    if(!folder || real.isEmpty())
        return fault("open the folder", path());
    id = StrHash{}(real + "/" + Utility::Path::split(file).second());
    return {};
}

Containers::String ProjectFolders::path(const Containers::String& key) const {
    return key.isEmpty() ? file : Utility::Path::join(languages, key);
}

Containers::Optional<Containers::String> ProjectFolders::key(
    Containers::StringView path) const {
    if(path == file)
        return Containers::String{};
    const auto parts = Utility::Path::split(path);
    if(parts.first() == languages && isPlainName(parts.second()))
        return Containers::String{parts.second()};
    return {};
}

Containers::String ProjectFolders::resolve(const Containers::String& key,
    Containers::String& realFolder, Containers::String& name) const {
    Containers::String real = path(key);
    struct stat status;
    const bool exists = ::lstat(real.data(), &status) == 0;
    if(!exists && errno != ENOENT)
        return fault("find", real);
    if(exists && S_ISLNK(status.st_mode)) {
        real = realPath(real);
        if(real.isEmpty())
            return fault("follow the link", path(key));
        if(!key.isEmpty() && !isInside(real, path()) &&
            !isInside(real, languages))
            return Utility::format("{} is a link out of the folders of the "
                                   "project, which isn't written through",
                path(key));
    }
    realFolder = folderOf(real);
    name = Utility::Path::split(real).second();
    return {};
}

}}
