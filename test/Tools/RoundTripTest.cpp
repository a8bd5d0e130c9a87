#include <cstdint>
#include <set>
#include <vector>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>

#include "Project.h"
#include "Random.h"
#include "TemporaryFolder.h"
#include "editor/AllLanguages.h"
#include "editor/JavaScriptManager.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

/* What is hard on writers and readers of paths and of JSON, and letters */
std::string someText(Random& random) {
    const char* const parts[]{"\"", "\\", "/", "~", "~1", ".", "{}", ":", ",",
        "$", "ü", "日本", "\U00010000", "\U0010ffff", "\u0080", "a", "b",
        "text", "ud83d", " "};
    std::string out;
    for(std::size_t i = random.oneIn(4) ? 0 : random.below(24); i; --i) {
        if(random.oneIn(8))
            out += char(random.below(0x20));
        else
            out += random.oneOf(parts);
    }
    return out;
}

/* Of few possible ones, so that terms meet */
std::string termKey(Random& random) {
    return random.oneIn(2) ? std::string(1, char('a' + random.below(4)))
                           : someText(random);
}

std::string quoted(const std::string& text) {
    return jsonText(JsonValue{text.data(), unsigned(text.size())});
}

/* Members of an object, with what belongs to the first one beside it */
std::string property(Random& random, const std::string& name) {
    std::string out;
    if(!random.oneIn(8))
        out += quoted(name) + ':' +
            (random.oneIn(16) ? "3" : quoted(someText(random))) + ',';
    if(random.oneIn(3))
        out += quoted(name + "_term") + ':' + quoted(termKey(random)) + ',';
    if(random.oneIn(4))
        out += quoted(name + "_translate") +
            (random.oneIn(2) ? ":true," : ":false,");
    return out;
}

std::string component(Random& random) {
    const char* const types[]{"text", "button", "light"};
    const std::string type = quoted(types[random.below(3)]);
    std::string out = "{\"type\":" + type + ',' + type + ":{";
    for(const char* const name: {"text", "label", "a/b~c", "label"})
        out += property(random, name);
    return out + "\"other\":0}}";
}

typedef std::vector<Containers::StringView> Codes;

Codes someLanguages(Random& random) {
    std::set<unsigned int> rows;
    for(unsigned int i = 1 + random.below(4); i; --i)
        rows.insert(random.below(AllLanguageCount));
    Codes out;
    for(const unsigned int row: rows)
        out.push_back(AllLanguages[row].code);
    return out;
}

std::string someProject(Random& random, const Codes& languages) {
    std::string out = R"({"settings":{"project":{)" + property(random, "name") +
        R"("other":0},"localization":{"defaultLanguage":)" +
        quoted(text(languages[random.below(unsigned(languages.size()))])) +
        R"(}},"objects":{)";
    for(unsigned int i = random.oneIn(16) ? 40 : random.below(5); i; --i) {
        out += quoted(someText(random) + std::to_string(i)) +
            R"(:{"components":[)";
        for(unsigned int j = random.below(12); j; --j)
            out += component(random) + ',';
        out += "{}]},";
    }
    out += R"("none":{}},"languages":{)";
    for(const Containers::StringView code: languages)
        out += (code == languages[0] ? "" : ",") + quoted(text(code)) + ":{}";
    return out + "}}";
}

/* Translates some of the terms, and some that aren't there. Returns what the
   files are expected to bring back. */
LanguageTranslations translate(
    OrrelinEditor& editor, Random& random, const Codes& languages) {
    LanguageTranslations out;
    const std::string defaultCode = text(
        editor.project["settings/localization/defaultLanguage"].asString());
    for(const Containers::StringView code: languages) {
        TranslationMap& translations = editor.localization->translations[code];
        for(const auto& term: editor.localization->terms) {
            Containers::Optional<Containers::String> translation;
            if(!random.oneIn(4)) {
                if(!random.oneIn(3))
                    translation = Containers::String{someText(random)};
                translations[term.first] = translation;
            }
            if(code == defaultCode)
                translation =
                    Containers::String{editor.project[term.second].asString()};
            const ValueAccess flag = editor.project[term.second + "_translate"];
            if(!flag.hasValue() || flag.asBool())
                out[code].emplace(term.first, translation);
        }
        out[code];
        translations.emplace(someText(random) + "?", Containers::NullOpt);
    }
    return out;
}

/* As Python and others write it, with escape sequences for all but ASCII */
void escapeFile(const TemporaryFolder& folder, const std::string& name) {
    rapidjson::StringBuffer out;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>,
        rapidjson::ASCII<>>
        writer{out};
    EXPECT_TRUE(jsonDocument(folder.read(name)).Accept(writer));
    folder.write(name, out.GetString());
}

void expectRoundTrip(
    EditorSession& session, const TemporaryFolder& folder, Random& random) {
    const Codes codes = someLanguages(random);
    const std::string project = someProject(random, codes);
    ASSERT_TRUE(session.parse(project));
    const std::string document = jsonText(session.projectFile().document);

    OrrelinEditor& editor = session.editor();
    TermMap strings;
    gatherStrings(editor, strings);
    const LanguageTranslations expected = translate(editor, random, codes);

    const auto languages = Containers::arrayView(codes.data(), codes.size());
    const LocalizationFormat format = LocalizationFormat::I18next;
    const Printed printed;
    exportTerms(editor, languages, folder.path("texts"), format);
    for(const Containers::StringView code: codes)
        escapeFile(folder, "texts/" + text(code) + ".json");
    for(const char* const path: {"texts", "texts.zip"}) {
        editor.localization->translations.clear();
        importTerms(editor, folder.path(path), format);
        EXPECT_TRUE(editor.localization->translations == expected) << path;
        EXPECT_FALSE(session.changeManager().hasUnsavedChanges()) << path;
        exportTermsCompressed(editor, languages, folder.path("texts"), format);
    }
    EXPECT_EQ(printed.text(), "");
    EXPECT_EQ(jsonText(session.projectFile().document), document);

    std::filesystem::remove_all(folder.path("texts"));
}

/* Each project has a seed of its own: the one that fails is repeated with the
   seed that is told and one project */
TEST(RoundTripTest, randomProjects) {
    EditorSession session;
    const Containers::Pair<Containers::StringView, unsigned short> parameters[]{
        {"label", Data::StringParamType}, {"count", 3},
        {"a/b~c", Data::StringParamType}};
    session.addScriptType("button", parameters);

    const TemporaryFolder folder;
    const std::uint64_t seed = environment("ROUNDTRIP_SEED", 1);
    const std::uint64_t count = environment("ROUNDTRIP_PROJECTS", 500);
    for(std::uint64_t i = 0; i != count && !HasFailure(); ++i) {
        SCOPED_TRACE("ROUNDTRIP_SEED=" + std::to_string(seed + i));
        Random random{seed + i};
        expectRoundTrip(session, folder, random);
    }
}

}}
