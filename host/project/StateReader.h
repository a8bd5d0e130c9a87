#ifndef Orrelin_host_project_StateReader_h
#define Orrelin_host_project_StateReader_h

#include <map>
#include <vector>

#include "Translations.h"

namespace OrrelinEngine { namespace Host {

enum class TextState : std::uint8_t { Missing, Translated, Outdated };

struct OutdatedText {
    Containers::String code;
    std::size_t term;
    /* What the translation was made from */
    std::uint32_t origin;
};

/* Looks for translations in all files. Fills nothing of the project, which
   takes less time and memory than reading the translations does. */
class StateReader: public TextVisitor {
public:
    /* Keeps so many outdated texts at most */
    explicit StateReader(
        Project& project, const LanguageTexts& texts, std::size_t maxOutdated);

    bool isWanted(Containers::StringView) override { return true; }
    bool begin(const LanguageSource& source, const LanguageFile& file,
        const Utility::Json& json) override;
    void add(const LanguageText& text) override;

    /* Of a language other than the default one */
    std::size_t count(Containers::StringView code, TextState state) const;

    /* Calls the function with each term, and its state, that isn't translated from what its
       source is now. All of them if the language has no file. */
    template<class F>
    void forEachLeft(Containers::StringView code, F&& function) const {
        const auto found = _all.find(code);
        for(std::size_t i = 0; i != _texts.terms().size(); ++i) {
            const TextState state =
                found == _all.end() ? TextState::Missing : found->second[i];
            if(state != TextState::Translated)
                function(i, state);
        }
    }

    /* In the order of the files */
    const std::vector<OutdatedText>& outdated() const { return _outdated; }

private:
    Project& _project;
    const LanguageTexts& _texts;
    std::size_t _maxOutdated;
    std::vector<OutdatedText> _outdated;
    std::map<Containers::String, std::vector<TextState>, StrLess> _all;
    std::vector<TextState>* _states = nullptr;
    Containers::String _code;
    bool _isDefault = false;
};

}}

#endif
