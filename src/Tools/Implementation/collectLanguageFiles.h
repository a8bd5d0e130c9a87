#ifndef Orrelin_Tools_Implementation_collectLanguageFiles
#define Orrelin_Tools_Implementation_collectLanguageFiles

#include <Corrade/Containers/Array.h>

#include "editor/StringArray.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* Language files, read into memory. The name and the content at the same index
   belong together. */
struct LanguageFiles {
    StringArray names{24};
    Containers::Array<Containers::Array<char>> contents;
};

/* The files of a folder, without hidden ones and those that can't be read.
   False if the folder can't be listed. */
bool collectFolder(Containers::StringView folder, LanguageFiles& files);

/* The files in an archive. Prints why and returns false if it can't be read. */
bool collectArchive(Containers::StringView archive, LanguageFiles& files);

}}

#endif
