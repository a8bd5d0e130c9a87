#include "ImportReader.h"

#include <algorithm>
#include <Corrade/Utility/Format.h>

#include "LanguageFiles.h"
#include "Tools/LocalizationTools.h"
#include "Tools/languageIndex.h"
#include "terminal/Messages.h"
#include "terminal/editDistance.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* To find a key among hundreds of thousands takes a while */
constexpr std::size_t MaxSuggestions = 5;

enum : char { Unseen, Untranslated, Translated, Outdated };

}

bool ImportReader::isWanted(Containers::StringView code) {
    /* With a new file of the default language, it has to be on record what the
       translations in all others were made from */
    return isTaken(code) ||
        (isTaken(_project.defaultLanguage()) && _project.hasLanguage(code));
}

bool ImportReader::isTaken(Containers::StringView code) const {
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
    _code = file.code;
    _isTaken = isTaken(_code);
    if(_isTaken)
        _files.push_back({file.code, 0, 0, 0,
            std::vector<char>(_texts.terms().size(), Unseen)});
    _repeated.clear();
    if(_isDefault)
        _project.record().beginSources(file.code);
    else
        _project.record().beginTranslations(file.code);
    return true;
}

void ImportReader::add(const LanguageText& text) {
    recordAsRead(_project.record(), _code, _isDefault, text);
    if(!_isTaken)
        return;
    switch(text.kind) {
    case TextKind::Unknown:
        if(text.text.data())
            warnOfUnknown(text);
        return;
    case TextKind::Displaced:
        if(text.text.data())
            warn(text,
                "belongs to a text that the project doesn't have at "
                "this key anymore");
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
    char& mark = _files.back().marks[text.term];
    if(mark != Unseen) {
        warn(text, "stands there twice; the last one counts");
        _repeated[text.key] = text.text;
    }
    mark = !isText ? Untranslated : text.isOutdated ? Outdated : Translated;
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

void ImportReader::count(ImportedFile& file) {
    const auto countOf = [&](char mark) {
        return std::size_t(
            std::count(file.marks.begin(), file.marks.end(), mark));
    };
    file.translated = countOf(Translated);
    file.outdated = countOf(Outdated);
}

void ImportReader::end() {
    if(!_isTaken)
        return;
    count(_files.back());
    if(_isDefault && !_repeated.empty())
        _differences.erase(
            std::remove_if(_differences.begin(), _differences.end(),
                [&](const SourceDifference& difference) {
                    const auto last = _repeated.find(difference.key);
                    return last != _repeated.end() &&
                        last->second != difference.inFile;
                }),
            _differences.end());
}

bool ImportReader::hasFile(Containers::StringView code) const {
    return std::any_of(_files.begin(), _files.end(),
        [&](const ImportedFile& file) { return file.code == code; });
}

void ImportReader::markTaken(
    const std::vector<SourceDifference>& taken, bool isFirst) {
    for(ImportedFile& file: _files) {
        if(file.code == _project.defaultLanguage())
            continue;
        for(const SourceDifference& difference: taken) {
            char& mark = file.marks[difference.term];
            if(mark == Translated || mark == Outdated)
                mark = isFirst ? Translated : Outdated;
        }
        count(file);
    }
}

}}
