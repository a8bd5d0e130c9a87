#ifndef Orrelin_host_Translations_h
#define Orrelin_host_Translations_h

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* Files that are there, and what they hold and new ones wouldn't */
struct Losses {
    /* Texts that no term and language of the project takes */
    std::size_t dropped = 0;
    /* Where the first of them is */
    Containers::String example;
    /* Texts of the default language's file that the project has otherwise */
    std::size_t replaced = 0;

    void drop(Containers::StringView what, Containers::StringView file);
};

/* A text of the project that an import changed */
struct SourceChange {
    Containers::String key;
    Containers::String path;
    Containers::String before;
};

/* For these, what is wrong with a file is printed with its place. The others
   are still read, and false is returned. */

/* Fills the translations from all files. The project stays as it is. */
bool readTranslations(Project& project);

/* The same for files that will be replaced by those of the given languages. If
   codes is empty, all files are read, and those of the languages that have one
   will be replaced; they are put into it. Files that can't be read would be
   lost. */
bool readReplaced(Project& project, Codes& codes, Losses& losses);

/* Takes over all files, with new languages and changed texts of the project
   in one undo step */
bool importAll(Project& project, std::vector<SourceChange>& changes);

}}

#endif
