#ifndef Orrelin_host_Translations_h
#define Orrelin_host_Translations_h

#include <map>
#include <vector>

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* The texts in existing files that an export would not write again */
struct Losses {
    /* Texts that are nowhere else, as the project has no place for them */
    std::size_t dropped = 0;
    /* Key and file of the first of them */
    Containers::String example;
    /* Texts of the default language's file that differ from the project's. The
       project's are the ones to keep, so these don't stop an export. */
    std::size_t replaced = 0;

    void drop(Containers::StringView what, Containers::StringView file);
};

/* A text of the project that an import changed */
struct SourceChange {
    Containers::String key;
    Containers::String path;
    Containers::String before;
};

/* These print faults of a file with their places, go on with the other files
   and then return false. */

/* Of each language by its code, which of the terms have a translation */
typedef std::map<Containers::String, std::vector<bool>, StrLess>
    TranslatedTerms;

/* Looks for translations of given terms in all files. Nothing of the project is
   filled or changed, so this takes less time and memory than reading the
   translations does. */
bool findTranslated(Project& project, const std::vector<Term>& terms,
    TranslatedTerms& translated);

/* Fills the translations from the files that new ones of the given languages
   replace, and counts what would be lost. If no languages are given, reads all
   files and adds the codes of the languages that have one. */
bool readReplaced(Project& project, Codes& codes, Losses& losses);

/* Takes over all files, with new languages and changed texts of the project
   in one undo step */
bool importAll(Project& project, std::vector<SourceChange>& changes);

}}

#endif
