#include <algorithm>
#include <limits>
#include <utility>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "checks/Rules.h"
#include "project/ObjectNames.h"
#include "project/StateReader.h"
#include "project/words.h"
#include "terminal/JsonList.h"
#include "terminal/Messages.h"
#include "terminal/Table.h"

namespace OrrelinEngine { namespace Host {

namespace {

struct MissingText {
    std::size_t term;
    TextState state;
    /* Of an outdated translation, as far as it's known */
    Containers::String before;
};

struct LanguageTextsLeft {
    ProjectLanguage language;
    /* Those of an object in a row */
    std::vector<MissingText> texts;
};

struct Left {
    /* Valid until the project changes */
    std::vector<Term> terms;
    std::vector<LanguageTextsLeft> languages;
    bool areFilesFine = true;

    std::size_t words(const LanguageTextsLeft& language) {
        std::size_t out = 0;
        for(const MissingText& text: language.texts)
            out += words(text);
        return out;
    }

    std::size_t words(const MissingText& text) {
        return _words.of(terms, text.term);
    }

private:
    TermWords _words;
};

bool isAsked(const ProjectLanguage& language, const Codes& codes) {
    if(language.isDefault)
        return false;
    return codes.empty()
        ? !isPseudoLanguage(language.code)
        : std::find(codes.begin(), codes.end(), language.code) != codes.end();
}

/* Puts the texts of each object in a row, in the order of their keys */
void sortByObject(
    const std::vector<Term>& terms, std::vector<MissingText>& texts) {
    std::stable_sort(texts.begin(), texts.end(),
        [&](const MissingText& a, const MissingText& b) {
            return StrLess{}(
                objectPath(terms[a.term].path), objectPath(terms[b.term].path));
        });
}

void findLeft(Project& project, const Codes& codes, Left& out) {
    out = {};
    const ProjectTexts all{project};
    StateReader reader{
        project, all.texts, std::numeric_limits<std::size_t>::max()};
    out.areFilesFine = readTexts(project, all.texts, false, reader);
    out.terms = all.terms;
    std::map<Containers::String, std::map<std::size_t, std::uint32_t>, StrLess>
        origins;
    for(const OutdatedText& text: reader.outdated())
        origins[text.code][text.term] = text.origin;
    for(const ProjectLanguage& language: project.languages()) {
        if(!isAsked(language, codes))
            continue;
        std::vector<MissingText> texts;
        const auto& known = origins[language.code];
        reader.forEachLeft(
            language.code, [&](std::size_t term, TextState state) {
                if(!all.terms[term].isTranslated ||
                    all.terms[term].source.isEmpty())
                    return;
                texts.push_back({term, state, {}});
                if(state == TextState::Outdated)
                    texts.back().before =
                        project.record().formerSource(known.at(term));
            });
        sortByObject(all.terms, texts);
        out.languages.push_back({language, std::move(texts)});
    }
}

void printJson(ObjectNames& objects, Left& left) {
    JsonList out;
    for(const LanguageTextsLeft& language: left.languages)
        for(const MissingText& text: language.texts) {
            const Term& term = left.terms[text.term];
            out.beginObject();
            out.add("code", language.language.code);
            out.add("key", term.key);
            out.add("state",
                Containers::StringView{
                    text.state == TextState::Missing ? "missing" : "outdated"});
            out.add("source", term.source);
            out.add("words", left.words(text));
            out.add("before",
                text.before.isEmpty() ? Containers::StringView{}
                                      : Containers::StringView{text.before});
            out.add("object", objects.find(term.path));
            out.add("path", term.path);
            out.endObject();
        }
    out.print();
}

void printText(const Term& term, const MissingText& text) {
    const Containers::StringView object = objectPath(term.path);
    const Containers::StringView place = object.isEmpty()
        ? term.path
        : term.path.exceptPrefix(object.size() + 1);
    const bool isMissing = text.state == TextState::Missing;
    printCut(Utility::format(
        "  {}  {}  {}", term.key, isMissing ? "missing" : "outdated", place));
    if(!text.before.isEmpty())
        printCut("    was: " + text.before);
    printCut((isMissing ? "    " : "    is:  ") + term.source);
}

void printTexts(
    ObjectNames& objects, const Left& left, const LanguageTextsLeft& language) {
    if(language.texts.empty())
        return;
    printLine(Utility::format(
        "{} ({})", language.language.name, language.language.code));
    bool isFirst = true;
    Containers::StringView object;
    for(const MissingText& text: language.texts) {
        const Term& term = left.terms[text.term];
        const Containers::StringView path = objectPath(term.path);
        if(std::exchange(isFirst, false) || path != object) {
            object = path;
            const Containers::StringView name = objects.find(term.path);
            printCut(path.isEmpty()  ? Containers::String{"Project"}
                    : name.isEmpty() ? Containers::String{path}
                                     : Utility::format("{} ({})", name, path),
                Style::Bold);
        }
        printText(term, text);
    }
    printLine();
}

void printSum(Left& left) {
    Table table{{{"code"}, {"language"}, {"missing", ColumnKind::Number},
        {"outdated", ColumnKind::Number}, {"words", ColumnKind::Number}}};
    for(const LanguageTextsLeft& language: left.languages) {
        const std::size_t outdated =
            std::size_t(std::count_if(language.texts.begin(),
                language.texts.end(), [](const MissingText& text) {
                    return text.state == TextState::Outdated;
                }));
        table.add({{language.language.code}, {language.language.name},
            {Utility::format("{}", language.texts.size() - outdated)},
            {Utility::format("{}", outdated)},
            {Utility::format("{}", left.words(language))}});
    }
    table.print();
}

}

int listMissing(const ProjectOptions& options, const Codes& codes, bool json) {
    Project project;
    Left left;
    if(!project.read(options, [&](Project& p) {
           for(const Containers::String& code: codes)
               if(!p.checkLanguage(code))
                   return false;
           findLeft(p, codes, left);
           return true;
       }))
        return Failure;
    ObjectNames objects{project};
    if(json)
        printJson(objects, left);
    else if(left.languages.empty())
        printLine("There is no language to translate to; 'add' adds one.");
    else {
        for(const LanguageTextsLeft& language: left.languages)
            printTexts(objects, left, language);
        printSum(left);
    }
    return left.areFilesFine ? Success : Failure;
}

}}
