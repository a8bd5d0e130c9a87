#include "Project.h"

#include "TemporaryFolder.h"
#include "Tools/languageIndex.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

TEST(LanguagesTest, add) {
    const struct {
        const char *name, *project, *translations, *code, *expectedLanguages,
            *expectedDefault, *expectedTranslations;
    } data[]{
        {"the first one starts with the project's texts",
            R"({"languages": {}, "texts": {"a": "A", "b": "", "c": 3},
                "settings": {"localization": {"defaultLanguage": "fr"}}})",
            R"({"de": {"0": "stays", "a": "replaced", "b": null}})", "de",
            R"({"de":{"name":"German"}})", R"("de")",
            R"({"de":{"0":"stays","a":"A","b":"","c":""}})"},
        {"a further one starts empty",
            R"({"languages": {"en": {}}, "texts": {"a": "A", "b": "B"},
                "settings": {"localization": {"defaultLanguage": "en"}}})",
            R"({"de": {"A": "stays", "b": "taken away"}, "en": {"a": "E"}})",
            "de", R"({"en":{},"de":{"name":"German"}})", R"("en")",
            R"({"de":{"A":"stays","a":null,"b":null},"en":{"a":"E"}})"},
        {"once more",
            R"({"languages": {"de": {"name": "", "hidden": true}},
                "texts": {"a": "A"}})",
            R"({"de": {"a": "taken away", "b": "stays"}})", "de",
            R"({"de":{"name":"German","hidden":true}})", "",
            R"({"de":{"a":null,"b":"stays"}})"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        Project project{i.project};
        project.setTranslations(i.translations);
        const std::string texts = project.stored("/texts");

        addLanguage(project.editor(), languageIndex(i.code));
        /* It can't be undone */
        project.changes().undoLast();
        EXPECT_FALSE(project.changes().hasUnsavedChanges());
        EXPECT_EQ(project.stored("/languages"), i.expectedLanguages);
        EXPECT_EQ(project.stored("/settings/localization/defaultLanguage"),
            i.expectedDefault);
        EXPECT_EQ(project.translationsText(), i.expectedTranslations);
        EXPECT_EQ(project.stored("/texts"), texts);
    }
}

/* What the editor has by default are types, components and texts, but neither
   keys nor objects; of a term that's gone there is nothing */
TEST(LanguagesTest, addTextsThatAreNotStored) {
    Project project{
        R"({"objects": {"a": {}, "b": {"components": [{}, {"type": 1}]}}})"};
    const JsonDocument defaults = jsonDocument(R"({"objects": {
        "a": {"components": [
            {"type": "text", "text": {"text": "A", "text_term": "key"}}]},
        "b": {"components": [
            {"type": "text", "text": {"text": "B"}}, {"type": "text"}]},
        "c": {"components": [{"type": "text"}]}}})");
    project.file().setDefaults(&defaults);
    TermMap strings;
    gatherStrings(project.editor(), strings);
    project.terms().emplace("gone", "/objects/b/components/9/text/text");
    addLanguage(project.editor(), languageIndex("de"));
    EXPECT_EQ(project.translationsText(),
        R"({"de":{"a-text-0":"A","b-text-0":"B","gone":""}})");
}

TEST(LanguagesTest, addNoRow) {
    Project project{"{}"};
    EXPECT_DEATH(addLanguage(project.editor(), AllLanguageCount),
        "languageIndex < AllLanguageCount");
}

TEST(LanguagesTest, remove) {
    const char* const languages = R"({"en":{},"de":{"name":"German"}})";
    const struct {
        const char* name;
        /* Settings of localization; # is a folder outside of the project */
        const char *settings, *code;
        /* Where files named by the code and ".json" are, and the one of them
           that is deleted */
        std::vector<const char*> folders;
        const char *deletedFrom, *expectedLanguages;
    } data[]{
        {"unknown code", "{}", "fr", {"project/languages"}, nullptr, languages},
        {"no file", "{}", "de", {}, nullptr, R"({"en":{}})"},
        {"usual folder", "{}", "de", {"project/languages", "project"},
            "project/languages", R"({"en":{}})"},
        {"zip compression", R"({"enableZipCompression": true})", "de",
            {"project/languages"}, nullptr, R"({"en":{}})"},
        {"absolute folder", R"({"languagesFolder": "#"})", "de",
            {"outside", "project/languages"}, "outside", R"({"en":{}})"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        const TemporaryFolder folder;
        Project project{R"({"languages": )" + std::string{languages} +
                R"(, "settings": {"localization": )" +
                folder.withOutside(i.settings) + "}}",
            folder.path("project")};
        project.setTranslations(R"({"de": {"a": "A"}})");
        const std::string storedSettings = project.stored("/settings");
        const std::string file = std::string{"/"} + i.code + ".json";
        for(const char* const f: i.folders)
            folder.write(f + file, "{}");

        removeLanguage(project.editor(), i.code);
        EXPECT_EQ(project.stored("/languages"), i.expectedLanguages);
        EXPECT_EQ(project.stored("/settings"), storedSettings);
        EXPECT_EQ(project.translationsText(), R"({"de":{"a":"A"}})");
        for(const char* const f: i.folders)
            EXPECT_EQ(std::filesystem::exists(folder.path(f + file)),
                !i.deletedFrom || f != std::string{i.deletedFrom})
                << f;
        EXPECT_EQ(project.changes().hasUnsavedChanges(),
            languages != std::string{i.expectedLanguages});

        project.changes().undoLast();
        EXPECT_EQ(jsonDocument(project.stored("/languages")),
            jsonDocument(languages));
    }
}

/* The last language leaves the section behind, the view given is one of what
   is removed, and a name with a slash is none of a file in the folder */
TEST(LanguagesTest, removeKeysOfTheProject) {
    const TemporaryFolder folder;
    folder.write("precious.json", "{}");
    Project project{R"({"languages": {"../precious": {}, "~": {}}})",
        folder.path("project")};
    std::filesystem::create_directories(folder.path("project/languages"));

    for(const char* const code: {"../precious", "~"}) {
        const JsonValue& languages =
            *project.editor().languagesSection.readValueNoDefault();
        ASSERT_STREQ(languages.MemberBegin()->name.GetString(), code);
        removeLanguage(
            project.editor(), languages.MemberBegin()->name.GetString());
    }
    EXPECT_EQ(project.stored("/languages"), "{}");
    EXPECT_EQ(folder.read("precious.json"), "{}");
}

}}
