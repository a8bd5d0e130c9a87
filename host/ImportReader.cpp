#include "ImportReader.h"

#include <algorithm>
#include <Corrade/Utility/Format.h>

#include "LanguageFiles.h"
#include "Messages.h"
#include "editDistance.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* To find a key among hundreds of thousands takes a while */
constexpr std::size_t MaxSuggestions = 5;

enum : char { Untranslated, Translated, Outdated };

}

bool ImportReader::isWanted(Containers::StringView code) {
    return _codes.empty() ||
        std::find(_codes.begin(), _codes.end(), code) != _codes.end();
}

bool ImportReader::begin(
    const LanguageSource&, const LanguageFile& file, const Utility::Json&) {
    if(!isKnown(_project, file))
        return false;
    if(!_project.hasLanguage(file.code))
        LocalizationTools::addLanguage(
            _project.editor(), languageIndex(file.code));
    _path = file.path;
    _isDefault = file.code == _project.defaultLanguage();
    _files.push_back({file.code});
    _marks.assign(_texts.terms().size(), Untranslated);
    if(_isDefault)
        _project.record().beginSources(file.code);
    else
        _project.record().beginTranslations(file.code);
    return true;
}

void ImportReader::add(const LanguageText& text) {
    recordAsRead(_project.record(), _files.back().code, _isDefault, text);
    switch(text.kind) {
    case TextKind::Unknown:
        if(text.text.data())
            warnOfUnknown(text);
        return;
    case TextKind::Displaced:
        if(text.text.data())
            warn(text,
                "belongs to a text that the project doesn't have "
                "anymore");
        return;
    case TextKind::Empty:
        warn(text, "is empty, so it isn't taken; --allow-empty takes it");
        break;
    case TextKind::None:
        warn(text,
            "is the word None, which tools write for a missing "
            "text, so it isn't taken; --allow-empty takes it");
        break;
    case TextKind::WrongType:
        return;
    case TextKind::Missing:
    case TextKind::Text:
        break;
    }
    const bool isText = text.kind == TextKind::Text;
    _marks[text.term] = !isText ? Untranslated
        : text.isOutdated       ? Outdated
                                : Translated;
    if(!isText)
        return;
    if(_isDefault) {
        if(!addDifference(_texts, text, _differences))
            warn(text, "has no text in the project that it could replace");
    } else
        _files.back().equal += text.text == _texts.terms()[text.term].source;
}

void ImportReader::warn(const LanguageText& text, Containers::StringView what) {
    fail(Utility::format("{}: '{}' {}", _path, text.key, what));
}

void ImportReader::warnOfUnknown(const LanguageText& text) {
    const bool isSearched =
        !MessageLimit::isReached() && _suggestionCount++ < MaxSuggestions;
    warn(text,
        "isn't a key of the project, so its text isn't taken" +
            (isSearched ? keySuggestion(text.key, _texts.terms())
                        : Containers::String{}));
}

void ImportReader::end() {
    ImportedFile& file = _files.back();
    file.translated =
        std::size_t(std::count(_marks.begin(), _marks.end(), Translated));
    file.outdated =
        std::size_t(std::count(_marks.begin(), _marks.end(), Outdated));
}

}}
