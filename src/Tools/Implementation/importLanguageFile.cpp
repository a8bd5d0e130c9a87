#include "Tools/Implementation/importLanguageFile.h"

#include <iterator>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Json.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "Tools/Implementation/parseLanguageFile.h"
#include "Tools/Implementation/StoredTerms.h"
#include "editor/OrrelinEditor.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Adds the language if the project lacks it. Returns false if it's unknown.

   A language that is added here never counts as the default one. In a project
   without languages, the first file in the folder would otherwise decide in
   which language the project's texts are, and write over them. */
bool provideLanguage(
    OrrelinEditor& editor, Containers::StringView code, bool& isDefault) {
    isDefault = false;
    if(editor.languagesSection[RecordPath::segment(code)].hasValue()) {
        isDefault = editor.project["settings/localization/defaultLanguage"]
                        .asString() == code;
        return true;
    }
    const unsigned short row = languageIndex(code);
    if(row == AllLanguageCount)
        return false;
    addLanguage(editor, row);
    return true;
}

/* Takes over the terms of one file. Exported files list them in the order of
   the tables, so the entry behind the last one is tried before searching. */
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
        /* The type comes first: a wrong one is a fault of the file, even if the
           project doesn't take the term */
        const bool isText = value.type() == Utility::JsonToken::Type::String;
        if(!isText && value.type() != Utility::JsonToken::Type::Null) {
            Utility::Warning{} << "Invalid type for term" << key
                               << "in imported file" << _fileName;
            return;
        }

        /* Not worth a warning, as files are often older than the project */
        const auto term = find(key);
        if(term == _terms.end())
            return;
        const StoredTerm stored = _storedTerms.find(term->second);
        if(!stored.translated)
            return;
        /* A null means an untranslated term, also in the default language. It
           never clears a text of the project. */
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

    /* Changes the project's text if it differs; an equal one would only fill
       the history. Never makes a text where the document stores none: an export
       writes those as empty texts, and reading them back mustn't change the
       project. Nor may values be added while _storedTerms is in use. */
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

}

void importLanguageFile(OrrelinEditor& editor, Containers::StringView name,
    Containers::ArrayView<char> content) {
    /* The whole file is checked before its language is added, so that an
       invalid file doesn't leave an empty language behind */
    const Containers::Optional<Utility::Json> json = parseLanguageFile(content);
    if(!json) {
        Utility::Error{} << "Invalid JSON in imported file" << name;
        return;
    }
    const Utility::JsonIterator translation = translationOf(*json);
    if(!translation) {
        Utility::Error{}
            << "Missing or invalid 'translation' object in imported file"
            << name;
        return;
    }
    importTranslation(editor, name, translation);
}

void importTranslation(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& translation) {
    const Containers::StringView code =
        Utility::Path::splitExtension(name).first();
    bool isDefault;
    if(!provideLanguage(editor, code, isDefault)) {
        Utility::Error{} << "Unknown language code" << code
                         << "in imported file" << name;
        return;
    }

    importTexts(editor, name, translation,
        editor.localization->translations[Containers::String{code}], isDefault);
}

void importTexts(OrrelinEditor& editor, Containers::StringView name,
    const Utility::JsonIterator& texts, TranslationMap& translations,
    bool isDefault) {
    TermImport terms{editor, name, translations, isDefault};
    for(const Utility::JsonObjectItem text: texts->asObject())
        terms.importTerm(text.key(), text.value());
}

}}
