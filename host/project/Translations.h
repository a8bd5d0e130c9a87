#ifndef Orrelin_host_project_Translations_h
#define Orrelin_host_project_Translations_h

#include <map>
#include <vector>
#include <Corrade/Utility/Utility.h>

#include "Project.h"
#include "Tracking/Implementation/recordTexts.h"
#include "Tracking/LanguageTexts.h"
#include "Tracking/TranslationTracker.h"

namespace OrrelinEngine { namespace Host {

struct LanguageFile;
using Tracking::addDifference;
using Tracking::LanguageText;
using Tracking::LanguageTexts;
using Tracking::recordAsRead;
using Tracking::SourceDifference;
using Tracking::SourceState;
using Tracking::TextKind;

/* Takes what readTexts() finds in the language files */
class TextVisitor {
public:
    virtual ~TextVisitor() = default;

    /* Whether the file of a language is to be read */
    virtual bool isWanted(Containers::StringView code) = 0;

    /* Each file, and then each value in it. Returns whether its language is
       fine; the values of a file whose language isn't don't follow. */
    virtual bool begin(const LanguageSource& source, const LanguageFile& file,
        const Utility::Json& json) = 0;
    virtual void add(const LanguageText& text) = 0;
    virtual void end() {}
};

/* Reads the files of each language where they were last written, otherwise from
   the next place that has one, so that none is taken for untranslated after
   a switch. Prints faults of a file with their places, goes on with the other
   files and then returns false. */
bool readTexts(Project& project, const LanguageTexts& texts, bool allowsEmpty,
    TextVisitor& visitor);

/* Whether the project has a language or could have it */
bool isLanguage(Project& project, Containers::StringView code);

/* The same, but prints an error if not */
bool isKnown(Project& project, const LanguageFile& file);

/* The terms of a project, and how the texts of its files are related to them */
struct ProjectTexts {
    explicit ProjectTexts(Project& project);

    std::vector<Term> terms;
    LanguageTexts texts;
};

/* The texts in existing files that an export would not write again */
struct Losses {
    /* Texts that are nowhere else, as the project has no place for them */
    std::size_t dropped = 0;
    /* Key and file of the first of them */
    Containers::String example;
    /* Empty texts and the word None where nobody translated */
    std::size_t emptied = 0;

    void drop(Containers::StringView what, Containers::StringView file);
};

/* By language and key, what those translations were made from that weren't made
   from the project's text */
typedef std::map<Containers::String,
    std::map<Containers::String, std::uint32_t, StrLess>, StrLess>
    Origins;

/* What is in the files that an export replaces */
struct ReplacedFiles {
    Losses losses;
    std::vector<SourceDifference> differences;
    Origins origins;
    /* How many texts have another key now */
    std::size_t movedCount = 0;
};

/* Fills the translations from the files that new ones of the given languages
   replace. If no languages are given, reads all files and adds the codes of the
   languages that have one. */
bool readReplaced(Project& project, Codes& codes, ReplacedFiles& out);

/* Describes the files of the languages in the project's record, as an export
   writes them. Returns how many terms they have. */
std::size_t recordExport(
    Project& project, const Codes& codes, const Origins& origins);

/* Remembers texts of the default language's file that it won't have anymore, as
   translations may have been made from them */
void rememberSources(
    Project& project, const std::vector<SourceDifference>& differences);

/* Whether some texts have other keys now than the files do */
bool hasMovedTexts(Project& project);

}}

#endif
