#include "Project.h"

#include <algorithm>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "ComponentTypes.h"
#include "LanguageTable.h"
#include "Messages.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "Tools/Implementation/languagesFolder.h"
#include "editor/ProjectFile.h"
#include "shared/RecordPath.h"
#include "shared/Implementation/stringOf.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* As the project has it, otherwise as it's known */
Containers::StringView languageName(
    const JsonValue& record, Containers::StringView code) {
    if(record.IsObject()) {
        const auto name = record.FindMember("name");
        if(name != record.MemberEnd() && name->value.IsString())
            return stringOf(name->value);
    }
    const unsigned short row = languageIndex(code);
    return row == AllLanguageCount ? code : AllLanguages[row].name;
}

/* The library says which files are no JSON. Projects are as well, and where
   they aren't is told by who reads them. */
void tellFaults(Containers::StringView folder) {
    if(!Utility::Path::isDirectory(folder))
        return;
    const auto names = Utility::Path::list(folder);
    for(std::size_t i = 0; names && i != names->size(); ++i) {
        const Containers::String file =
            Utility::Path::join(folder, (*names)[i]);
        if(file.hasSuffix(".json") && !Utility::Path::isDirectory(file))
            succeedsOrFails([&] { return EditorSession{}.open(file); });
    }
}

bool hasLanguageFiles(Containers::StringView folder) {
    if(!Utility::Path::isDirectory(folder))
        return false;
    const auto names = Utility::Path::list(folder);
    return names &&
        std::any_of(
            names->begin(), names->end(), [](const Containers::String& name) {
                return name.hasSuffix(".json");
            });
}

}

bool Project::open(const ProjectOptions& options) {
    if(!Utility::Path::exists(options.path)) {
        fail(Utility::format("there is no {}", options.path));
        return false;
    }
    _file = options.path;
    if(Utility::Path::isDirectory(_file)) {
        _file = Utility::Path::join(_file, "project.json");
        if(!Utility::Path::exists(_file)) {
            fail(Utility::format(
                "the folder {} has no project.json", options.path));
            return false;
        }
    }

    Containers::String components = options.components;
    if(components.isEmpty()) {
        components = Utility::Path::join(
            Utility::Path::split(_file).first(), "components.json");
        if(!Utility::Path::exists(components))
            components = {};
    }
    if(!components.isEmpty() && !addComponentTypes(_session, components))
        return false;
    if(!openDocument())
        return false;
    LocalizationTools::gatherStrings(editor(), _strings);
    return true;
}

bool Project::openDocument() {
    return succeedsOrFails([&] { return _session.open(_file); });
}

bool Project::save() {
    return succeedsOrFails([&] { return _session.save(_file); });
}

void Project::import(Containers::StringView path) {
    _filesAreFine = succeeds([&] {
        LocalizationTools::importTerms(
            editor(), path, LocalizationTools::LocalizationFormat::I18next);
    });
    if(!_filesAreFine)
        tellFaults(path);
}

void Project::importFiles() {
    import(isZip() ? archivePath() : languagesFolder());
}

bool Project::readTranslations() {
    const Containers::String path = sourcePath();
    if(path.isEmpty())
        return true;
    import(path);
    /* The import may have added languages and replaced texts of the project */
    LocalizationData tables = std::move(localization());
    if(!openDocument())
        return false;
    localization() = std::move(tables);
    return true;
}

Containers::StringView Project::defaultLanguage() {
    return editor().project["settings/localization/defaultLanguage"].asString();
}

std::vector<ProjectLanguage> Project::languages() {
    std::vector<ProjectLanguage> out;
    const JsonValue* const records =
        editor().languagesSection.readValueNoDefault();
    if(!records || !records->IsObject())
        return out;
    const Containers::StringView defaultCode = defaultLanguage();
    for(const auto& record: records->GetObject()) {
        const Containers::StringView code = stringOf(record.name);
        out.push_back(
            {code, languageName(record.value, code), code == defaultCode});
    }
    return out;
}

bool Project::hasLanguage(Containers::StringView code) {
    return editor().languagesSection[RecordPath::segment(code)].hasValue();
}

bool Project::checkLanguage(Containers::StringView code) {
    if(hasLanguage(code))
        return true;
    const std::vector<ProjectLanguage> all = languages();
    std::vector<Language> candidates;
    for(const ProjectLanguage& language: all)
        candidates.push_back({language.name, language.code});
    fail(Utility::format("the project doesn't have the language '{}'{}", code,
        suggestion(code, {candidates.data(), candidates.size()})));
    return false;
}

bool Project::isZip() {
    return LocalizationTools::isZipCompressed(editor());
}

Containers::String Project::languagesFolder() {
    return LocalizationTools::languagesFolder(editor());
}

/* Both without what looks like an extension, as they are exported to */
Containers::String Project::exportFolder() {
    return Utility::Path::splitExtension(languagesFolder()).first();
}

Containers::String Project::archivePath() {
    return Utility::Path::splitExtension(
               LocalizationTools::archiveStem(editor()))
               .first() +
        ".zip";
}

Containers::String Project::filesPath() {
    return isZip() ? archivePath() : exportFolder();
}

Containers::String Project::sourcePath() {
    const Containers::String archive = archivePath();
    const bool hasArchive = Utility::Path::exists(archive);
    const bool hasFiles = hasLanguageFiles(exportFolder());
    if(hasArchive && (isZip() || !hasFiles))
        return archive;
    return hasFiles ? languagesFolder() : Containers::String{};
}

Containers::StringView Project::source(Containers::StringView recordPath) {
    const JsonValue* const value =
        editor().project[recordPath].readValueNoDefault();
    return value ? stringOf(*value) : Containers::StringView{};
}

std::vector<Term> Project::translatedTerms() {
    std::vector<Term> out;
    for(const auto& term: localization().terms)
        if(LocalizationTools::termExists(editor(), term.first))
            out.push_back({term.first, term.second});
    return out;
}

std::size_t Project::translationCount(
    const std::vector<Term>& terms, Containers::StringView code) {
    const LanguageTranslations& all = localization().translations;
    const auto translations = all.find(code);
    if(translations == all.end())
        return 0;
    return std::size_t(
        std::count_if(terms.begin(), terms.end(), [&](const Term& term) {
            const auto found = translations->second.find(term.key);
            return found != translations->second.end() && found->second;
        }));
}

}}
