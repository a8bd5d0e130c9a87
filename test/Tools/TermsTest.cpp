#include "Project.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

TEST(TermsTest, exists) {
    Project project{R"({"texts": {
        "alpha": "A", "alpha-b": "B",
        "off": "", "off_translate": false,
        "on": "", "on_translate": true,
        "odd": "", "odd_translate": "true"
    }})"};
    project.terms().emplace("gone", "/objects/gone/components/0/text/text");
    project.setTranslations(R"({"de": {"translated": "only"}})");

    /* A value that isn't there doesn't matter; "true" is no boolean */
    const std::pair<const char*, bool> data[]{{"alpha", true},
        {"alpha-", false}, {"", false}, {"off", false}, {"on", true},
        {"odd", false}, {"off_translate", false}, {"translated", false},
        {"gone", true}};
    for(const auto& i: data)
        EXPECT_EQ(termExists(project.editor(), i.first), i.second) << i.first;
}

std::string dump(const TermPathMap& terms) {
    std::string out;
    for(const auto& i: terms)
        out += text(i.first) + "=" + text(i.second) + " ";
    return out;
}

TEST(TermsTest, rename) {
    const char* const translations =
        R"({"de":{"a":"A","b":"B","old":"Alt"},"fr":{"a":null},"it":{"b":"Bi"}})";
    const char* const terms = "a=/texts/a b=/texts/b ";
    const char* const strings = "/texts/a=a /texts/b=b ";

    const struct {
        const char *name, *from, *to, *terms, *strings, *translations;
    } data[]{
        {"to itself", "a", "a", terms, strings, translations},
        {"unknown", "c", "d", terms, strings, translations},
        {"to a new key", "a", "c", "b=/texts/b c=/texts/a ",
            "/texts/a=c /texts/b=b ",
            R"({"de":{"b":"B","c":"A","old":"Alt"},"fr":{"c":null},"it":{"b":"Bi"}})"},
        {"to a taken key", "a", "b", "b=/texts/b ", "/texts/a=b /texts/b=b ",
            R"({"de":{"b":"B","old":"Alt"},"fr":{"b":null},"it":{"b":"Bi"}})"},
        {"to the empty key", "b", "", "=/texts/b a=/texts/a ",
            "/texts/a=a /texts/b= ",
            R"({"de":{"":"B","a":"A","old":"Alt"},"fr":{"a":null},"it":{"":"Bi"}})"},
        {"only translations, to a taken key", "old", "a", terms, strings,
            R"({"de":{"a":"A","b":"B"},"fr":{"a":null},"it":{"b":"Bi"}})"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        Project project{R"({"texts": {"a": "1", "b": "2"}})"};
        project.setTranslations(translations);
        /* The values that the caller knows needn't be all of them */
        TermMap found{{"/texts/b", "b"}};
        if(i.to != std::string{"c"})
            found.emplace("/texts/a", "a");

        renameTerm(project.editor(), i.from, i.to, found);
        EXPECT_EQ(dump(project.terms()), i.terms);
        EXPECT_EQ(dump({found.begin(), found.end()}), i.strings);
        EXPECT_EQ(project.translationsText(), i.translations);
    }
}

/* Both names are those that the tables hold, and too long to be kept in place
   when a string is moved */
TEST(TermsTest, renameWithKeysOfTheTables) {
    const std::string a(100, 'a');
    const std::string b(100, 'b');
    Project project{R"({"texts": {")" + a + R"(": "", ")" + b + R"(": ""}})"};
    for(const char* const language: {"de", "fr"})
        project.setTranslations((std::string{R"({")"} + language + R"(": {")" +
            a + R"(": "A", ")" + b + R"(": "B"}})")
                                    .data());
    TermMap strings{{"/texts/" + a, a}, {"/texts/" + b, b}};

    renameTerm(project.editor(), project.terms().begin()->first,
        strings.at("/texts/" + b), strings);
    EXPECT_EQ(dump(project.terms()), b + "=/texts/" + b + " ");

    const Containers::StringView key =
        project.translations().at("de").begin()->first;
    renameTerm(project.editor(), key, key.prefix(8), strings);
    EXPECT_EQ(dump(project.terms()), "bbbbbbbb=/texts/" + b + " ");
    EXPECT_EQ(project.translationsText(),
        R"({"de":{"bbbbbbbb":"B"},"fr":{"bbbbbbbb":"B"}})");
}

}}
