#ifndef Orrelin_host_commands_FileExport_h
#define Orrelin_host_commands_FileExport_h

#include "Commands.h"

namespace OrrelinEngine { namespace Host {

/* Writes language files from what they have already. Commands may change the
   project's translations and their origins between reading and writing. */
struct FileExport {
    /* Returns the exit code. If the files mustn't be written, prints why. */
    int read(Project& project, const ExportOptions& options);

    /* All at once, with the record and, if it was changed, the project */
    bool write(Project& project, bool isProjectChanged = false);

    /* Prints what became of texts other than translations, and where the files
       are */
    void print(Project& project) const;

    /* Of the languages whose files are written. They may be more than those
       asked for, see exportedCodes(). */
    Codes codes;
    std::vector<LanguageSource> before;
    ReplacedFiles replaced;
    SourceMerge sources;
    std::size_t termCount = 0;
    bool isFirst = false;
};

}}

#endif
