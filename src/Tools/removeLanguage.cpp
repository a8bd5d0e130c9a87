#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/languagesFolder.h"
#include "editor/OrrelinEditor.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace LocalizationTools {

void removeLanguage(
    OrrelinEditor& editor, Containers::StringView languageCode) {
    const ValueAccess record =
        editor.project["languages"][RecordPath::segment(languageCode)];
    if(!record.hasValue())
        return;
    /* The view may be of the record that's about to be removed */
    const Containers::String fileName = languageCode + ".json";
    editor.changeManager->pushRemoval(record.path);

    /* With a slash the name isn't one of a file in the folder, and a project
       from a stranger mustn't have a file elsewhere deleted */
    if(isZipCompressed(editor) || fileName.contains('/'))
        return;
    const Containers::String file =
        Utility::Path::join(languagesFolder(editor), fileName);
    if(Utility::Path::exists(file))
        Utility::Path::remove(file);
}

}}
