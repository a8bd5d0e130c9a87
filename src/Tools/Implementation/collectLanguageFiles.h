#ifndef Orrelin_Tools_Implementation_collectLanguageFiles
#define Orrelin_Tools_Implementation_collectLanguageFiles

#include <Corrade/Containers/Array.h>

#include "editor/StringArray.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Language files, read into memory. A name and the content at the same index
   belong together. */
struct LanguageFiles {
    StringArray names{24};
    Containers::Array<Containers::Array<char>> contents;
};

/* Reads the language files of a folder. Skips hidden ones and those that can't
   be read. Returns false if the folder can't be listed. */
bool collectFolder(Containers::StringView folder, LanguageFiles& files);

/* Reads the language files in an archive. If that fails, prints why and returns
   false. */
bool collectArchive(Containers::StringView archive, LanguageFiles& files);

}}

#endif
