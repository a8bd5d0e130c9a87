#include "Tracking/Implementation/languageSources.h"

#include <algorithm>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Path.h>

#include "Tools/Implementation/languagesFolder.h"
#include "Tracking/TranslationRecord.h"

namespace OrrelinEngine { namespace Tracking {

namespace {

/* The record may come from a stranger */
bool isArchiveName(Containers::StringView name) {
    return name.hasSuffix(".zip") && !name.contains('/') &&
        !name.hasPrefix('.') && !name.contains('\0');
}

}

Containers::String LanguageSource::folder() const {
    return isArchive ? Containers::String{Utility::Path::split(path).first()}
                     : path;
}

LanguageSource languageSource(const OrrelinEditor& editor, bool isArchive) {
    const Containers::String path = isArchive
        ? LocalizationTools::archiveStem(editor)
        : LocalizationTools::languagesFolder(editor);
    Containers::StringView stem = Utility::Path::splitExtension(path).first();
    while(stem.size() > 1 && stem.hasSuffix('/'))
        stem = stem.exceptSuffix(1);
    return {isArchive ? stem + ".zip" : Containers::String{stem}, isArchive};
}

LanguageSource languageTarget(const OrrelinEditor& editor) {
    return languageSource(editor, LocalizationTools::isZipCompressed(editor));
}

std::vector<LanguageSource> languageSources(
    const OrrelinEditor& editor, const TranslationRecord& record) {
    std::vector<LanguageSource> out;
    const auto add = [&](const LanguageSource& source) {
        if(std::none_of(
               out.begin(), out.end(), [&](const LanguageSource& other) {
                   return other.isArchive == source.isArchive &&
                       other.path == source.path;
               }))
            out.push_back(source);
    };
    const Containers::StringView archive = record.archive();
    if(!record.isEmpty() && archive.isEmpty())
        add(languageSource(editor, false));
    else if(isArchiveName(archive))
        add({Utility::Path::join(
                 languageSource(editor, true).folder(), archive),
            true});
    /* Nothing is in that place anymore if it was moved by hand */
    if(!out.empty() && !Utility::Path::exists(out.front().path))
        out.clear();
    const LanguageSource target = languageTarget(editor);
    add(target);
    add(languageSource(editor, !target.isArchive));
    return out;
}

std::vector<Containers::String> recordFiles(const OrrelinEditor& editor) {
    const LanguageSource target = languageTarget(editor);
    std::vector<Containers::String> out;
    for(const LanguageSource& source:
        {target, languageSource(editor, !target.isArchive)})
        out.push_back(
            Utility::Path::join(source.folder(), TranslationRecord::FileName));
    return out;
}

void recordTarget(TranslationRecord& record, const OrrelinEditor& editor) {
    const LanguageSource target = languageTarget(editor);
    record.setArchive(target.isArchive
            ? Utility::Path::split(target.path).second()
            : Containers::StringView{});
}

}}
