#include <algorithm>
#include <cctype>
#include <regex>
#include <set>
#include <string>
#include <vector>
#include <Corrade/Containers/StringView.h>
#include <gtest/gtest.h>

#include "editor/AllLanguages.h"

namespace OrrelinEngine { namespace {

using Corrade::Containers::StringView;
using Corrade::Containers::StringViewFlag;

std::string string(StringView view) {
    return {view.data(), view.size()};
}

std::string lowercase(std::string text) {
    for(char& c: text)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

/* What a name is sorted by, empty if the rule for some letter isn't known */
std::string sortKey(std::string name) {
    const struct {
        const char *from, *to;
    } replacements[]{{"ā", "a"}, {"å", "a"}, {"ü", "u"}, {"’", ""}};
    for(const auto& replacement: replacements) {
        const std::string from = replacement.from;
        for(std::size_t i; (i = name.find(from)) != std::string::npos;)
            name.replace(i, from.size(), replacement.to);
    }

    for(const char c: name)
        if(static_cast<unsigned char>(c) >= 0x80)
            return {};
    return lowercase(name);
}

const struct KnownLanguage {
    const char *code, *name;
} KnownLanguages[]{
    {"de", "German"},
    {"mi", "Māori"},
    /* Three letters, by coverage and by readers */
    {"fil", "Filipino"},
    {"arz", "Egyptian Arabic"},
    /* Names of their own */
    {"en-GB", "British English"},
    {"es-419", "Latin American Spanish"},
    {"pt-BR", "Brazilian Portuguese"},
    {"zh-Hant", "Traditional Chinese"},
    /* Composed names */
    {"de-DE", "German (Germany)"},
    {"sr-Latn", "Serbian (Latin)"},
    {"zh-HK", "Chinese (Hong Kong)"},
    {"ca-ES-valencia", "Catalan (Spain, Valencian)"},
};

TEST(AllLanguagesTest, known) {
    for(const KnownLanguage& known: KnownLanguages) {
        SCOPED_TRACE(known.code);

        const Language* found = nullptr;
        for(const Language& language: AllLanguages)
            if(language.code == known.code)
                found = &language;
        ASSERT_TRUE(found);
        EXPECT_EQ(string(found->name), known.name);
    }
}

TEST(AllLanguagesTest, rows) {
    const std::regex shape{"[a-z]{2,3}(-[A-Z][a-z]{3})?(-([A-Z]{2}|[0-9]{3}))?"
                           "(-([a-z]{5,8}))?"};

    std::set<std::string> codes;
    std::string before;
    for(const Language& language: AllLanguages) {
        const std::string name = string(language.name);
        const std::string code = string(language.code);
        SCOPED_TRACE(code + ", " + name);

        EXPECT_TRUE(std::regex_match(code, shape));
        /* Have a name in the data, but are withdrawn and undefined */
        EXPECT_NE(code, "sh");
        EXPECT_NE(code, "und");
        EXPECT_TRUE(codes.insert(lowercase(code)).second);

        /* None is there twice */
        const std::string key = sortKey(name);
        EXPECT_LT(before, key);
        before = key;

        for(const StringView view: {language.name, language.code}) {
            EXPECT_TRUE(view.flags() >=
                (StringViewFlag::Global | StringViewFlag::NullTerminated));
            EXPECT_EQ(view.data()[view.size()], '\0');
        }
    }
}

}}
