#ifndef Orrelin_host_Translations_h
#define Orrelin_host_Translations_h

#include <map>
#include <vector>

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

/* Of each language by its code, which of the terms have a translation */
typedef std::map<Containers::String, std::vector<bool>, StrLess>
    TranslatedTerms;

/* Looks for translations of given terms in all files. Nothing of the project is
   filled or changed, so this takes less time and memory than reading the
   translations does. */
bool findTranslated(Project& project, const std::vector<Term>& terms,
    TranslatedTerms& translated);

/* Fills the translations from files that will be replaced by those of the given languages. If
   codes is empty, all files are read, and those of the languages that have one
   will be replaced; they are put into it. Files that can't be read would be
   lost. */
bool readReplaced(Project& project, Codes& codes, Losses& losses);

/* Takes over all files, with new languages and changed texts of the project
   in one undo step */
bool importAll(Project& project, std::vector<SourceChange>& changes);

}}

#endif
