#include "LanguageTable.h"

#include <algorithm>
#include <string>
#include <vector>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "terminal/editDistance.h"

namespace OrrelinEngine { namespace Host {

namespace {

constexpr std::size_t SuggestionCount = 3;

/* As it's typed by someone in a hurry: small letters without the accents that
   are in names of languages */
std::string folded(Containers::StringView text) {
    static constexpr struct {
        const char* accented;
        char plain;
    } Letters[]{{"ā", 'a'}, {"å", 'a'}, {"ü", 'u'}, {"’", '\''}};

    std::string out{text};
    for(const auto& letter: Letters) {
        const std::string accented{letter.accented};
        for(std::size_t at; (at = out.find(accented)) != std::string::npos;)
            out.replace(at, accented.size(), 1, letter.plain);
    }
    for(char& c: out) {
        if(c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
        else if(c == '_')
            c = '-';
    }
    return out;
}

/* How far what was typed is from a language. Best are its code or name in
   other letters, then the beginning of its name and its region left out or
   another one, then what differs in the fewest letters. */
std::size_t distance(const std::string& typed, const Language& language) {
    const std::string code = folded(language.code);
    const std::string name = folded(language.name);
    if(typed == code || typed == name)
        return 0;
    if(name.compare(0, typed.size(), typed) == 0 ||
        typed.substr(0, typed.find('-')) == code)
        return 1;
    return 1 + std::min(editDistance(typed, code), editDistance(typed, name));
}

}

Containers::ArrayView<const Language> allLanguages() {
    return {AllLanguages, AllLanguageCount};
}

bool matches(const Language& language, Containers::StringView text) {
    const std::string part = folded(text);
    return folded(language.code).find(part) != std::string::npos ||
        folded(language.name).find(part) != std::string::npos;
}

Containers::String suggestion(Containers::StringView typed,
    Containers::ArrayView<const Language> languages) {
    if(typed.isEmpty() || languages.isEmpty())
        return {};
    const std::string text = folded(typed);
    std::vector<std::pair<std::size_t, const Language*>> ranking;
    for(const Language& language: languages)
        ranking.emplace_back(distance(text, language), &language);
    std::stable_sort(ranking.begin(), ranking.end(),
        [](const auto& a, const auto& b) { return a.first < b.first; });

    /* Not if most letters are others */
    const std::size_t limit = 1 + (text.size() + 1) / 2;
    std::string out;
    for(std::size_t i = 0; i != std::min(ranking.size(), SuggestionCount) &&
        ranking[i].first <= limit;
        ++i)
        out += std::string{Utility::format("{}{} ({})", i ? ", " : "",
            ranking[i].second->code, ranking[i].second->name)};
    if(out.empty())
        return {};
    return Utility::format("; did you mean {}?", Containers::StringView{out});
}

}}
