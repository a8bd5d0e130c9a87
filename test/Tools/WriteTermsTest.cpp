#include "Project.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>

#include "vectors.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

std::string text(Containers::ArrayView<const char> content) {
    return {content.data(), content.size()};
}

/* Names and contents of files */
typedef std::vector<std::pair<std::string, std::string>> Files;

Files files(Project& project, const Containers::StringIterable& languages) {
    Containers::Array<Containers::String> names;
    Containers::Array<Containers::Array<char>> contents;
    writeTerms(project.editor(), languages, LocalizationFormat::I18next, names,
        contents);
    EXPECT_EQ(names.size(), contents.size());
    Files out;
    for(std::size_t i = 0; i != names.size(); ++i)
        out.emplace_back(text(names[i]), text(contents[i]));
    return out;
}

/* The terms of each file, without the spaces between */
std::string terms(const Files& files) {
    std::string out;
    for(const auto& file: files) {
        const JsonDocument json = jsonDocument(file.second);
        EXPECT_TRUE(json.IsObject() && json.MemberCount() == 1);
        out += file.first + " " + jsonText(json["translation"]) + "\n";
    }
    return out;
}

TEST(WriteTermsTest, files) {
    typedef std::vector<Containers::StringView> Languages;
    const struct {
        const char *name, *project, *translations;
        Languages languages;
        const char* expected;
    } data[]{
        {"no terms", "{}", R"({"de": {"a": "A"}})", {"de"}, "de.json {}\n"},
        {"default language and others", R"({
            "settings": {"localization": {"defaultLanguage": "en"}},
            "texts": {"a-1": "A one", "a": "A", "number": 1, "apple": "\"",
                "Zebra": ""}
        })",
            R"({
            "en": {"a": "not the text"},
            "de": {"a": "Ah", "a-1": null, "apple": "", "b": "no term",
                "0": "neither"}
        })",
            {"de", "en", "pt-BR", "EN"},
            R"(de.json {"Zebra":null,"a":"Ah","a-1":null,"apple":"","number":null}
en.json {"Zebra":"","a":"A","a-1":"A one","apple":"\"","number":""}
pt-BR.json {"Zebra":null,"a":null,"a-1":null,"apple":null,"number":null}
EN.json {"Zebra":null,"a":null,"a-1":null,"apple":null,"number":null}
)"},
        {"excluded from translation, a language twice", R"({
            "settings": {"localization": {"defaultLanguage": "en"}},
            "texts": {"off": "", "off_translate": false,
                "on": "On", "on_translate": true, "odd": 1, "odd_translate": 1}
        })",
            R"({"de": {"off": "Aus", "on": "An"}})", {"en", "de", "en"},
            R"(en.json {"on":"On"}
de.json {"on":"An"}
en.json {"on":"On"}
)"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        Project project{i.project};
        project.setTranslations(i.translations);
        EXPECT_EQ(
            terms(files(project,
                Containers::arrayView(i.languages.data(), i.languages.size()))),
            i.expected);
    }
}

/* Each is read like any other value at its path, whatever was read before */
TEST(WriteTermsTest, places) {
    Project project{R"({"settings": {
            "localization": {"defaultLanguage": "en"},
            "project": {"name": "The name", "name_translate": true}},
        "": {"settings": {"project": {"name": "of no name"}}}, "top": "At the top",
        "objects": {
            "a": {"components": [
                {"text": {"text": "a0", "text": "second of the name"}},
                {"text": {"text": "a1", "label": "a1 label"}, "none": 1},
                {"te~xt": {"te/xt": "escaped"}}]},
            "ab": {"components": {"0": {"text": {"text": "ab0"}}}},
            "a/b": {"components": [{"text": {"text": "a/b 0"}}]}}})"};
    const char* const paths[]{"/objects/a/components/0/text/text",
        "/objects/a/components/1/text/text",
        "/objects/a/components/1/text/label",
        "/objects/a/components/1/none/text",
        "/objects/a/components/2/te~0xt/te~1xt",
        "/objects/a/components/3/text/text",
        "/objects/gone/components/0/text/text",
        "/objects/a/components/00/text/text",
        "/objects/a/components/-1/text/text",
        "/objects/a/components//text/text",
        "/objects/a/components/4294967296/text/text",
        "/objects/ab/components/0/text/text",
        "/objects/a~1b/components/0/text/text",
        "objects/a/components/0/text/text", "/settings/project/name", "/top",
        "top", "/objects/a", "//settings/project", "/", ""};
    for(const char* path: paths)
        project.terms().emplace(path, path);
    const JsonDocument file = jsonDocument(files(project, {"en"})[0].second);
    for(const char* path: paths)
        EXPECT_EQ(file["translation"][path].GetString(),
            text(project.editor().project[path].asString()))
            << path;
}

TEST(WriteTermsTest, measuredFiles) {
    for(const char* const name: {"emptyTranslation", "mixed"}) {
        const char* const expected = vectors("jsonWriter")[name].GetString();
        const JsonDocument source = jsonDocument(expected);
        Project project{"{}"};
        for(const auto& i: source["translation"].GetObject())
            project.terms().emplace(i.name.GetString(), "/none");
        project.setTranslations(
            (R"({"de": )" + jsonText(source["translation"]) + "}").data());
        EXPECT_EQ(files(project, {"de"})[0].second, expected) << name;
    }
}

/* Read as strictly as any parser does */
TEST(WriteTermsTest, anyCharacterIsReadable) {
    std::string all;
    for(int c = 0; c != 0x80; ++c)
        all += char(c);
    for(const std::string& content: {all, all.substr(1) + all, std::string{},
            std::string(1, '\0'), std::string{"\\u0000 \\n \\\""},
            std::string{"\xc2\x80 \xdf\xbf \xe0\xa0\x80 \xed\x9f\xbf "
                        "\xef\xbf\xbf \xf0\x90\x80\x80 \xf4\x8f\xbf\xbf"}}) {
        Project project{"{}"};
        project.terms().emplace(content, "/none");
        project.translations()["de"].emplace(
            content, Containers::String{content});
        const std::string file = files(project, {"de"})[0].second;
        JsonDocument document;
        document.Parse<rapidjson::kParseValidateEncodingFlag>(
            file.data(), file.size());
        ASSERT_FALSE(document.HasParseError()) << file;
        const auto& term = *document["translation"].MemberBegin();
        EXPECT_EQ(
            term.name, JsonValue(content.data(), unsigned(content.size())));
        EXPECT_EQ(term.value, term.name);
    }
}

}}
