#include "Tracking/Implementation/recordTexts.h"

#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace Tracking {

bool addDifference(const LanguageTexts& texts, const LanguageText& text,
    std::vector<SourceDifference>& out) {
    const Term& term = texts.terms()[text.term];
    if(!term.source.data())
        return text.text.isEmpty();
    const SourceState state =
        texts.record().compare(text.key, text.text, term.source);
    if(state != SourceState::Same)
        out.push_back(
            {text.term, term.key, term.path, text.text, term.source, state});
    return true;
}

namespace {

/* Somebody may bring the term of a translation back. Known ones stay known
   after their keys left the file of the source texts. */
bool mayReturn(const TranslationRecord& record, Containers::StringView code,
    const LanguageText& text) {
    if(text.term != TextMoves::None || !text.text.data())
        return false;
    const bool isBlank = text.text.isEmpty() || text.text == "None";
    return (record.hasSource(text.key) && !isBlank) ||
        record.hasTranslation(code, text.key, text.text);
}

}

void recordAsRead(TranslationRecord& record, Containers::StringView code,
    bool isDefault, const LanguageText& text) {
    const bool isTaken = text.kind == TextKind::Text;
    if(isDefault) {
        /* What isn't taken stays a difference */
        if(isTaken)
            record.addSource(text.key, text.text);
        else
            record.keepSource(text.key);
    } else if(isTaken)
        record.addTranslation(text.key, text.text, text.origin);
    else if(mayReturn(record, code, text))
        record.addTranslation(
            text.key, text.text, record.origin(code, text.key, text.text, {}));
    else if(text.kind != TextKind::WrongType)
        record.addMissing(text.key);
}

void recordExport(TranslationRecord& record, const OrrelinEditor& editor,
    Containers::StringView code, const std::vector<Term>& terms,
    const OriginFunction& originOf) {
    if(editor.project["settings/localization/defaultLanguage"].asString() ==
        code) {
        record.beginSources(code);
        for(const Term& term: terms)
            if(term.isTranslated)
                record.addSource(term.key, term.source);
        return;
    }
    record.beginTranslations(code);
    forEachTranslation(terms,
        editor.localization->translations[Containers::String{code}],
        [&](const Term& term, Containers::StringView translation) {
            if(translation.data())
                record.addTranslation(
                    term.key, translation, originOf(term, translation));
            else
                record.addMissing(term.key);
        });
}

void forEachTranslation(const std::vector<Term>& terms,
    const TranslationMap& translations,
    const std::function<void(const Term&, Containers::StringView)>& function) {
    /* Both are in the same order */
    auto next = translations.begin();
    for(const Term& term: terms) {
        if(!term.isTranslated)
            continue;
        while(next != translations.end() && StrLess{}(next->first, term.key))
            ++next;
        const bool isFound = next != translations.end() &&
            next->first == term.key && next->second;
        function(term,
            isFound ? Containers::StringView{*next->second}
                    : Containers::StringView{});
    }
}

}}
