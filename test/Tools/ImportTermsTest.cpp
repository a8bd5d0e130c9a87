#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>

#include "Project.h"
#include "TemporaryFolder.h"
#include "editor/Zip.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

struct File {
    std::string name;
    std::string content;
};

typedef std::vector<File> Files;

void writeFolder(const TemporaryFolder& folder, const std::string& name,
    const Files& files) {
    std::filesystem::create_directories(folder.path(name));
    for(const File& file: files)
        folder.write(name + "/" + file.name, file.content);
}

void writeArchive(const TemporaryFolder& folder, const std::string& name,
    const Files& files) {
    std::vector<Containers::StringView> names;
    std::vector<Containers::ArrayView<const char>> contents;
    for(const File& file: files) {
        names.push_back(file.name);
        contents.push_back({file.content.data(), file.content.size()});
    }
    ASSERT_TRUE(writeZip(Containers::arrayView(names.data(), names.size()),
        Containers::arrayView(contents.data(), contents.size()),
        folder.path(name)));
}

void importFrom(Project& project, const std::string& path) {
    importTerms(project.editor(), path, LocalizationFormat::I18next);
}

std::string wrapped(const std::string& terms) {
    return R"({"translation": )" + terms + "}";
}

const char* const English = R"({
    "settings": {"localization": {"defaultLanguage": "en"}},
    "languages": {"en": {}, "de": {}},
    "texts": {"a": "A", "b": "B", "number": 3, "off": "O", "off_translate": false}
})";
const char* const EnglishTexts =
    R"({"a":"A","b":"B","number":3,"off":"O","off_translate":false})";

/* What is wrong with a file or a term, and all that isn't */
TEST(ImportTerms, oneFile) {
    const char* const none = "{}";
    const char* const languages = R"({"en":{},"de":{}})";
    const char* const invalid = "Invalid JSON in imported file de.json\n";
    const char* const missing =
        "Missing or invalid 'translation' object in imported file de.json\n";

    const struct {
        const char* name;
        File file;
        const char* printed;
        const char* translations;
        const char* texts;
        const char* languages;
    } data[]{
        {"empty", {"de.json", ""}, invalid, none, EnglishTexts, languages},
        {"no JSON", {"de.json", "translation"}, invalid, none, EnglishTexts,
            languages},
        {"text after the end", {"de.json", wrapped(R"({"a": "A"})") + "x"},
            invalid, none, EnglishTexts, languages},
        {"root is an array", {"de.json", "[]"}, missing, none, EnglishTexts,
            languages},
        {"root is a text", {"de.json", R"("translation")"}, missing, none,
            EnglishTexts, languages},
        {"root is empty", {"de.json", "{}"}, missing, none, EnglishTexts,
            languages},
        {"terms are an array", {"de.json", wrapped("[]")}, missing, none,
            EnglishTexts, languages},
        {"terms are null", {"de.json", wrapped("null")}, missing, none,
            EnglishTexts, languages},
        {"terms in another member",
            {"de.json", R"({"a": {"translation": {}}, "Translation": {}})"},
            missing, none, EnglishTexts, languages},
        {"other members",
            {"de.json",
                R"({"x": {"a": "X"}, "translation": {"a": "Ä"}, "a": 1e999})"},
            "", R"({"de":{"a":"Ä"}})", EnglishTexts, languages},
        {"no terms", {"de.json", wrapped("{}")}, "", R"({"de":{}})",
            EnglishTexts, languages},
        {"text, empty text and null",
            {"de.json",
                wrapped(R"({"b": "", "number": null, "a": "\u00c4\n\u0000"})")},
            "", R"({"de":{"a":"Ä\n\u0000","b":"","number":null}})",
            EnglishTexts, languages},
        {"the last one of a key counts",
            {"de.json",
                wrapped(R"({"a": "1", "b": "2", "a": null, "b": "3"})")},
            "", R"({"de":{"a":null,"b":"3"}})", EnglishTexts, languages},
        {"terms that aren't to be translated",
            {"de.json",
                wrapped(R"({"off": "Aus", "unknown": "?", "": "", "A": ""})")},
            "", R"({"de":{}})", EnglishTexts, languages},
        {"values of wrong types",
            {"de.json",
                wrapped(
                    R"({"a": 3, "off": true, "b": {"a": "1"}, "x": [null], "number": "3"})")},
            "Invalid type for term a in imported file de.json\n"
            "Invalid type for term off in imported file de.json\n"
            "Invalid type for term b in imported file de.json\n"
            "Invalid type for term x in imported file de.json\n",
            R"({"de":{"number":"3"}})", EnglishTexts, languages},
        {"unknown language", {"xx.json", wrapped(R"({"a": "X"})")},
            "Unknown language code xx in imported file xx.json\n", none,
            EnglishTexts, languages},
        {"language in another letter case", {"DE.json", wrapped("{}")},
            "Unknown language code DE in imported file DE.json\n", none,
            EnglishTexts, languages},
        {"new language", {"pt-BR.json", wrapped(R"({"b": "Bê"})")}, "",
            R"({"pt-BR":{"a":null,"b":"Bê","number":null,"off":null}})",
            EnglishTexts,
            R"({"en":{},"de":{},"pt-BR":{"name":"Brazilian Portuguese"}})"},
        {"new language in a wrong file", {"fr.json", "[]"},
            "Missing or invalid 'translation' object in imported file fr.json\n",
            none, EnglishTexts, languages},
        {"default language, the same texts",
            {"en.json", wrapped(R"({"a": "A", "b": "B"})")}, "",
            R"({"en":{"a":"A","b":"B"}})", EnglishTexts, languages},
        {"default language, other texts",
            {"en.json",
                wrapped(
                    R"({"b": "", "a": "A ", "off": "Off", "number": "4", "gone": "G"})")},
            "", R"({"en":{"a":"A ","b":"","gone":"G","number":"4"}})",
            R"({"a":"A ","b":"","number":3,"off":"O","off_translate":false})",
            languages},
        {"default language, null",
            {"en.json", wrapped(R"({"a": null, "b": "Be"})")}, "",
            R"({"en":{"a":null,"b":"Be"}})",
            R"({"a":"A","b":"Be","number":3,"off":"O","off_translate":false})",
            languages},
        {"default language, a text changed back and forth",
            {"en.json", wrapped(R"({"a": "1", "a": "A"})")}, "",
            R"({"en":{"a":"A"}})", EnglishTexts, languages},
    };
    for(const auto& i: data)
        for(const bool zip: {false, true}) {
            SCOPED_TRACE(std::string{i.name} + (zip ? ", zip" : ""));
            const TemporaryFolder folder;
            writeFolder(folder, "texts", {i.file});
            writeArchive(folder, "texts.zip", {i.file});
            Project project{English};
            project.terms().emplace("gone", "/objects/gone/text");
            if(std::string{"pt-BR.json"} == i.file.name)
                project.terms().erase("gone");

            {
                const Printed printed;
                importFrom(project, folder.path(zip ? "texts.zip" : "texts"));
                EXPECT_EQ(printed.text(), i.printed);
            }
            EXPECT_EQ(project.translationsText(), i.translations);
            EXPECT_EQ(project.stored("/texts"), i.texts);
            EXPECT_EQ(project.stored("/languages"), i.languages);

            /* The texts alone are taken back and made again, in one step */
            project.changes().undoLast();
            EXPECT_EQ(project.stored("/texts"), EnglishTexts);
            EXPECT_FALSE(project.changes().hasUnsavedChanges());
            project.changes().redoLastUndo();
            EXPECT_EQ(project.stored("/texts"), i.texts);
            EXPECT_EQ(project.translationsText(), i.translations);
            EXPECT_EQ(project.stored("/languages"), i.languages);
        }
}

/* Handlers hear of exactly the texts that differ, once all are imported */
TEST(ImportTerms, pushedChanges) {
    const TemporaryFolder folder;
    writeFolder(folder, "texts",
        {{"en.json", wrapped(R"({"a": "A", "projectName": "New", "odd": "?",
            "b": "Be"})")},
            {"de.json", wrapped(R"({"a": "Ä"})")}});
    Project project{R"({
        "settings": {"project": {"name": "Demo"},
            "localization": {"defaultLanguage": "en"}},
        "languages": {"en": {}, "de": {}},
        "texts": {"a": "A", "b": "B"}
    })"};
    project.terms().emplace("projectName", "/settings/project/name");
    project.terms().emplace("odd", "texts/a");

    struct Heard {
        Project& project;
        std::string paths;
    } heard{project, {}};
    for(const char* const segment: {"texts", "settings"})
        project.changes().addChangeHandler(
            segment,
            [](const Change& change,
                Containers::ArrayView<Containers::StringView>, void* data) {
                Heard& h = *static_cast<Heard*>(data);
                EXPECT_EQ(h.project.stored("/texts/b"), R"("Be")");
                h.paths += text(change.path) + " ";
            },
            &heard);
    importFrom(project, folder.path("texts"));
    EXPECT_EQ(heard.paths, "/settings/project/name /texts/b ");
    EXPECT_EQ(project.stored("/settings/project/name"), R"("New")");

    /* Nothing differs the next time */
    importFrom(project, folder.path("texts"));
    EXPECT_EQ(heard.paths, "/settings/project/name /texts/b ");
    project.changes().markSave();
    importFrom(project, folder.path("texts"));
    EXPECT_FALSE(project.changes().hasUnsavedChanges());
}

TEST(ImportTerms, firstLanguages) {
    const TemporaryFolder folder;
    writeArchive(folder, "texts.zip",
        {
            {"de.json", wrapped(R"({"a": "Ä"})")},
            {"en.json", wrapped(R"({"a": "Other"})")},
        });
    Project project{R"({"texts": {"a": "A", "b": "B"}})"};
    importFrom(project, folder.path("texts.zip"));
    EXPECT_EQ(
        project.stored("/settings/localization/defaultLanguage"), R"("de")");
    EXPECT_EQ(project.stored("/languages"),
        R"({"de":{"name":"German"},"en":{"name":"English"}})");
    EXPECT_EQ(project.translationsText(),
        R"({"de":{"a":"Ä","b":"B"},"en":{"a":"Other","b":null}})");
    EXPECT_EQ(project.stored("/texts"), R"({"a":"A","b":"B"})");
    EXPECT_FALSE(project.changes().hasUnsavedChanges());
}

TEST(ImportTerms, languageOfTheProjectOnly) {
    const TemporaryFolder folder;
    writeFolder(folder, "texts", {{"x~y.json", wrapped(R"({"a": "X"})")}});
    writeArchive(folder, "texts.zip", {{"x/y.json", wrapped(R"({"a": "Y"})")}});
    Project project{
        R"({"languages": {"x~y": {}, "x/y": {}}, "texts": {"a": "A"}})"};
    for(const char* const path: {"texts", "texts.zip"})
        importFrom(project, folder.path(path));
    EXPECT_EQ(
        project.translationsText(), R"({"x/y":{"a":"Y"},"x~y":{"a":"X"}})");
}

/* Only some of what is in a folder is a language file */
TEST(ImportTerms, folder) {
    const TemporaryFolder folder;
    const std::string content = wrapped(R"({"a": "Text"})");
    writeFolder(folder, "texts",
        {{"de.json", content}, {"en.json", content}, {"notes.txt", "{}"},
            {".backup.json", content}, {".json", content}, {"fr.JSON", content},
            {"it", content}, {"es.json.old", content},
            {"old.json/fr.json", content}, {"sub/fr.json", content},
            {"zz.json", "{}"}});
    Project project{English};
    {
        const Printed printed;
        importFrom(project, folder.path("texts"));
        EXPECT_EQ(printed.text(),
            "Missing or invalid 'translation' object in "
            "imported file zz.json\n");
    }
    EXPECT_EQ(
        project.translationsText(), R"({"de":{"a":"Text"},"en":{"a":"Text"}})");
    EXPECT_EQ(project.stored("/languages"), R"({"en":{},"de":{}})");

    /* One that can't be read is passed over */
    std::filesystem::create_symlink("nowhere", folder.path("texts/nl.json"));
    project.translations().clear();
    const Printed printed;
    importFrom(project, folder.path("texts"));
    EXPECT_EQ(
        project.translationsText(), R"({"de":{"a":"Text"},"en":{"a":"Text"}})");
}

TEST(ImportTerms, archive) {
    const TemporaryFolder folder;
    const std::string content = wrapped(R"({"a": "Text"})");
    writeArchive(folder, "texts.zip",
        {{"notes.txt", content}, {"sub/de.json", content},
            {".backup.json", content}, {"de.JSON", content},
            {"en.json", content}});
    Project project{English};
    Printed printed;
    importFrom(project, folder.path("texts.zip"));
    EXPECT_EQ(printed.text(),
        "Unknown language code sub/de in imported file sub/de.json\n"
        "Unknown language code .backup in imported file .backup.json\n");
    EXPECT_EQ(project.translationsText(), R"({"en":{"a":"Text"}})");
}

/* What the path names, with all that can't be imported from */
TEST(ImportTerms, explicitPaths) {
    const TemporaryFolder folder;
    const File german{"de.json", wrapped(R"({"a": "Folder"})")};
    writeFolder(folder, "texts", {german});
    writeFolder(folder, "folder.zip", {german});
    writeArchive(
        folder, "demo.zip", {{"de.json", wrapped(R"({"a": "Archive"})")}});
    writeArchive(folder, "demo.ZIP", {german});
    folder.write("damaged.zip", "PK");

    const char* const fromFolder = R"({"de":{"a":"Folder"}})";
    const struct {
        const char* path;
        const char* translations;
        /* Of the only line that is printed, after that of the import */
        const char* error;
    } data[]{
        {"texts", fromFolder, nullptr},
        {"texts/", fromFolder, nullptr},
        {"texts.old", fromFolder, nullptr},
        {"texts.zip.old", "{}", nullptr},
        {"demo.zip", R"({"de":{"a":"Archive"}})", nullptr},
        /* A folder of that name, without the extension */
        {"texts.ZIP", fromFolder, nullptr},
        {"demo.ZIP", "{}", nullptr},
        {"missing", "{}", nullptr},
        {"folder.zip", "{}", "can't read "},
        {"missing.zip", "{}", "can't read "},
        {"damaged.zip", "{}", "can't read "},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.path);
        Project project{English};
        const std::string before = project.stored("");
        {
            const Printed printed;
            importFrom(project, folder.path(i.path));
            if(i.error) {
                const std::string expected =
                    "LocalizationTools::importTerms(): " +
                    (i.error + folder.path(i.path)) + ": ";
                EXPECT_EQ(printed.text().substr(0, expected.size()), expected);
                EXPECT_EQ(printed.text().find('\n'), printed.text().size() - 1);
            }
        }
        EXPECT_EQ(project.translationsText(), i.translations);
        EXPECT_EQ(project.stored(""), before);

        /* No group is left open */
        project.changes().undoLast();
    }
}

TEST(ImportTerms, unknownFormat) {
    const TemporaryFolder folder;
    writeFolder(folder, "texts",
        {{"en.json", wrapped(R"({"a": "New"})")}, {"fr.json", "[]"}});
    Project project{English};
    const std::string before = project.stored("");
    const Printed printed;
    importTerms(project.editor(), folder.path("texts"), LocalizationFormat(1));
    EXPECT_EQ(printed.text(), "");
    EXPECT_EQ(project.translationsText(), "{}");
    EXPECT_EQ(project.stored(""), before);
    project.changes().undoLast();
}

TEST(ImportTerms, places) {
    const char* const zip = R"(, "enableZipCompression": true)";
    const struct {
        const char* name;
        const char* projectName;
        /* # is a folder outside of the project */
        std::string settings;
        /* Where the files are, and where they are looked for if they aren't */
        std::string place;
        bool found;
    } data[]{
        {"no settings", "Demo", R"("x": 0)", "project/languages", true},
        {"relative folder", "Demo", R"("languagesFolder": "lang/texts")",
            "project/lang/texts", true},
        {"absolute folder", "Demo",
            R"("languagesFolder": "#", "format": "other")", "outside", true},
        {"missing folder", "Demo", R"("languagesFolder": "lang")",
            "project/lang", false},
        {"zip", "Demo", R"("languagesFolder": "lang")" + std::string{zip},
            "project/lang/Demo.zip", true},
        {"zip of a name with a dot", "Demo.final",
            R"("languagesFolder": "#")" + std::string{zip},
            "outside/Demo.final.zip", true},
        {"missing zip", "Demo.final",
            R"("languagesFolder": "lang")" + std::string{zip},
            "project/lang/Demo.final.zip", false},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        const TemporaryFolder folder;
        const Files files{{"en.json", wrapped(R"({"a": "New"})")}};
        const std::filesystem::path place = folder.path(i.place);
        if(i.found && place.extension() == ".zip") {
            std::filesystem::create_directories(place.parent_path());
            writeArchive(folder, i.place, files);
        } else if(i.found)
            writeFolder(folder, i.place, files);

        std::string settings = i.settings;
        const std::size_t outside = settings.find('#');
        if(outside != std::string::npos)
            settings.replace(outside, 1, folder.path("outside"));
        Project project{std::string{R"({"settings": {"project": {"name": ")"} +
                i.projectName +
                R"("}, "localization": {"defaultLanguage": "en", )" + settings +
                R"(}}, "languages": {"en": {}}, "texts": {"a": "A"}})",
            folder.path("project")};

        const Printed printed;
        importTerms(project.editor());
        EXPECT_EQ(printed.text(),
            i.found ? ""
                    : "Language files importing was skipped because the path " +
                    place.string() + " does not exist\n");
        EXPECT_EQ(project.stored("/texts/a"), i.found ? R"("New")" : R"("A")");
        EXPECT_EQ(project.changes().hasUnsavedChanges(), i.found);
        EXPECT_EQ(std::filesystem::exists(folder.path("project")),
            i.found && i.place.rfind("project", 0) == 0);
    }
}

/* The folder that is exported to isn't the one that has to exist */
TEST(ImportTerms, folderWithAnExtension) {
    const TemporaryFolder folder;
    Project project{R"({"settings": {"localization": {
            "defaultLanguage": "en", "languagesFolder": "texts.old"
        }}, "languages": {"en": {}, "de": {}}, "texts": {"a": "A"}})",
        folder.path()};
    project.setTranslations(R"({"de":{"a":"Ä"}})");
    exportTerms(project.editor(), {"en", "de"});
    project.translations().clear();

    const Printed printed;
    importTerms(project.editor());
    EXPECT_EQ(project.translationsText(), R"({"de":{"a":"Ä"},"en":{"a":"A"}})");
    EXPECT_FALSE(project.changes().hasUnsavedChanges());

    std::filesystem::remove(folder.path("texts.old"));
    importTerms(project.editor());
    EXPECT_EQ(printed.text(),
        "Language files importing was skipped because the path " +
            folder.path("texts.old") + " does not exist\n");
}

}}
