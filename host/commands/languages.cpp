#include <filesystem>
#include <string>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "project/LanguageFiles.h"
#include "project/LanguageTable.h"
#include "shared/RecordPath.h"
#include "storage/Storage.h"
#include "terminal/JsonList.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* With the text in their codes or names */
std::vector<Language> matching(Containers::StringView filter) {
    std::vector<Language> out;
    for(const Language& language: allLanguages())
        if(matches(language, filter))
            out.push_back(language);
    return out;
}

bool checkNew(Project& project, const Codes& codes) {
    for(const Containers::String& code: codes) {
        if(languageIndex(code) == AllLanguageCount) {
            fail(Utility::format("unknown language code '{}'{}", code,
                suggestion(code, allLanguages())));
            return false;
        }
        if(project.hasLanguage(code)) {
            fail(Utility::format(
                "the project has the language '{}' already", code));
            return false;
        }
    }
    return true;
}

bool checkRemovable(Project& project, const Codes& codes) {
    for(const Containers::String& code: codes) {
        if(!isFileName(code) || !project.checkLanguage(code))
            return false;
        const std::vector<ProjectLanguage> languages = project.languages();
        for(const ProjectLanguage& language: languages)
            if(language.isDefault && language.code == code &&
                languages.size() != 1) {
                fail(Utility::format(
                    "'{}' is the language of the project's "
                    "own texts; it can be removed only as the last one",
                    code));
                return false;
            }
    }
    return true;
}

/* The files that go with the languages. From an archive, what is in it would
   come back. */
Codes filesOf(Project& project, const Codes& codes) {
    Codes out;
    const LanguageSource files = project.target();
    if(!files.isArchive)
        for(const Containers::String& code: codes)
            out.push_back(Utility::Path::join(files.path, code + ".json"));
    return out;
}

/* What has a language's name, but isn't its file, isn't this program's to
   remove */
bool checkLanguageFile(
    Containers::StringView file, const Containers::String& content) {
    Containers::String copy{content};
    const auto json =
        LocalizationTools::parseLanguageFile({copy.data(), copy.size()});
    if(json && LocalizationTools::translationOf(*json))
        return true;
    fail(
        Utility::format("{} can't be read as a language file; remove or repair "
                        "it yourself first",
            file));
    return false;
}

bool removeFile(Project& project, Containers::StringView file, Codes& removed) {
    FileContent content;
    if(!project.readFile(file, content))
        return false;
    if(!content.exists)
        return true;
    if(std::filesystem::is_symlink(std::string{file})) {
        fail(Utility::format("{} is a link; remove it yourself first, with the "
                             "file behind it if that isn't needed anymore",
            file));
        return false;
    }
    if(!project.checkOwnName(file) || !checkLanguageFile(file, content.content))
        return false;
    const Containers::String fault = project.storage().remove(file);
    if(!fault.isEmpty())
        fail(fault);
    removed.push_back(file);
    return fault.isEmpty();
}

}

int listLanguages(Containers::StringView filter, bool json) {
    const std::vector<Language> languages = matching(filter);
    if(json) {
        JsonList out;
        for(const Language& language: languages) {
            out.beginObject();
            out.add("code", language.code);
            out.add("name", language.name);
            out.endObject();
        }
        out.print();
        return Success;
    }
    if(languages.empty())
        return fail(Utility::format("no language has '{}' in its code or name"
                                    "{}",
            filter, suggestion(filter, allLanguages())));
    Table table{{{"code"}, {"language"}}};
    for(const Language& language: languages)
        table.add({{language.code}, {language.name}});
    table.print();
    return Success;
}

int addLanguages(const ProjectOptions& options, const Codes& codes) {
    Project project;
    Codes added;
    if(!project.openForWriting(options, "add") || !checkNew(project, codes) ||
        !project.provideDefaultLanguage(added))
        return Failure;

    for(const Containers::String& code: codes)
        if(!project.hasLanguage(code)) {
            LocalizationTools::addLanguage(
                project.editor(), languageIndex(code));
            added.push_back(code);
        }
    if(!project.write() || !project.commit())
        return Failure;

    for(const Containers::String& code: added)
        printLine(Utility::format("Added {} ({}){}",
            AllLanguages[languageIndex(code)].name, code,
            code == project.defaultLanguage()
                ? ", the language of the project's own texts"
                : ""));
    printLine(Utility::format("Saved {}. 'export' writes the files to "
                              "translate.",
        project.file()));
    return Success;
}

/* The library's own operation deletes the file at once, but here it goes
   together with the project's change or not at all */
int removeLanguages(const ProjectOptions& options, const Codes& codes) {
    Project project;
    if(!project.openForWriting(options, "remove") ||
        !checkRemovable(project, codes))
        return Failure;

    Codes removed;
    for(const Containers::String& file: filesOf(project, codes))
        if(!removeFile(project, file, removed))
            return Failure;
    for(const Containers::String& code: codes)
        project.changeManager().pushRemoval(
            project.editor().languagesSection[RecordPath::segment(code)].path);
    /* In an archive, the translations stay */
    if(!project.place().isArchive)
        for(const Containers::String& code: codes)
            project.record().remove(code);
    if(project.hasReadFault() || !project.write() ||
        (!project.record().isEmpty() && !project.writeRecord()) ||
        !project.commit())
        return Failure;

    for(const Containers::String& code: codes)
        printLine(Utility::format("Removed the language {}", code));
    for(const Containers::String& file: removed)
        printLine(Utility::format("Deleted {}", file));
    const LanguageSource files = project.target();
    if(files.isArchive && Utility::Path::exists(files.path))
        printLine(Utility::format("{} stays as it is; 'export --prune' writes "
                                  "it without the language",
            files.path));
    printLine(Utility::format("Saved {}", project.file()));
    return Success;
}

}}
