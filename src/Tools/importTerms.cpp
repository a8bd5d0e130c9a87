#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/languagesFolder.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "Tools/Implementation/StoredTerms.h"
#include "editor/AllLanguages.h"
#include "editor/OrrelinEditor.h"
#include "editor/StringArray.h"
#include "editor/Zip.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

typedef Containers::Array<Containers::Array<char>> FileContents;

bool collectFolder(
    Containers::StringView folder, StringArray& names, FileContents& contents) {
    const auto entries = Utility::Path::list(folder);
    if(!entries)
        return false;
    for(const Containers::StringView entry: *entries) {
        if(entry.hasPrefix('.') ||
            Utility::Path::splitExtension(entry).second() != ".json")
            continue;
        const Containers::String file = Utility::Path::join(folder, entry);
        if(Utility::Path::isDirectory(file))
            continue;
        Containers::Optional<Containers::Array<char>> content =
            Utility::Path::read(file);
        if(!content)
            continue;
        names.add(entry);
        arrayAppend(contents, std::move(*content));
    }
    return true;
}

bool collectArchive(
    Containers::StringView path, StringArray& names, FileContents& contents) {
    const Result result = readZip(names, {".json"}, contents, path);
    if(result)
        return true;
    Utility::Error{} << "LocalizationTools::importTerms():" << result.error();
    return false;
}

/* The code of a language that the project has or was given now. Sets whether
   the file's texts are those of the project. */
bool provideLanguage(OrrelinEditor& editor, Containers::StringView code,
    const ValueAccess& defaultLanguage, bool& isDefault) {
    isDefault = false;
    if(editor.languagesSection[RecordPath::segment(code)].hasValue()) {
        isDefault = defaultLanguage.asString() == code;
        return true;
    }
    for(unsigned short i = 0; i != AllLanguageCount; ++i) {
        if(AllLanguages[i].code != code)
            continue;
        addLanguage(editor, i);
        return true;
    }
    return false;
}

/* Takes over the terms of one file. Files list them in the order of the tables,
   so what follows the last one is mostly the one that's looked for. */
class TermImport {
public:
    explicit TermImport(OrrelinEditor& editor, Containers::StringView fileName,
        TranslationMap& translations, bool isDefault):
        _editor(editor),
        _fileName{fileName}, _terms(editor.localization->terms),
        _translations(translations), _isDefault{isDefault},
        _storedTerms{editor}, _nextTerm{_terms.begin()},
        _nextTranslation{_translations.begin()} {}

    void importTerm(
        Containers::StringView key, const Utility::JsonToken& value) {
        const bool isText = value.type() == Utility::JsonToken::Type::String;
        if(!isText && value.type() != Utility::JsonToken::Type::Null) {
            Utility::Warning{} << "Invalid type for term" << key
                               << "in imported file" << _fileName;
            return;
        }

        const auto term = find(key);
        if(term == _terms.end())
            return;
        const StoredTerm stored = _storedTerms.find(term->second);
        if(!stored.translated)
            return;
        Containers::Optional<Containers::String>& out = translation(key);
        if(!isText) {
            out = Containers::NullOpt;
            return;
        }
        out = Containers::String{value.asString()};
        if(_isDefault)
            replaceSource(term->second, stored, value.asString());
    }

private:
    TermPathMap::const_iterator find(Containers::StringView key) {
        const auto found = _nextTerm != _terms.end() && _nextTerm->first == key
            ? _nextTerm
            : _terms.find(key);
        if(found != _terms.end())
            _nextTerm = std::next(found);
        return found;
    }

    Containers::Optional<Containers::String>& translation(
        Containers::StringView key) {
        const auto found = _nextTranslation != _translations.end() &&
                _nextTranslation->first == key
            ? _nextTranslation
            : _translations.emplace_hint(
                  _nextTranslation, key, Containers::NullOpt);
        _nextTranslation = std::next(found);
        return found->second;
    }

    /* The project's text where it differs */
    void replaceSource(Containers::StringView path, const StoredTerm& stored,
        Containers::StringView text) {
        if(path.hasPrefix('/') && stored.value && stored.value->IsString() &&
            stored.text() != text)
            _editor.changeManager->pushChange(path, text, false);
    }

    OrrelinEditor& _editor;
    Containers::StringView _fileName;
    const TermPathMap& _terms;
    TranslationMap& _translations;
    bool _isDefault;
    StoredTerms _storedTerms;
    TermPathMap::const_iterator _nextTerm;
    TranslationMap::iterator _nextTranslation;
};

void importFile(OrrelinEditor& editor, Containers::StringView name,
    Containers::ArrayView<char> content, const ValueAccess& defaultLanguage) {
    const Containers::Optional<Utility::Json> json = parseLanguageFile(content);
    if(!json) {
        Utility::Error{} << "Invalid JSON in imported file" << name;
        return;
    }

    typedef Utility::JsonToken::Type Type;
    const Utility::JsonToken root = json->root();
    const Utility::JsonIterator translation = root.type() == Type::Object
        ? root.find("translation")
        : Utility::JsonIterator{};
    if(!translation || translation->type() != Type::Object) {
        Utility::Error{}
            << "Missing or invalid 'translation' object in imported file"
            << name;
        return;
    }

    const Containers::StringView code =
        Utility::Path::splitExtension(name).first();
    bool isDefault;
    if(!provideLanguage(editor, code, defaultLanguage, isDefault)) {
        Utility::Error{} << "Unknown language code" << code
                         << "in imported file" << name;
        return;
    }

    TermImport terms{editor, name,
        editor.localization->translations[Containers::String{code}], isDefault};
    for(const Utility::JsonObjectItem term: translation->asObject())
        terms.importTerm(term.key(), term.value());
}

}

void importTerms(OrrelinEditor& editor) {
    Containers::String path = languagesFolder(editor);
    if(isZipCompressed(editor))
        path = Utility::Path::join(
            path, editor.project["settings/project/name"].asString() + ".zip");
    if(Utility::Path::exists(path))
        importTerms(editor, path, LocalizationFormat::I18next);
    else
        Utility::Warning{}
            << "Language files importing was skipped because the path" << path
            << "does not exist";
}

void importTerms(OrrelinEditor& editor, Containers::StringView path,
    LocalizationFormat format) {
    const ValueAccess defaultLanguage =
        editor.project["settings/localization/defaultLanguage"];
    StringArray names{24};
    FileContents contents;
    const auto split = Utility::Path::splitExtension(path);
    if(split.second() == ".zip"
            ? !collectArchive(path, names, contents)
            : !collectFolder(split.first(), names, contents))
        return;

    editor.changeManager->beginGroup();
    if(format == LocalizationFormat::I18next)
        for(std::size_t i = 0; i < contents.size(); ++i)
            importFile(editor, names.get(i), contents[i], defaultLanguage);
    editor.changeManager->commit();
}

}}
