#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/collectLanguageFiles.h"
#include "Tools/Implementation/importLanguageFile.h"
#include "Tools/Implementation/languagesFolder.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

void importTerms(OrrelinEditor& editor) {
    const Containers::String path = isZipCompressed(editor)
        ? archiveStem(editor) + ".zip"
        : languagesFolder(editor);
    if(Utility::Path::exists(path))
        importTerms(editor, path, LocalizationFormat::I18next);
    else
        Utility::Warning{}
            << "Language files importing was skipped because the path" << path
            << "does not exist";
}

/* Everything is read before the first change, so that an archive that can't be
   read changes nothing. The changes are one group, so that one undo takes back
   the texts of all files. */
void importTerms(OrrelinEditor& editor, Containers::StringView path,
    LocalizationFormat format) {
    LanguageFiles files;
    const auto split = Utility::Path::splitExtension(path);
    if(split.second() == ".zip" ? !collectArchive(path, files)
                                : !collectFolder(split.first(), files))
        return;

    editor.changeManager->beginGroup();
    if(format == LocalizationFormat::I18next)
        for(std::size_t i = 0; i < files.contents.size(); ++i)
            importLanguageFile(editor, files.names.get(i), files.contents[i]);
    editor.changeManager->commit();
}

}}
