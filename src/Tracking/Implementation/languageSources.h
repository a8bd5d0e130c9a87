#ifndef Orrelin_Tracking_Implementation_languageSources_h
#define Orrelin_Tracking_Implementation_languageSources_h

#include <vector>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Tracking {

class TranslationRecord;

/* Where language files are, a folder or an archive */
struct LanguageSource {
    Containers::String path;
    bool isArchive;

    /* The folder itself, or that of the archive */
    Containers::String folder() const;
};

/* The place of loose files or of an archive, from the project's settings. The
   last dot of the name of the folder or the project, and all behind it, are
   dropped. */
LanguageSource languageSource(const OrrelinEditor& editor, bool isArchive);

/* The place that exports write */
LanguageSource languageTarget(const OrrelinEditor& editor);

/* The places that files are read from if they exist. The first is the one where
   they were last written or read, as the record tells. The target is among
   them. The others are where they were before the project got another name, or
   was set to loose files or to an archive. */
std::vector<LanguageSource> languageSources(
    const OrrelinEditor& editor, const TranslationRecord& record);

/* The places of the record, the one to write first. Loose files and an archive
   may be in different folders, as a dot in the folder's name shows. The record
   is in the second one after a switch between them. */
std::vector<Containers::String> recordFiles(const OrrelinEditor& editor);

/* Lets the record tell that the files are at the target */
void recordTarget(TranslationRecord& record, const OrrelinEditor& editor);

}}

#endif
