#include "Tools/Implementation/languagesFolder.h"

#include <Corrade/Utility/Path.h>

#include "editor/OrrelinEditor.h"
#include "editor/Path.h"

namespace OrrelinEngine { namespace LocalizationTools {

Containers::String languagesFolder(const OrrelinEditor& editor) {
    const ValueAccess settings = editor.project["settings/localization"];
    const Containers::String folder{settings["languagesFolder"].asString()};
    return Path::isRelative(folder)
        ? Utility::Path::join(*editor.projectRoot, folder)
        : folder;
}

bool isZipCompressed(const OrrelinEditor& editor) {
    return editor.project["settings/localization/enableZipCompression"]
        .asBool();
}

Containers::String archiveStem(const OrrelinEditor& editor) {
    return Utility::Path::join(languagesFolder(editor),
        editor.project["settings/project/name"].asString());
}

}}
