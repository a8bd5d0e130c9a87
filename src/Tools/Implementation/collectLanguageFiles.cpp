#include "Tools/Implementation/collectLanguageFiles.h"

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "editor/Zip.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

bool isLanguageFile(Containers::StringView name) {
    return !name.hasPrefix('.') &&
        Utility::Path::splitExtension(name).second() == ".json";
}

}

bool collectFolder(Containers::StringView folder, LanguageFiles& files) {
    const auto entries = Utility::Path::list(folder);
    if(!entries)
        return false;
    for(const Containers::StringView entry: *entries) {
        if(!isLanguageFile(entry))
            continue;
        const Containers::String file = Utility::Path::join(folder, entry);
        if(Utility::Path::isDirectory(file))
            continue;
        Containers::Optional<Containers::Array<char>> content =
            Utility::Path::read(file);
        if(!content)
            continue;
        files.names.add(entry);
        arrayAppend(files.contents, std::move(*content));
    }
    return true;
}

bool collectArchive(Containers::StringView archive, LanguageFiles& files) {
    const Result result =
        readZip(files.names, {".json"}, files.contents, archive);
    if(!result)
        Utility::Error{} << "LocalizationTools::importTerms():"
                         << result.error();
    return bool(result);
}

}}
