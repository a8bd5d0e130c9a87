#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "Commands.h"
#include "JsonList.h"
#include "LanguageFiles.h"
#include "LanguageTable.h"
#include "Messages.h"
#include "Table.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"

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

/* What has texts of removed languages still, from where they would come back */
void printLeftovers(Project& project, const Codes& codes) {
    const Containers::String path = project.filesPath();
    if(project.isZip()) {
        if(Utility::Path::exists(path))
            printLine(Utility::format("{} stays as it is; 'export --prune' "
                                      "writes it without the language",
                path));
        return;
    }
    for(const Containers::String& code: codes) {
        const Containers::String name =
            Utility::Path::join(path, code + ".json");
        if(Utility::Path::exists(name))
            printLine(Utility::format("{} is there still; 'import' would add "
                                      "the language again",
                name));
    }
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
    if(!project.open(options) || !checkNew(project, codes))
        return Failure;

    const bool isFirst = project.languages().empty();
    for(const Containers::String& code: codes)
        if(!project.hasLanguage(code))
            LocalizationTools::addLanguage(
                project.editor(), languageIndex(code));
    if(!project.save())
        return Failure;

    for(const Containers::String& code: codes)
        printLine(Utility::format("Added {} ({}){}",
            AllLanguages[languageIndex(code)].name, code,
            isFirst && code == codes.front()
                ? ", the language of the project's own texts"
                : ""));
    printLine(Utility::format("Saved {}. 'export' writes the files to "
                              "translate.",
        project.file()));
    return Success;
}

/* The library deletes the file at once, so it's put back if the project then
   can't be saved */
int removeLanguages(const ProjectOptions& options, const Codes& codes) {
    typedef Containers::Optional<Containers::Array<char>> Content;
    Project project;
    if(!project.open(options) || !checkRemovable(project, codes))
        return Failure;

    std::vector<std::pair<Containers::String, Content>> files;
    const bool allDeleted = succeeds([&] {
        for(const Containers::String& code: codes) {
            const Containers::String name =
                Utility::Path::join(project.languagesFolder(), code + ".json");
            if(!project.isZip() && Utility::Path::exists(name))
                files.emplace_back(name, Utility::Path::read(name));
            LocalizationTools::removeLanguage(project.editor(), code);
        }
    });
    if(!project.save()) {
        for(const auto& file: files)
            if(file.second)
                Utility::Path::write(file.first, *file.second);
        return Failure;
    }

    for(const Containers::String& code: codes)
        printLine(Utility::format("Removed the language {}", code));
    for(const auto& file: files)
        if(!Utility::Path::exists(file.first))
            printLine(Utility::format("Deleted {}", file.first));
    printLeftovers(project, codes);
    printLine(Utility::format("Saved {}", project.file()));
    return allDeleted ? Success : Failure;
}

}}
