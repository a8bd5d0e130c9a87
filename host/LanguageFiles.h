#ifndef Orrelin_host_LanguageFiles_h
#define Orrelin_host_LanguageFiles_h

#include <Corrade/Containers/Optional.h>

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* What the language files on the disk hold and new ones wouldn't */
struct Losses {
    /* Texts that no term and language of the project takes */
    std::size_t dropped = 0;
    /* Where the first of them is */
    Containers::String example;
    /* Texts of the default language's file that the project has otherwise */
    std::size_t replaced = 0;
};

/* Whether a file can be named by the code. Prints why if not. */
bool isFileName(Containers::StringView code);

/* Codes of the languages that were read from files, sorted */
Codes languagesWithFiles(Project& project);

/* What is lost if the files of the languages are written now. If they can't be
   written, or one there can't be read and mustn't be written over, prints why
   and returns nothing. Expects that the translations were read. */
Containers::Optional<Losses> lossesOf(Project& project, const Codes& codes);

/* Writes the files of the languages. If that fails, prints why and returns
   false; what was there is there still. */
bool writeFiles(Project& project, const Codes& codes);

}}

#endif
