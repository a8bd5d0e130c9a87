#include "StateReader.h"

#include <algorithm>

#include "LanguageFiles.h"
#include "Tracking/TranslationRecord.h"

namespace OrrelinEngine { namespace Host {

StateReader::StateReader(
    Project& project, const LanguageTexts& texts, std::size_t maxOutdated):
    _project(project),
    _texts(texts), _maxOutdated{maxOutdated} {}

bool StateReader::begin(
    const LanguageSource&, const LanguageFile& file, const Utility::Json&) {
    if(!isKnown(_project, file))
        return false;
    _code = file.code;
    _isDefault = _code == _project.defaultLanguage();
    _states = &_all[_code];
    _states->assign(_texts.terms().size(), TextState::Missing);
    return true;
}

void StateReader::add(const LanguageText& text) {
    if(text.term == Tracking::TextMoves::None)
        return;
    if(_isDefault) {
        /* Translations may have been made from it */
        if(text.kind == TextKind::Text &&
            text.text != _texts.terms()[text.term].source)
            _project.record().addFormerSource(text.text);
        return;
    }
    (*_states)[text.term] = text.kind != TextKind::Text ? TextState::Missing
        : text.isOutdated                               ? TextState::Outdated
                                                        : TextState::Translated;
    if(text.isOutdated && _outdated.size() < _maxOutdated)
        _outdated.push_back({_code, text.term, text.origin});
}

std::size_t StateReader::count(
    Containers::StringView code, TextState state) const {
    const auto found = _all.find(code);
    return found == _all.end() ? 0
                               : std::size_t(std::count(found->second.begin(),
                                     found->second.end(), state));
}

}}
