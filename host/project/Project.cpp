#include "Project.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ComponentTypes.h"
#include "LanguageTable.h"
#include "Tools/Implementation/languagesFolder.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "brokenKeys.h"
#include "editor/ProjectFile.h"
#include "shared/Implementation/stringOf.h"
#include "shared/RecordPath.h"
#include "storage/Storage.h"

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

/* Faults of the storage are empty if there is none */
bool isFine(const Containers::String& fault) {
    if(!fault.isEmpty())
        fail(fault);
    return fault.isEmpty();
}

Containers::StringIterable iterable(const Codes& codes) {
    return Containers::ArrayView<const Containers::String>{
        codes.data(), codes.size()};
}

constexpr auto Format = LocalizationTools::LocalizationFormat::I18next;

}

struct Project::Contents {
    EditorSession session;
    TermMap strings;
    Tracking::TranslationRecord record;
};

struct Project::State {
    ProjectOptions options;
    Containers::String file, components;
    bool hasReadFault = false;
    std::unique_ptr<Contents> contents = std::make_unique<Contents>();
    Storage storage;
};

Project::Project() = default;

/* To free the millions of small pieces of a large project would take a good
   part of a command's time. There's one project in a process, and this is its
   end, so the last one stays. */
Project::~Project() {
    static std::unique_ptr<Contents>& last = *new std::unique_ptr<Contents>;
    if(_state)
        last = std::move(_state->contents);
}

bool Project::openForWriting(
    const ProjectOptions& options, Containers::StringView command) {
    return open(options, command);
}

bool Project::isCurrent() const {
    if(_state->storage.changed().isEmpty())
        return true;
    std::this_thread::sleep_for(std::chrono::milliseconds{20});
    return false;
}

bool Project::open(
    const ProjectOptions& options, Containers::StringView command) {
    _state = std::make_unique<State>();
    _state->options = options;
    Storage& storage = _state->storage;
    if(!findFile() || !isFine(storage.open(_state->file)) ||
        (!command.isEmpty() && !isFine(storage.lock(command))) ||
        !readComponents() || !readProject())
        return false;
    LocalizationTools::gatherStrings(editor(), _state->contents->strings);
    warnOfBrokenKeys(*this);
    warnOfSharedKeys(*this);
    const LanguageSource files = target();
    return isFine(storage.setLanguagesFolder(files.folder())) && readRecord();
}

bool Project::readRecord() {
    Tracking::TranslationRecord& record = _state->contents->record;
    for(const Containers::String& file: Tracking::recordFiles(editor())) {
        FileContent content;
        if(!readFile(file, content))
            return false;
        if(!content.exists)
            continue;
        if(!record.parse(content.content)) {
            fail(Utility::format(
                "{} isn't a record of translations that this version can read; "
                "move it away to begin anew",
                file));
            return false;
        }
        record.expectSources(defaultLanguage());
        break;
    }
    return true;
}

bool Project::findFile() {
    const Containers::String& path = _state->options.path;
    if(!isThere(path)) {
        fail(Utility::format("there is no {}", path));
        return false;
    }
    _state->file = path;
    if(Utility::Path::isDirectory(path)) {
        _state->file = Utility::Path::join(path, "project.json");
        if(!isThere(_state->file)) {
            fail(Utility::format("the folder {} has no project.json", path));
            return false;
        }
    }
    return !hasReadFault();
}

bool Project::readComponents() {
    const bool isNamed = !_state->options.components.isEmpty();
    Containers::String& file = _state->components;
    file = isNamed
        ? _state->options.components
        : Utility::Path::join(
              Utility::Path::split(_state->file).first(), "components.json");
    FileContent content;
    if(!readFile(file, content))
        return false;
    if(content.exists)
        return addComponentTypes(
            _state->contents->session, file, content.content);
    if(isNamed)
        fail(Utility::format("there is no {}", file));
    return !isNamed;
}

bool Project::readProject() {
    FileContent content;
    if(!readFile(_state->file, content))
        return false;
    if(!content.exists) {
        fail(Utility::format("there is no {}", _state->file));
        return false;
    }
    return succeedsOrFails([&] {
        return _state->contents->session.open(_state->file, content.content);
    });
}

bool Project::readFile(Containers::StringView file, FileContent& out) {
    out = _state->storage.read(file);
    if(!out.fault.isEmpty()) {
        fail(Utility::format("can't read {}: {}", file, out.fault));
        _state->hasReadFault = true;
    }
    return out.fault.isEmpty();
}

bool Project::hasReadFault() const {
    return _state->hasReadFault;
}

bool Project::write() {
    Containers::Optional<Containers::String> content;
    return succeedsOrFails([&] {
        content = _state->contents->session.write();
        return bool(content);
    }) &&
        isFine(_state->storage.write(_state->file, std::move(*content)));
}

bool Project::writeFiles(const Codes& codes) {
    const LanguageSource files = target();
    setRecordedPlace(files);
    if(files.isArchive)
        return writeArchive(codes, files.path);
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(
        editor(), iterable(codes), Format, names, contents);
    for(std::size_t i = 0; i != names.size(); ++i) {
        const Containers::String file =
            Utility::Path::join(files.path, names[i]);
        Containers::String content{contents[i].data(), contents[i].size()};
        /* Otherwise all files would be in memory twice in the end */
        contents[i] = {};
        if(!checkOwnName(file) ||
            !isFine(_state->storage.write(file, std::move(content))))
            return false;
    }
    return true;
}

bool Project::writeArchive(const Codes& codes, Containers::StringView file) {
    const Containers::StringView name =
        editor().project["settings/project/name"].asString();
    if(name.isEmpty() || name.contains('/')) {
        fail(Utility::format("the project's name '{}' can't be the name of an "
                             "archive",
            name));
        return false;
    }
    const Containers::String aside = _state->storage.archivePath();
    return succeeds([&] {
        LocalizationTools::exportTermsCompressed(
            editor(), iterable(codes), aside, Format);
    }) &&
        isFine(_state->storage.writeArchive(file));
}

void Project::setRecordedPlace(const LanguageSource& files) {
    record().setArchive(files.isArchive
            ? Utility::Path::split(files.path).second()
            : Containers::StringView{});
}

bool Project::writeRecord() {
    return isFine(_state->storage.write(recordFile(), record().write()));
}

bool Project::commit() {
    return isFine(_state->storage.commit());
}

OrrelinEditor& Project::editor() {
    return _state->contents->session.editor();
}

ChangeManager& Project::changeManager() {
    return _state->contents->session.changeManager();
}

LocalizationData& Project::localization() {
    return _state->contents->session.localization();
}

TermMap& Project::strings() {
    return _state->contents->strings;
}

Tracking::TranslationRecord& Project::record() {
    return _state->contents->record;
}

Storage& Project::storage() {
    return _state->storage;
}

const ProjectOptions& Project::options() const {
    return _state->options;
}

Containers::StringView Project::file() const {
    return _state->file;
}

bool Project::isOwnFile(Containers::StringView path) const {
    const Identity identity = identityOf(path);
    return !identity.error &&
        (identity == identityOf(_state->file) ||
            identity == identityOf(_state->components));
}

bool Project::checkOwnName(Containers::StringView path) {
    if(isOwnFile(path)) {
        fail(Utility::format(
            "{} is a file of the project itself, not one of a language", path));
        return false;
    }
    std::error_code error;
    const std::filesystem::path link{std::string{path}};
    const std::filesystem::path real = std::filesystem::canonical(link, error);
    if(error ||
        real.parent_path() !=
            std::filesystem::canonical(link.parent_path(), error) ||
        real.filename() == link.filename())
        return true;
    fail(Utility::format("{} is a link to {}, which is the file of another "
                         "language",
        path, Containers::StringView{real.filename().native()}));
    return false;
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

bool Project::provideDefaultLanguage(Codes& added) {
    const JsonValue* const records =
        editor().languagesSection.readValueNoDefault();
    if(records && !records->IsObject()) {
        fail("the project's \"languages\" aren't an object and would be lost");
        return false;
    }
    const Containers::String code = defaultLanguage();
    if(!languages().empty() || code.isEmpty())
        return true;
    const unsigned short row = languageIndex(code);
    if(row == AllLanguageCount) {
        fail(Utility::format(
            "settings/localization/defaultLanguage in {} is '{}', which isn't "
            "the code of a language; correct it first{}",
            file(), code, suggestion(code, allLanguages())));
        return false;
    }
    LocalizationTools::addLanguage(editor(), row);
    added.push_back(code);
    return true;
}

LanguageSource Project::target() {
    return Tracking::languageTarget(editor());
}

std::vector<LanguageSource> Project::sources() {
    std::vector<LanguageSource> out =
        Tracking::languageSources(editor(), record());
    if(record().isEmpty()) {
        const Containers::String archive = onlyArchive();
        if(!archive.isEmpty()) {
            if(out.back().path == archive)
                out.pop_back();
            out.insert(out.begin(), {archive, true});
        }
    }
    return out;
}

/* The archives beside which there are no files of the project */
std::vector<Containers::String> Project::otherArchives() {
    const LanguageSource files = target();
    std::vector<Containers::String> names;
    if(!fileIn(files).isEmpty() ||
        !_state->storage.list(files.folder(), names).isEmpty())
        return {};
    names.erase(std::remove_if(names.begin(), names.end(),
                    [](const Containers::String& name) {
                        return !name.hasSuffix(".zip");
                    }),
        names.end());
    return names;
}

/* Without a record, the only archive is likely to be from before the project was
   renamed or switched to loose files */
Containers::String Project::onlyArchive() {
    const std::vector<Containers::String> names = otherArchives();
    return names.size() == 1
        ? Utility::Path::join(target().folder(), names.front())
        : Containers::String{};
}

bool Project::checkArchives() {
    if(!record().isEmpty() || !fileIn(place()).isEmpty())
        return true;
    const std::size_t count = otherArchives().size();
    if(count < 2)
        return true;
    fail(Utility::format("it isn't known which of {} archives in {} has the "
                         "project's language files; rename it to {}, or move "
                         "them all away",
        count, target().folder(),
        Tracking::languageSource(editor(), true).path));
    return false;
}

Containers::String Project::unreadLooseFile() {
    const LanguageSource read = place();
    return read.isArchive ? fileIn({read.folder(), false})
                          : Containers::String{};
}

/* A folder may be there for the record alone */
Containers::String Project::fileIn(const LanguageSource& source) {
    if(source.isArchive)
        return isThere(source.path) ? source.path : Containers::String{};
    for(const ProjectLanguage& language: languages()) {
        const Containers::String file =
            Utility::Path::join(source.path, language.code + ".json");
        if(isThere(file))
            return file;
    }
    return {};
}

bool Project::isThere(const Containers::String& path) {
    const int error = identityOf(path).error;
    if(error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG)
        return false;
    if(error) {
        fail(fault("find", path, error));
        _state->hasReadFault = true;
    }
    return true;
}

LanguageSource Project::place() {
    for(const LanguageSource& source: sources())
        if(!fileIn(source).isEmpty())
            return source;
    return target();
}

Containers::String Project::unreadFile() {
    const LanguageSource files = target();
    const LanguageSource read = place();
    return read.path == files.path && read.isArchive == files.isArchive
        ? Containers::String{}
        : fileIn(files);
}

Containers::String Project::recordFile() {
    return Tracking::recordFiles(editor()).front();
}

Containers::StringView Project::source(Containers::StringView recordPath) {
    const JsonValue* const value =
        editor().project[recordPath].readValueNoDefault();
    return value ? stringOf(*value) : Containers::StringView{};
}

std::vector<Term> Project::terms() {
    return Tracking::listTerms(editor());
}

}}
