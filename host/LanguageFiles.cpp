#include "LanguageFiles.h"

#include <algorithm>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/Path.h>

#include "Messages.h"
#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "editor/StringArray.h"
#include "editor/Zip.h"

namespace OrrelinEngine { namespace Host {

namespace {

struct LanguageFile {
    Containers::String name;
    Containers::String code;
    Containers::Array<char> content;
};

Containers::StringIterable iterable(const Codes& codes) {
    return Containers::ArrayView<const Containers::String>{
        codes.data(), codes.size()};
}

bool collectArchive(
    Containers::StringView archive, std::vector<LanguageFile>& files) {
    if(!Utility::Path::exists(archive))
        return true;
    StringArray names;
    Containers::Array<Containers::Array<char>> contents;
    const Result result = readZip(names, {".json"}, contents, archive);
    if(!result) {
        fail(result.error());
        return false;
    }
    for(std::size_t i = 0; i != contents.size(); ++i)
        files.push_back({Utility::Path::join(archive, names.get(i)),
            Utility::Path::splitExtension(names.get(i)).first(),
            std::move(contents[i])});
    return true;
}

bool collectFolder(Containers::StringView folder, const Codes& codes,
    std::vector<LanguageFile>& files) {
    for(const Containers::String& code: codes) {
        const Containers::String name =
            Utility::Path::join(folder, code + ".json");
        if(!Utility::Path::exists(name))
            continue;
        Containers::Optional<Containers::Array<char>> content;
        if(!succeeds([&] { content = Utility::Path::read(name); }) || !content)
            return false;
        files.push_back({name, code, std::move(*content)});
    }
    return true;
}

/* The name has to be one of a file, and an empty one is none */
bool hasArchiveName(Project& project) {
    const Containers::StringView name =
        project.editor().project["settings/project/name"].asString();
    if(!project.isZip() || (!name.isEmpty() && !name.contains('/')))
        return true;
    fail(Utility::format("the project's name '{}' can't be the name of an "
                         "archive",
        name));
    return false;
}

/* The texts of a language file; nothing if it can't be read as one */
Containers::Optional<Utility::Json> parse(LanguageFile& file) {
    Containers::Optional<Utility::Json> json =
        LocalizationTools::parseLanguageFile(file.content);
    if(json && LocalizationTools::translationOf(*json))
        return json;
    fail(Utility::format("{} can't be read as a language file and would be "
                         "overwritten; repair it or move it away first",
        file.name));
    return {};
}

/* Adds up what one file holds that a new one wouldn't */
class LossCount {
public:
    /* The translations are null if the file won't be written */
    explicit LossCount(Project& project, const LanguageFile& file,
        bool isDefault, const TranslationMap* translations, Losses& losses):
        _project(project),
        _file(file), _isDefault{isDefault}, _translations{translations},
        _losses(losses) {}

    void add(const Utility::Json& json) {
        for(const Utility::JsonObjectItem member: json.root().asObject())
            if(member.key() != "translation")
                drop(member.key());
        for(const Utility::JsonObjectItem term:
            json.root()["translation"].asObject())
            addTerm(term.key(), term.value());
    }

private:
    void addTerm(Containers::StringView key, const Utility::JsonToken& value) {
        typedef Utility::JsonToken::Type Type;
        if(value.type() == Type::Null)
            return;
        if(value.type() != Type::String || !_translations ||
            !LocalizationTools::termExists(_project.editor(), key)) {
            drop(key);
            return;
        }
        if(_isDefault) {
            const TermPathMap& terms = _project.localization().terms;
            _losses.replaced +=
                value.asString() != _project.source(terms.find(key)->second);
            return;
        }
        const auto found = _translations->find(key);
        if(found == _translations->end() || !found->second ||
            *found->second != value.asString())
            drop(key);
    }

    void drop(Containers::StringView key) {
        if(!_losses.dropped++)
            _losses.example = Utility::format("'{}' in {}", key, _file.name);
    }

    Project& _project;
    const LanguageFile& _file;
    bool _isDefault;
    const TranslationMap* _translations;
    Losses& _losses;
};

/* Whether the files in the folder are there as a whole; that a disk got full
   on the way isn't reported */
bool areComplete(Containers::StringView folder,
    Containers::ArrayView<const Containers::String> names,
    Containers::ArrayView<const Containers::Array<char>> contents) {
    for(std::size_t i = 0; i != names.size(); ++i) {
        const Containers::String name = Utility::Path::join(folder, names[i]);
        const auto size = Utility::Path::size(name);
        if(size == contents[i].size())
            continue;
        if(size)
            fail(Utility::format("{} can't be written completely", name));
        return false;
    }
    return true;
}

/* Complete in a folder aside, then in the place of the old files, so that a
   full disk doesn't cost translations */
bool writeFolder(Project& project, const Codes& codes) {
    constexpr auto Format = LocalizationTools::LocalizationFormat::I18next;
    const Containers::String folder = project.filesPath();
    const Containers::String aside =
        Utility::Path::join(folder, ".orrelin-export");
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    LocalizationTools::writeTerms(
        project.editor(), iterable(codes), Format, names, contents);

    bool isWritten = succeeds([&] {
        LocalizationTools::exportTerms(
            project.editor(), iterable(codes), aside, Format);
    });
    isWritten = isWritten && areComplete(aside, names, contents);
    for(const Containers::String& name: names) {
        const Containers::String file = Utility::Path::join(aside, name);
        if(isWritten)
            isWritten =
                Utility::Path::move(file, Utility::Path::join(folder, name));
        if(Utility::Path::exists(file))
            Utility::Path::remove(file);
    }
    if(Utility::Path::exists(aside))
        Utility::Path::remove(aside);
    return isWritten;
}

}

bool isFileName(Containers::StringView code) {
    const bool is = !code.isEmpty() && !code.hasPrefix('.') &&
        std::none_of(code.begin(), code.end(),
            [](char c) { return c == '/' || (c >= '\0' && c < ' '); });
    if(!is)
        fail(Utility::format("'{}' can't be the code of a language", code));
    return is;
}

Codes languagesWithFiles(Project& project) {
    Codes out;
    for(const auto& language: project.localization().translations)
        out.push_back(language.first);
    std::sort(out.begin(), out.end());
    return out;
}

Containers::Optional<Losses> lossesOf(Project& project, const Codes& codes) {
    if(!hasArchiveName(project))
        return {};
    std::vector<LanguageFile> files;
    const Containers::String path = project.filesPath();
    if(!(project.isZip() ? collectArchive(path, files)
                         : collectFolder(path, codes, files)))
        return {};

    Losses out;
    const Containers::StringView defaultCode = project.defaultLanguage();
    LanguageTranslations& all = project.localization().translations;
    for(LanguageFile& file: files) {
        const Containers::Optional<Utility::Json> json = parse(file);
        if(!json)
            return {};
        const bool isWritten =
            std::find(codes.begin(), codes.end(), file.code) != codes.end();
        LossCount{project, file, file.code == defaultCode,
            isWritten ? &all[file.code] : nullptr, out}
            .add(*json);
    }
    return out;
}

bool writeFiles(Project& project, const Codes& codes) {
    if(!project.isZip())
        return writeFolder(project, codes);
    return succeeds([&] {
        LocalizationTools::exportTerms(project.editor(), iterable(codes));
    });
}

}}
