#include "Findings.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "project/LanguageFiles.h"
#include "project/Translations.h"
#include "project/brokenKeys.h"
#include "shared/StringFunctors.h"
#include "storage/Storage.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

typedef std::unordered_set<Containers::StringView, StrHash, StrEq> Keys;

/* The keys of all terms in the language files, and what i18next finds them by
   given a count and a context */
Keys nestableKeys(const std::vector<Term>& terms) {
    Keys out;
    for(const Term& term: terms) {
        if(!term.isTranslated)
            continue;
        Containers::StringView key = term.key;
        out.insert(key);
        for(int i = 0; i != 2; ++i) {
            key = key.prefix(key.findLastOr('_', key.begin()).begin());
            out.insert(key);
        }
    }
    return out;
}

bool hasRule(
    const std::vector<const Rule*>& rules, Containers::StringView name) {
    return std::find(rules.begin(), rules.end(), findRule(name)) != rules.end();
}

/* Terms with the same source, by the first of them */
class SourceGroups {
public:
    static constexpr std::size_t None = ~std::size_t{};

    explicit SourceGroups(const std::vector<Term>& terms):
        _groups(terms.size(), None) {
        std::unordered_map<Containers::StringView, std::size_t, StrHash, StrEq>
            first;
        for(std::size_t i = 0; i != terms.size(); ++i) {
            if(!terms[i].isTranslated || terms[i].source.isEmpty())
                continue;
            const auto known = first.emplace(terms[i].source, i);
            if(!known.second)
                _groups[i] = _groups[known.first->second] = known.first->second;
        }
    }

    /* None for a term whose source no other one has */
    std::size_t operator[](std::size_t term) const { return _groups[term]; }

private:
    std::vector<std::size_t> _groups;
};

class FindingReader: public TextVisitor {
public:
    explicit FindingReader(Project& project, const LanguageTexts& texts,
        const FindingOptions& options, Findings& out):
        _project(project),
        _texts(texts), _codes(options.codes),
        _out(out), _sourceCode{project.defaultLanguage()},
        _rules{options.rules,
            {_sourceCode, options.maxGrowth,
                [this](Containers::StringView key) { return hasKey(key); }}} {
        if(hasRule(options.rules, "several-translations"))
            _groups.emplace(texts.terms());
    }

    bool isWanted(Containers::StringView code) override {
        return code != _sourceCode && !isPseudoLanguage(code) &&
            (_codes.empty() ||
                std::find(_codes.begin(), _codes.end(), code) != _codes.end());
    }

    bool begin(const LanguageSource& source, const LanguageFile& file,
        const Utility::Json&) override {
        if(!isKnown(_project, file))
            return false;
        ++_out.languageCount;
        _code = file.code;
        _file = file.path;
        _artifact = source.isArchive ? source.path : file.path;
        _isArchive = source.isArchive;
        _begin = _out.texts.size();
        _first.clear();
        return true;
    }

    void add(const LanguageText& text) override {
        if(text.kind != TextKind::Text)
            return;
        ++_out.translationCount;
        const Term& term = _texts.terms()[text.term];
        _found.clear();
        _rules.check({_code, term.key, term.source, text.text},
            [&](const Rule& rule, std::string&& detail) {
                addFinding(rule, std::move(detail), term.source, text.text);
            });
        if(_groups)
            compareWithFirst(term, text);
        if(!_found.empty())
            _out.texts.push_back({_code, term.key, term.path, term.source,
                text.text, _file, _artifact, text.key, {}, std::move(_found)});
    }

    void end() override {
        if(_out.texts.size() != _begin && !_isArchive)
            findPlaces();
    }

private:
    /* Few projects nest texts */
    bool hasKey(Containers::StringView key) {
        if(!_keys)
            _keys = nestableKeys(_texts.terms());
        return _keys->count(key);
    }

    void addFinding(const Rule& rule, std::string&& detail,
        Containers::StringView source, Containers::StringView translation) {
        _found.push_back({&rule, std::move(detail),
            _project.record().isAccepted(
                _code, rule.name, source, translation)});
    }

    void compareWithFirst(const Term& term, const LanguageText& text) {
        static const Rule& rule = *findRule("several-translations");
        const std::size_t group = (*_groups)[text.term];
        if(group == SourceGroups::None)
            return;
        const auto first = _first.emplace(
            group, First{term.key, Containers::String{text.text}});
        const First& other = first.first->second;
        if(!first.second && other.text != text.text)
            addFinding(rule,
                std::string{Utility::format("'{}' has \"{}\"", other.key,
                    shortened(other.text, MaxShown))},
                term.source, text.text);
    }

    void findPlaces() {
        FileContent content;
        if(!_project.readFile(_file, content))
            return;
        /* Both are in the order of the file */
        auto next = _out.texts.begin() + std::ptrdiff_t(_begin);
        forEachPlace(content.content,
            [&](Containers::StringView key, Containers::StringView text,
                const Place& place) {
                if(next != _out.texts.end() && next->fileKey == key &&
                    next->translation == text)
                    (next++)->place = place;
            });
    }

    /* Columns of a text beside which others stand */
    static constexpr std::size_t MaxShown = 50;

    struct First {
        Containers::StringView key;
        Containers::String text;
    };

    Project& _project;
    const LanguageTexts& _texts;
    const Codes& _codes;
    Findings& _out;
    std::optional<Keys> _keys;
    Containers::String _sourceCode;
    RuleSet _rules;
    std::optional<SourceGroups> _groups;
    Containers::String _code, _file, _artifact;
    bool _isArchive = false;
    std::size_t _begin = 0;
    /* The first translations of the groups */
    std::unordered_map<std::size_t, First> _first;
    std::vector<Finding> _found;
};

void addSharedKeys(Project& project, Findings& out) {
    const Rule& rule = *findRule("shared-key");
    const Containers::String code = project.defaultLanguage();
    for(const auto& value: differentSharedTexts(project)) {
        const Containers::StringView shown =
            project.source(project.localization().terms.at(value.second));
        const Containers::StringView other = project.source(value.first);
        out.texts.push_back({code, value.second, value.first, shown, other,
            project.file(), project.file(), {}, {},
            {{&rule, "another text has the key",
                project.record().isAccepted(code, rule.name, shown, other)}}});
    }
}

}

Findings findFaults(Project& project, const FindingOptions& options) {
    Findings out;
    const Codes& codes = options.codes;
    if(hasRule(options.rules, "shared-key") &&
        (codes.empty() ||
            std::find(codes.begin(), codes.end(), project.defaultLanguage()) !=
                codes.end()))
        addSharedKeys(project, out);
    const ProjectTexts all{project};
    FindingReader reader{project, all.texts, options, out};
    out.areFilesFine = readTexts(project, all.texts, false, reader);
    return out;
}

}}
