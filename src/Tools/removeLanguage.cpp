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

    /* A name with a slash leads out of the folder. A project from a stranger
       mustn't delete files elsewhere. */
    if(isZipCompressed(editor) || fileName.contains('/'))
        return;
    const Containers::String file =
        Utility::Path::join(languagesFolder(editor), fileName);
    if(Utility::Path::exists(file))
        Utility::Path::remove(file);
}

}}
