#include <algorithm>
#include <set>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "project/LanguageFiles.h"
#include "project/Translations.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"
#include "terminal/editDistance.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* Describes the files as they are, but for the translations to confirm. The
   default language's file stays as it's on record, as nothing is imported. */
class ConfirmReader: public TextVisitor {
public:
    explicit ConfirmReader(Project& project, const LanguageTexts& texts,
        Containers::StringView code, const Codes& keys):
        _project(project),
        _texts(texts), _code{code}, _keys{keys.begin(), keys.end()},
        _takesAll{keys.empty()} {}

    bool isWanted(Containers::StringView code) override {
        return code == _code;
    }

    bool begin(const LanguageSource&, const LanguageFile&,
        const Utility::Json&) override {
        _project.record().beginTranslations(_code);
        return true;
    }

    void add(const LanguageText& text) override {
        LanguageText confirmed = text;
        if(text.kind == TextKind::Text) {
            const Term& term = _texts.terms()[text.term];
            const bool isNamed = _keys.erase(term.key);
            if(text.isOutdated && (_takesAll || isNamed)) {
                confirmed.origin =
                    Tracking::TranslationRecord::originOf(term.source);
                ++_count;
            }
        }
        recordAsRead(_project.record(), _code, false, confirmed);
    }

    std::size_t count() const { return _count; }

    /* Keys that have no translation */
    const std::set<Containers::String, StrLess>& remaining() const {
        return _keys;
    }

private:
    Project& _project;
    const LanguageTexts& _texts;
    Containers::String _code;
    std::set<Containers::String, StrLess> _keys;
    bool _takesAll;
    std::size_t _count = 0;
};

bool checkConfirmable(Project& project, const Containers::String& code) {
    if(!isFileName(code) || !project.checkLanguage(code))
        return false;
    if(code != project.defaultLanguage())
        return true;
    fail(Utility::format(
        "'{}' is the language of the project's own texts", code));
    return false;
}

}

int confirmTranslations(const ProjectOptions& options,
    Containers::StringView code, const Codes& keys) {
    Project project;
    if(!project.openForWriting(options, "confirm") ||
        !checkConfirmable(project, code))
        return Failure;
    const ProjectTexts all{project};
    ConfirmReader reader{project, all.texts, code, keys};
    if(!readTexts(project, all.texts, false, reader))
        return Failure;
    for(const Containers::String& key: reader.remaining())
        return fail(Utility::format("'{}' has no translation in {}{}", key,
            code, keySuggestion(key, all.terms)));
    project.setRecordedPlace(project.place());
    if(project.hasReadFault() || !project.writeRecord() || !project.commit())
        return Failure;
    printLine(Utility::format("Confirmed {} in {}",
        counted(reader.count(), "outdated translation"), code));
    return Success;
}

}}
