#include <Corrade/Containers/StringIterable.h>

#include "Project.h"
#include "TemporaryFolder.h"
#include "Tracking/TranslationTracker.h"

namespace OrrelinEngine { namespace Tracking { namespace {

const char* const Json = R"({
    "settings": {"project": {"name": "Demo"},
        "localization": {"defaultLanguage": "en"}},
    "languages": {"en": {}, "de": {}, "fr": {}},
    "texts": {"a": "A", "b": "B", "c": "C"}
})";

std::string outdatedText(
    const TranslationTracker& tracker, Containers::StringView code) {
    std::string out;
    for(const OutdatedTranslation& i: tracker.outdated(code))
        out += text(i.key) + ' ' + text(i.translation) + ' ' +
            text(i.formerSource) + '>' + text(i.source) + '\n';
    return out;
}

void exportAll(Project& project, TranslationTracker& tracker) {
    LocalizationTools::exportTerms(project.editor(), {"en", "de", "fr"});
    EXPECT_TRUE(tracker.save({"en", "de", "fr"}));
}

/* Files and record as an export leaves them */
struct Exported {
    Exported() {
        Project project{Json, folder.path()};
        project.setTranslations(
            R"({"de": {"a": "Ä", "b": "Be"}, "fr": {"a": "À"}})");
        TranslationTracker tracker{project.editor()};
        EXPECT_FALSE((Printed{}, tracker.save({"en"})))
            << "overwrites an unread record";
        EXPECT_TRUE(tracker.load());
        exportAll(project, tracker);
    }

    TemporaryFolder folder;
};

/* Fills the tables from files of which one was changed, and nothing else */
TEST(TranslationTrackerTest, load) {
    const char* const all = R"({"a":"Ä","b":"Be","c":null})";
    const char* const kept = R"({"b":"Mine"})";
    const struct {
        const char *file, *content;
        /* Without its beginning, # is the folder */
        std::string printed;
        const char* german;
        bool succeeds = true;
        const char* difference = "";
    } data[]{
        {"de.json", R"({"translation": {"c": "1", "a": "", "b": 3, "x": "X",
            "c": "2"}})",
            "3 values aren't taken from de.json, the first for a",
            R"({"a":null,"c":"2"})"},
        {"de.json", "{}", "de.json isn't a language file", kept, false},
        {"de.json/x", "", "can't read #/de.json", kept, false},
        {"translation-record.txt", "no",
            "#/translation-record.txt isn't a record that can be read", kept,
            false},
        {"it.json", "{}", "the project doesn't have the language of it.json",
            all},
        {"en.json", R"({"translation": {"a": "A", "b": "File", "c": null}})",
            "", all, true, "b File B"},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(std::string{i.file} + ' ' + i.content);
        const Exported files;
        const std::string folder = files.folder.path("languages");
        if(std::string{i.file} == "de.json/x")
            std::filesystem::remove(folder + "/de.json");
        files.folder.write(std::string{"languages/"} + i.file, i.content);
        Project project{Json, files.folder.path()};
        project.setTranslations(R"({"de": {"b": "Mine"}})");
        const std::string before = project.stored("");
        TranslationTracker tracker{project.editor()};
        {
            const Printed printed;
            EXPECT_EQ(tracker.load(), i.succeeds);
            std::string expected = i.printed.empty()
                ? ""
                : "TranslationTracker::load(): " + i.printed + '\n';
            const std::size_t at = expected.find('#');
            if(at != std::string::npos)
                expected.replace(at, 1, folder);
            EXPECT_EQ(printed.text(), expected);
        }
        const std::string german = std::string{R"({"de":)"} + i.german;
        EXPECT_EQ(project.translationsText().substr(0, german.size()), german);
        EXPECT_FALSE(project.changes().hasUnsavedChanges());
        EXPECT_EQ(project.stored(""), before);
        std::string differences;
        for(const SourceDifference& difference: tracker.differences()) {
            EXPECT_EQ(difference.state, SourceState::ChangedInFile);
            differences += text(difference.key + " " + difference.inFile + " " +
                difference.inProject);
        }
        EXPECT_EQ(differences, i.difference);
    }
}

/* Through edits, a new key and name, confirmation and another session */
TEST(TranslationTrackerTest, outdated) {
    const Exported files;
    Project project{Json, files.folder.path()};
    TranslationTracker tracker{project.editor()};
    ASSERT_TRUE(tracker.load());
    for(const char* const path: {"/texts/a", "/texts/b"})
        project.changes().pushChange(path, "New", false);
    EXPECT_EQ(outdatedText(tracker, "de"), "a Ä A>New\nb Be B>New\n");
    EXPECT_EQ(outdatedText(tracker, "en"), "");

    TermMap strings;
    tracker.renameTerm("b", "z", strings);
    EXPECT_TRUE(tracker.confirm("de", "a"));
    EXPECT_FALSE(tracker.confirm("de", "c"));
    const std::string german = "z Be B>New\n", french = "a À A>New\n";
    EXPECT_EQ(outdatedText(tracker, "de"), german);
    project.changes().pushChange(
        "/settings/localization/enableZipCompression", JsonValue{true}, false);
    exportAll(project, tracker);
    EXPECT_EQ(outdatedText(tracker, "de"), german);

    project.changes().pushChange("/settings/project/name", "Other", false);
    project.translations().clear();
    TranslationTracker next{project.editor()};
    ASSERT_TRUE(next.load());
    EXPECT_EQ(project.translationsText(),
        R"({"de":{"a":"Ä","c":null,"z":"Be"},"fr":{"a":"À","c":null,"z":null}})");
    EXPECT_EQ(outdatedText(next, "de"), german);
    EXPECT_EQ(outdatedText(next, "fr"), french);
    EXPECT_TRUE(next.differences().empty());
}

/* A translation goes with its text, and keeps what it was made from */
TEST(TranslationTrackerTest, movedText) {
    const Exported files;
    Project project{R"({
        "settings": {"localization": {"defaultLanguage": "en"}},
        "languages": {"en": {}, "de": {}},
        "texts": {"a": "New", "b": "A", "c": "B"}
    })",
        files.folder.path()};
    TranslationTracker tracker{project.editor()};
    EXPECT_TRUE((Printed{}, tracker.load()));
    EXPECT_EQ(project.translationsText(), R"({"de":{"b":"Ä","c":"Be"}})");
    EXPECT_TRUE(tracker.differences().empty());
    project.changes().pushChange("/texts/b", "A2", false);
    EXPECT_EQ(outdatedText(tracker, "de"), "b Ä A>A2\n");
}

}}}
