#include "RuleKinds.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>
#include <uninorm.h>
#include <unistr.h>
#include <unictype.h>

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;
using rapidjson::Value;

typedef std::vector<std::string> Strings;

constexpr std::size_t MaxNamed = 3;

Containers::StringView view(const Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

/* A parameter, null if the row lacks it */
const Value* parameter(const Value& row, const char* name) {
    const auto found = row.FindMember(name);
    return found == row.MemberEnd() ? nullptr : &found->value;
}

std::optional<Pattern> pattern(const Value& row, const char* name) {
    const Value* const value = parameter(row, name);
    return value ? std::optional<Pattern>{Pattern{view(*value)}} : std::nullopt;
}

/* Calls the function with each code point and its bytes */
template<class F> void forEachCodePoint(Containers::StringView text, F&& each) {
    const char* at = text.begin();
    while(at != text.end()) {
        ucs4_t code;
        const int size =
            u8_mbtouc(&code, reinterpret_cast<const std::uint8_t*>(at),
                std::size_t(text.end() - at));
        each(code, Containers::StringView{at, std::size_t(size)});
        at += size;
    }
}

/* All bytes from one on */
Bytes bytesFrom(std::size_t first) {
    Bytes out;
    for(std::size_t i = first; i != out.size(); ++i)
        out[i] = true;
    return out;
}

/* The text without what isn't looked at */
class Outside {
public:
    explicit Outside(const Value& row, const char* name = "outside"):
        _pattern{pattern(row, name)} {}

    Containers::StringView strip(Containers::StringView text,
        const Bytes& bytes, std::string& storage) const {
        if(!_pattern || !_pattern->mayMatch(bytes))
            return text;
        storage = _pattern->without(text);
        return storage;
    }

private:
    std::optional<Pattern> _pattern;
};

/* Those of a that b doesn't have, in their order */
Strings lacking(const Strings& a, const Strings& b) {
    std::unordered_map<std::string, std::size_t> counts;
    for(const std::string& value: b)
        ++counts[value];
    Strings out;
    for(const std::string& value: a) {
        const auto found = counts.find(value);
        if(found == counts.end() || found->second == 0)
            out.push_back(value);
        else
            --found->second;
    }
    return out;
}

std::string named(const char* what, const Strings& values) {
    std::string out;
    if(values.empty())
        return out;
    out = what;
    for(std::size_t i = 0; i != std::min(values.size(), MaxNamed); ++i)
        out += ' ' + values[i];
    if(values.size() > MaxNamed)
        out += " …";
    return out;
}

/* The value of a language or of the one that it's a variant of, null if there
   is none */
const Value* ofLanguage(const Value* values, Containers::StringView code) {
    while(values && !code.isEmpty()) {
        const auto found = values->FindMember(
            Value{rapidjson::StringRef(code.data(), code.size())});
        if(found != values->MemberEnd())
            return &found->value;
        const char* const end = code.findLastOr('-', code.begin()).begin();
        code = code.prefix(end);
    }
    return nullptr;
}

/* The matches of a pattern in both texts are the same, in any order */
class SameMatches: public RuleKind {
public:
    explicit SameMatches(const Value& row):
        _pattern{view(row["pattern"])}, _ignore{pattern(row, "ignore")},
        _exceptKeys{pattern(row, "exceptKeys")},
        _mayLose{pattern(row, "mayLose")}, _outside{row}, _outsideSource{row,
                                                              "outsideSource"},
        _isOnce{row.HasMember("once")}, _isCounted{row.HasMember("counted")} {
        if(const Value* const optional = parameter(row, "optional")) {
            _optionalKey = pattern(*optional, "key");
            _optionalMatch = pattern(*optional, "match");
        }
        if(const Value* const zeros = parameter(row, "zeros"))
            forEachCodePoint(
                view(*zeros), [&](ucs4_t code, Containers::StringView) {
                    _zeros.push_back(code);
                });
    }

    std::string find(const ScannedText& text) const override {
        const bool isPossible = _pattern.mayMatch(text.sourceBytes) ||
            _pattern.mayMatch(text.translationBytes);
        if(!isPossible || (_exceptKeys && _exceptKeys->matches(text.key)))
            return {};
        std::string storage;
        const Strings before = matches(
            _outsideSource.strip(text.source, text.sourceBytes, storage),
            text.sourceBytes);
        const Strings now = matches(text.translation, text.translationBytes);
        if(before == now)
            return {};
        if(_isCounted)
            return before.size() == now.size() ? ""
                                               : std::to_string(now.size()) +
                    " instead of " + std::to_string(before.size());
        const Strings lost = withoutOptional(text.key, lacking(before, now));
        const Strings added = withoutOptional(text.key, lacking(now, before));
        return isFree(lost, added) ? ""
                                   : named("lacks", lost) +
                (lost.empty() || added.empty() ? "" : ", ") +
                named("adds", added);
    }

private:
    Strings matches(Containers::StringView text, const Bytes& bytes) const {
        Strings out;
        if(!_pattern.mayMatch(bytes))
            return out;
        std::set<std::string> known;
        std::string storage;
        _pattern.forEachMatch(_outside.strip(text, bytes, storage),
            [&](Containers::StringView match, Containers::StringView) {
                std::string value =
                    _ignore ? _ignore->without(match) : std::string{match};
                if(!_zeros.empty())
                    value = withPlainDigits(value);
                if(!_isOnce || known.insert(value).second)
                    out.push_back(std::move(value));
            });
        return out;
    }

    /* Words may stand for numbers */
    bool isFree(const Strings& lost, const Strings& added) const {
        return _mayLose &&
            (lost.empty() ||
                (added.empty() &&
                    std::all_of(lost.begin(), lost.end(),
                        [&](const std::string& match) {
                            return _mayLose->matches(match);
                        })));
    }

    std::string withPlainDigits(const std::string& text) const {
        std::string out;
        forEachCodePoint(text, [&](ucs4_t code, Containers::StringView bytes) {
            const auto zero =
                std::find_if(_zeros.begin(), _zeros.end(), [&](ucs4_t first) {
                    return code >= first && code <= first + 9;
                });
            if(zero == _zeros.end())
                out.append(bytes.data(), bytes.size());
            else
                out += char('0' + (code - *zero));
        });
        return out;
    }

    Strings withoutOptional(Containers::StringView key, Strings&& all) const {
        if(_optionalKey && !all.empty() && _optionalKey->matches(key))
            all.erase(std::remove_if(all.begin(), all.end(),
                          [&](const std::string& match) {
                              return _optionalMatch->matches(match);
                          }),
                all.end());
        return std::move(all);
    }

    Pattern _pattern;
    std::optional<Pattern> _ignore, _exceptKeys, _mayLose, _optionalKey,
        _optionalMatch;
    Outside _outside, _outsideSource;
    std::vector<ucs4_t> _zeros;
    bool _isOnce, _isCounted;
};

/* Both texts have a mark of the same meaning at an edge, or none */
class SameEdge: public RuleKind {
public:
    explicit SameEdge(const Value& row, bool isEnd):
        _row(row), _outside{row}, _isEnd{isEnd} {
        if(const Value* const passed = parameter(row, "passOver"))
            forEachCodePoint(
                view(*passed), [&](ucs4_t, Containers::StringView bytes) {
                    _passed.push_back(bytes);
                });
        _source = marksOf({});
    }

    std::string find(const ScannedText& text) const override {
        if(_ofLanguage.code != text.code)
            _ofLanguage = marksOf(text.code);
        const Mark before = at(_source, text.source, text.sourceBytes);
        const Mark now =
            at(_ofLanguage, text.translation, text.translationBytes);
        if(before.meaning == now.meaning || isFree(before, now))
            return {};
        const std::string old = '"' + std::string{before.text} + '"';
        const std::string found = '"' + std::string{now.text} + '"';
        return before.text.isEmpty() ? "adds " + found
            : now.text.isEmpty()     ? "lacks " + old
                                     : found + " instead of " + old;
    }

private:
    struct Mark {
        Containers::StringView meaning;
        Containers::StringView text;
    };

    /* Those of a language, which follow each other in most checks */
    struct Marks {
        Containers::String code;
        std::vector<Mark> all;
        /* That may be left out */
        Containers::StringView optional;
        /* Which a text has at its edge if it has a mark or what is passed
           over; most texts don't */
        Bytes edges;
    };

    Marks marksOf(Containers::StringView code) const {
        Marks out{code, {}, {}, {}};
        /* Those of the language may mean another thing elsewhere */
        const Value* const own = ofLanguage(parameter(_row, "languages"), code);
        for(const auto& general: _row["marks"].GetObject()) {
            const Value* const marks =
                own ? parameter(*own, general.name.GetString()) : nullptr;
            for(const Value& mark: (marks ? *marks : general.value).GetArray())
                out.all.push_back({view(general.name), view(mark)});
        }
        if(const Value* const free =
                ofLanguage(parameter(_row, "optional"), code))
            out.optional = view(*free);
        for(const Mark& mark: out.all)
            out.edges[edgeOf(mark.text)] = true;
        for(const Containers::StringView character: _passed)
            out.edges[edgeOf(character)] = true;
        return out;
    }

    unsigned char edgeOf(Containers::StringView text) const {
        return static_cast<unsigned char>(text[_isEnd ? text.size() - 1 : 0]);
    }

    bool isAt(Containers::StringView text, Containers::StringView mark) const {
        return !text.isEmpty() && edgeOf(text) == edgeOf(mark) &&
            (_isEnd ? text.hasSuffix(mark) : text.hasPrefix(mark));
    }

    bool isFree(const Mark& before, const Mark& now) const {
        const Containers::StringView free = _ofLanguage.optional;
        return !free.isEmpty() &&
            (before.meaning.isEmpty() || before.meaning == free) &&
            (now.meaning.isEmpty() || now.meaning == free);
    }

    Containers::StringView withoutPassed(Containers::StringView text) const {
        for(bool isPassed = true; isPassed;) {
            isPassed = false;
            for(const Containers::StringView character: _passed)
                if(isAt(text, character)) {
                    isPassed = true;
                    text = _isEnd ? text.exceptSuffix(character.size())
                                  : text.exceptPrefix(character.size());
                }
        }
        return text;
    }

    Mark at(const Marks& marks, Containers::StringView text,
        const Bytes& bytes) const {
        std::string storage;
        text = _outside.strip(text, bytes, storage);
        if(text.isEmpty() || !marks.edges[edgeOf(text)])
            return {};
        text = withoutPassed(text);
        for(const Mark& mark: marks.all)
            if(isAt(text, mark.text))
                return mark;
        return {};
    }

    const Value& _row;
    Outside _outside;
    bool _isEnd;
    std::vector<Containers::StringView> _passed;
    Marks _source;
    mutable Marks _ofLanguage;
};

/* Each opening sign has its closing one, at least if that's so in the source */
class Balanced: public RuleKind {
public:
    explicit Balanced(const Value& row):
        _open{view(row["open"])}, _close{view(row["close"])} {}

    std::string find(const ScannedText& text) const override {
        if(isBalanced(text.translation, text.translationBytes) ||
            !isBalanced(text.source, text.sourceBytes))
            return {};
        return std::string{_open} + " and " + std::string{_close} +
            " don't match";
    }

private:
    bool isBalanced(Containers::StringView text, const Bytes& bytes) const {
        const char open = _open[0], close = _close[0];
        if(!bytes[static_cast<unsigned char>(open)] &&
            !bytes[static_cast<unsigned char>(close)])
            return true;
        long depth = 0;
        for(const char c: text) {
            depth += (c == open) - (c == close);
            if(depth < 0)
                return false;
        }
        return depth == 0;
    }

    Containers::StringView _open, _close;
};

/* No matches but those that the source has, too */
class Never: public RuleKind {
public:
    explicit Never(const Value& row): _pattern{view(row["pattern"])} {}

    std::string find(const ScannedText& text) const override {
        Strings found;
        if(_pattern.mayMatch(text.translationBytes))
            _pattern.forEachMatch(text.translation,
                [&](Containers::StringView match, Containers::StringView) {
                    if(std::search(text.source.begin(), text.source.end(),
                           match.begin(), match.end()) != text.source.end())
                        return;
                    std::string name = nameOf(match);
                    if(std::find(found.begin(), found.end(), name) ==
                        found.end())
                        found.push_back(std::move(name));
                });
        return named("has", found);
    }

private:
    static std::string nameOf(Containers::StringView match) {
        ucs4_t code = 0;
        forEachCodePoint(
            match, [&](ucs4_t first, Containers::StringView) { code = first; });
        char out[16];
        std::snprintf(out, sizeof out, "U+%04X", unsigned(code));
        return out;
    }

    Pattern _pattern;
};

/* All texts that are nested are there */
class References: public RuleKind {
public:
    explicit References(const Value& row, const RuleContext& context):
        _pattern{view(row["pattern"])}, _context(context) {}

    std::string find(const ScannedText& text) const override {
        Strings missing;
        if(_context.hasKey && _pattern.mayMatch(text.translationBytes))
            _pattern.forEachMatch(text.translation,
                [&](Containers::StringView, Containers::StringView key) {
                    if(!_context.hasKey(key))
                        missing.emplace_back(key);
                });
        return named("no key", missing);
    }

private:
    Pattern _pattern;
    const RuleContext& _context;
};

/* Letters, syllables and signs that normalization neither changes nor combines
   with each other. To look for others takes a tenth of the time that it takes
   to normalize a text. */
bool isSurelyNormal(Containers::StringView text) {
    static constexpr struct {
        ucs4_t first, last;
    } Ranges[]{{0, 0x2ff}, {0x400, 0x482}, {0x48a, 0x52f}, {0x5d0, 0x5ea},
        {0x620, 0x64a}, {0x2010, 0x2027}, {0x3001, 0x3029}, {0x3041, 0x3096},
        {0x30a1, 0x30fa}, {0x4e00, 0x9fff}, {0xac00, 0xd7a3}, {0xff01, 0xff5e}};
    bool out = true;
    forEachCodePoint(text, [&](ucs4_t code, Containers::StringView) {
        std::size_t i = 0;
        while(i != std::size(Ranges) - 1 && code > Ranges[i].last)
            ++i;
        out = out && code >= Ranges[i].first && code <= Ranges[i].last;
    });
    return out;
}

class Normalized: public RuleKind {
public:
    std::string find(const ScannedText& text) const override {
        /* Below U+0300, which begins with this byte, all is normal */
        static const Bytes combining = bytesFrom(0xcc);
        if((text.translationBytes & combining).none() ||
            isSurelyNormal(text.translation))
            return {};
        const auto* const bytes =
            reinterpret_cast<const std::uint8_t*>(text.translation.data());
        std::size_t size = _buffer.size();
        std::uint8_t* const normal = u8_normalize(
            UNINORM_NFC, bytes, text.translation.size(), _buffer.data(), &size);
        if(!normal)
            return {};
        const bool isSame =
            Containers::StringView{reinterpret_cast<const char*>(normal),
                size} == text.translation;
        if(normal != _buffer.data())
            std::free(normal);
        return isSame ? "" : "not normalized";
    }

private:
    mutable std::vector<std::uint8_t> _buffer = std::vector<std::uint8_t>(4096);
};

Containers::StringView primary(Containers::StringView code) {
    return code.prefix(code.findOr('-', code.end()).begin());
}

/* Not the source, if that has enough words to be sure that it's translated.
   Variants of a language have many texts in common. */
class Differs: public RuleKind {
public:
    explicit Differs(const Value& row, const RuleContext& context):
        _pattern{view(row["pattern"])}, _outside{row},
        _minimum{row["minimum"].GetUint()}, _context(context) {}

    std::string find(const ScannedText& text) const override {
        if(text.source != text.translation ||
            primary(text.code) == primary(_context.sourceCode))
            return {};
        std::size_t count = 0;
        std::string storage;
        _pattern.forEachMatch(
            _outside.strip(text.source, text.sourceBytes, storage),
            [&](Containers::StringView, Containers::StringView) { ++count; });
        return count < _minimum ? "" : "not translated";
    }

private:
    Pattern _pattern;
    Outside _outside;
    std::size_t _minimum;
    const RuleContext& _context;
};

/* Counts characters without those that combine with others */
class Growth: public RuleKind {
public:
    explicit Growth(const Value& row, const RuleContext& context):
        _limits(row["limits"]), _context(context) {}

    std::string find(const ScannedText& text) const override {
        const std::size_t before = lengthOf(text.source, text.sourceBytes);
        const double limit = double(before) * (100.0 + percent(before));
        /* Most are short enough with the combining characters counted, which
           takes no tables */
        if(!before || double(codePointCount(text.translation)) * 100.0 <= limit)
            return {};
        const std::size_t now =
            lengthOf(text.translation, text.translationBytes);
        return double(now) * 100.0 <= limit ? ""
                                            : std::to_string(now) +
                " characters instead of " + std::to_string(before);
    }

private:
    static std::size_t codePointCount(Containers::StringView text) {
        return std::size_t(std::count_if(text.begin(), text.end(),
            [](char c) { return (c & '\xc0') != '\x80'; }));
    }

    static std::size_t lengthOf(
        Containers::StringView text, const Bytes& bytes) {
        static const Bytes aboveAscii = bytesFrom(0x80);
        if((bytes & aboveAscii).none())
            return text.size();
        std::size_t out = 0;
        forEachCodePoint(text, [&](ucs4_t code, Containers::StringView) {
            out += code < 0x300 ||
                !uc_is_general_category_withtable(code, UC_CATEGORY_MASK_M);
        });
        return out;
    }

    double percent(std::size_t length) const {
        if(_context.maxGrowth)
            return *_context.maxGrowth;
        for(const Value& limit: _limits.GetArray())
            if(!limit.HasMember("upTo") || length <= limit["upTo"].GetUint())
                return limit["percent"].GetDouble();
        return 0.0;
    }

    const Value& _limits;
    const RuleContext& _context;
};

}

std::unique_ptr<RuleKind> makeRuleKind(
    const Value& row, const RuleContext& context) {
    const Containers::StringView kind = view(row["kind"]);
    if(kind == "sameMatches"_s)
        return std::make_unique<SameMatches>(row);
    if(kind == "sameStart"_s || kind == "sameEnd"_s)
        return std::make_unique<SameEdge>(row, kind == "sameEnd"_s);
    if(kind == "balanced"_s)
        return std::make_unique<Balanced>(row);
    if(kind == "never"_s)
        return std::make_unique<Never>(row);
    if(kind == "references"_s)
        return std::make_unique<References>(row, context);
    if(kind == "normalized"_s)
        return std::make_unique<Normalized>();
    if(kind == "differs"_s)
        return std::make_unique<Differs>(row, context);
    CORRADE_ASSERT(kind == "growth"_s, "makeRuleKind(): no kind" << kind, {});
    return std::make_unique<Growth>(row, context);
}

}}
