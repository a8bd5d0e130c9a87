#include "Tracking/LanguageTexts.h"

#include <Corrade/Utility/Json.h>

#include "Tracking/Implementation/StrayTranslations.h"
#include "Tracking/Implementation/TermFinder.h"
#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace Tracking {

namespace {

typedef Utility::JsonToken::Type Type;

TextKind kindOf(Containers::StringView text, Containers::StringView source) {
    return text.isEmpty() && !source.isEmpty()              ? TextKind::Empty
        : text == "None" && source != text && source.data() ? TextKind::None
                                                            : TextKind::Text;
}

}

LanguageTexts::LanguageTexts(const OrrelinEditor& editor,
    const std::vector<Term>& terms, const TranslationRecord& record):
    _terms(terms),
    _record(record), _moves{editor, terms, record},
    _defaultLanguage{
        editor.project["settings/localization/defaultLanguage"].asString()} {}

void LanguageTexts::forEach(Containers::StringView code,
    const Utility::JsonIterator& texts, bool allowsEmpty,
    const std::function<void(const LanguageText&)>& function) const {
    const bool isDefault = code == _defaultLanguage;
    TermFinder finder{_terms};
    StrayTranslations strays{_record, code, texts};
    for(const Utility::JsonObjectItem item: texts->asObject()) {
        LanguageText out{item.key(), {}, TextKind::Missing, TextMoves::None,
            false, 0, false};
        const Type type = item.value().type();
        if(type == Type::String)
            out.text = item.value().asString();
        else if(type != Type::Null) {
            out.kind = TextKind::WrongType;
            function(out);
            continue;
        }

        out.term = _moves.target(out.key);
        out.isMoved = out.term != TextMoves::None;
        if(!out.isMoved) {
            out.term = finder.find(out.key);
            const bool isDisplaced = _moves.isTarget(out.term);
            if(isDisplaced || out.term == TextMoves::None ||
                !_terms[out.term].isTranslated) {
                out.term = TextMoves::None;
                out.kind =
                    isDisplaced ? TextKind::Displaced : TextKind::Unknown;
                function(out);
                continue;
            }
        }

        if(type == Type::String) {
            const Containers::StringView source = _terms[out.term].source;
            out.kind = kindOf(out.text, source);
            if(out.kind != TextKind::Text &&
                (allowsEmpty ||
                    _record.hasTranslation(code, out.key, out.text)))
                out.kind = TextKind::Text;
            if(out.kind == TextKind::Text && !isDefault) {
                out.origin =
                    _record.knownOrigin(code, out.key, out.text, source);
                if(!out.origin)
                    out.origin = strays.origin(out.key, out.text);
                if(!out.origin)
                    out.origin = _record.originOfNew(out.key, source);
                out.isOutdated =
                    out.origin != TranslationRecord::originOf(source);
            }
        }
        function(out);
    }
}

}}
