#include <algorithm>
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

/* Into a folder, or an archive with ".zip" at the end of its name */
void write(const TemporaryFolder& folder, const std::string& name,
    const Files& files, bool zip) {
    if(!zip) {
        for(const File& file: files)
            folder.write(name + "/" + file.name, file.content);
        return;
    }
    std::vector<Containers::StringView> names;
    std::vector<Containers::ArrayView<const char>> contents;
    for(const File& file: files) {
        names.push_back(file.name);
        contents.push_back({file.content.data(), file.content.size()});
    }
    ASSERT_TRUE(writeZip(Containers::arrayView(names.data(), names.size()),
        Containers::arrayView(contents.data(), contents.size()),
        folder.path(name + ".zip")));
}

void importFrom(Project& project, const std::string& path,
    LocalizationFormat format = LocalizationFormat::I18next) {
    importTerms(project.editor(), path, format);
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

/* What is wrong with a file or a term, and all that isn't, from a folder and
   from an archive */
TEST(ImportTermsTest, oneFile) {
    const std::string invalid = "Invalid JSON in imported file de.json\n";
    const std::string missing =
        "Missing or invalid 'translation' object in imported file de.json\n";
    const std::string type =
        "Invalid type for term a in imported file de.json\n";
    const std::string old = R"({"de":{"a":"Old"}})";
    const std::size_t million = 1000000;

    const struct {
        const char* name;
        std::string content;
        std::string printed;
        std::string translations = R"({"de":{"a":"Old"}})";
        const char* file = "de.json";
        std::string texts = EnglishTexts;
        const char* languages = R"({"en":{},"de":{}})";
    } data[]{
        {"empty", "", invalid},
        {"NUL after the end", wrapped("{}") + '\0', invalid},
        {"half a surrogate pair", wrapped(R"({"a": "\ud83d"})"), invalid},
        {"two second halves", wrapped(R"({"a": "\udc00\udfff"})"), invalid},
        {"half and a pair", wrapped(R"({"a": "\udbff\udbff\udfff"})"), invalid},
        {"half and a text", wrapped(R"({"a": "\ud83d\\ude00"})"), invalid},
        {"surrogates that aren't escaped",
            wrapped("{\"a\": \"\xed\xa0\xbd\xed\xb8\x80\"}"), invalid},
        {"not UTF-8", wrapped("{\"a\": \"0123456\xe2\x82\"}"), invalid},

        {"root is an array", "[]", missing},
        {"terms are an array", wrapped("[]"), missing},
        {"terms in another member",
            R"({"a": {"translation": {}}, "Translation": {}})", missing},
        {"other members",
            R"({"x": {"a": "X"}, "translation": {"a": "Ä"}, "a": 1e999})", "",
            R"({"de":{"a":"Ä"}})"},

        {"text, empty text and null",
            wrapped(R"({"b": "", "number": null, "a": "\u00c4\n\u0000"})"), "",
            R"({"de":{"a":"Ä\n\u0000","b":"","number":null}})"},
        {"the last one of a key counts",
            wrapped(R"({"a": "1", "b": "2", "a": null, "b": "3"})"), "",
            R"({"de":{"a":null,"b":"3"}})"},
        {"terms that aren't to be translated",
            wrapped(R"({"off": "Aus", "unknown": "?", "": "", "A": ""})"), ""},
        {"a million nested arrays",
            wrapped("{\"a\":" + std::string(million, '[') +
                std::string(million, ']') + '}'),
            type},
        {"values of wrong types",
            wrapped(R"({"a": 3, "off": true, "x": [null], "number": "3"})"),
            type +
                "Invalid type for term off in imported file de.json\n"
                "Invalid type for term x in imported file de.json\n",
            R"({"de":{"a":"Old","number":"3"}})"},

        {"unknown language", wrapped(R"({"a": "X"})"),
            "Unknown language code xx in imported file xx.json\n", old,
            "xx.json"},
        {"new language", wrapped(R"({"b": "Bê"})"), "",
            R"({"de":{"a":"Old"},)"
            R"("pt-BR":{"a":null,"b":"Bê","number":null,"off":null}})",
            "pt-BR.json", EnglishTexts,
            R"({"en":{},"de":{},"pt-BR":{"name":"Brazilian Portuguese"}})"},
        {"new language in a wrong file", "[]",
            "Missing or invalid 'translation' object in imported file fr.json\n",
            old, "fr.json"},
        {"default language, the same texts", wrapped(R"({"a": "A", "b": "B"})"),
            "", R"({"de":{"a":"Old"},"en":{"a":"A","b":"B"}})", "en.json"},
        {"default language, other texts",
            wrapped(R"({"b": "", "a": "A ", "off": "Off", "number": "4",)"
                    R"("gone": "G"})"),
            "",
            R"({"de":{"a":"Old"},)"
            R"("en":{"a":"A ","b":"","gone":"G","number":"4"}})",
            "en.json",
            R"({"a":"A ","b":"","number":3,"off":"O","off_translate":false})"},
        {"default language, null", wrapped(R"({"a": null, "b": "Be"})"), "",
            R"({"de":{"a":"Old"},"en":{"a":null,"b":"Be"}})", "en.json",
            R"({"a":"A","b":"Be","number":3,"off":"O","off_translate":false})"},
    };
    for(const auto& i: data)
        for(const bool zip: {false, true}) {
            SCOPED_TRACE(std::string{i.name} + (zip ? ", zip" : ""));
            const TemporaryFolder folder;
            write(folder, "texts", {{i.file, i.content}}, zip);
            Project project{English};
            project.terms().emplace("gone", "/objects/gone/text");
            if(std::string{"pt-BR.json"} == i.file)
                project.terms().erase("gone");
            project.setTranslations(old.data());

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
TEST(ImportTermsTest, pushedChanges) {
    const TemporaryFolder folder;
    write(folder, "texts",
        {{"en.json", wrapped(R"({"a": "A", "projectName": "New", "odd": "?",
            "b": "Be"})")},
            {"de.json", wrapped(R"({"a": "Ä"})")}},
        false);
    Project project{R"({
        "settings": {"project": {"name": "Demo"},
            "localization": {"defaultLanguage": "en"}},
        "languages": {"en": {}, "de": {}},
        "texts": {"a": "A", "b": "B"}
    })"};
    project.terms().emplace("projectName", "/settings/project/name");
    project.terms().emplace("odd", "texts/a");

    std::string heard;
    for(const char* const segment: {"texts", "settings"})
        project.changes().addChangeHandler(
            segment,
            [&](const Change& change,
                Containers::ArrayView<Containers::StringView>, void*) {
                EXPECT_EQ(project.stored("/texts/b"), R"("Be")");
                heard += text(change.path) + " ";
            },
            nullptr);
    importFrom(project, folder.path("texts"));
    EXPECT_EQ(heard, "/settings/project/name /texts/b ");
    EXPECT_EQ(project.stored("/settings/project/name"), R"("New")");

    /* Nothing differs the next time */
    project.changes().markSave();
    importFrom(project, folder.path("texts"));
    EXPECT_FALSE(project.changes().hasUnsavedChanges());
}

/* Which entries are language files, and of which languages */
TEST(ImportTermsTest, severalFiles) {
    const std::string a = wrapped(R"({"a": "Text"})");
    const struct {
        const char *name, *project;
        Files files;
        bool zip;
        const char *printed, *translations, *languages, *defaultLanguage;
    } data[]{
        {"names in a folder", English,
            {{"de.json", a}, {"en.json", a}, {"notes.txt", "{}"},
                {".backup.json", a}, {".json", a}, {"fr.JSON", a}, {"it", a},
                {"es.json.old", a}, {"old.json/fr.json", a}, {"sub/fr.json", a},
                {"zz.json", "{}"}},
            false,
            "Missing or invalid 'translation' object in imported file "
            "zz.json\n",
            R"({"de":{"a":"Text"},"en":{"a":"Text"}})", R"({"en":{},"de":{}})",
            R"("en")"},
        {"names in an archive", English,
            {{"notes.txt", a}, {"sub/de.json", a}, {".backup.json", a},
                {"de.JSON", a}, {"en.json", a}},
            true,
            "Unknown language code sub/de in imported file sub/de.json\n"
            "Unknown language code .backup in imported file .backup.json\n",
            R"({"en":{"a":"Text"}})", R"({"en":{},"de":{}})", R"("en")"},
        {"the first languages, whose texts don't replace any",
            R"({"texts": {"a": "A", "b": "B"}})",
            {{"de.json", wrapped(R"({"a": "Ä"})")}, {"en.json", a}}, true, "",
            R"({"de":{"a":"Ä","b":"B"},"en":{"a":"Text","b":null}})",
            R"({"de":{"name":"German"},"en":{"name":"English"}})", R"("de")"},
        {"a language of the project only",
            R"({"languages": {"x/~y": {}}, "texts": {"a": "A"}})",
            {{"x/~y.json", a}}, true, "", R"({"x/~y":{"a":"Text"}})",
            R"({"x/~y":{}})", ""},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        const TemporaryFolder folder;
        write(folder, "texts", i.files, i.zip);
        Project project{i.project};
        const Printed printed;
        importFrom(project, folder.path(i.zip ? "texts.zip" : "texts"));
        EXPECT_EQ(printed.text(), i.printed);
        EXPECT_EQ(project.translationsText(), i.translations);
        EXPECT_EQ(project.stored("/languages"), i.languages);
        EXPECT_EQ(project.stored("/settings/localization/defaultLanguage"),
            i.defaultLanguage);
        EXPECT_EQ(project.changes().hasUnsavedChanges(), i.project == English);
    }
}

/* What the path names, with all that can't be imported from */
TEST(ImportTermsTest, explicitPaths) {
    const TemporaryFolder folder;
    const File german{"de.json", wrapped(R"({"a": "Folder"})")};
    write(folder, "texts", {german}, false);
    write(folder, "folder.zip", {german}, false);
    write(folder, "demo", {{"de.json", wrapped(R"({"a": "Archive"})")}}, true);
    folder.write("damaged.zip", "PK");

    const char* const fromFolder = R"({"de":{"a":"Folder"}})";
    const struct {
        const char *path, *translations;
        /* Of the only line that is printed, after that of the import */
        const char* error;
        LocalizationFormat format = LocalizationFormat::I18next;
    } data[]{
        {"texts", fromFolder, nullptr},
        {"texts", "{}", nullptr, LocalizationFormat(1)},
        {"texts/", fromFolder, nullptr},
        {"texts.old", fromFolder, nullptr},
        {"demo.zip", R"({"de":{"a":"Archive"}})", nullptr},
        {"folder.zip", "{}", "can't read "},
        {"damaged.zip", "{}", "can't read "},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.path);
        Project project{English};
        const std::string before = project.stored("");
        {
            const Printed printed;
            importFrom(project, folder.path(i.path), i.format);
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

TEST(ImportTermsTest, places) {
    const char* const zip = R"(, "enableZipCompression": true)";
    const struct {
        const char *name, *projectName;
        /* # is a folder outside of the project */
        std::string settings;
        /* Where the files are, and where they are looked for if they aren't */
        std::string place;
        bool found;
    } data[]{
        {"no settings", "Demo", R"("x": 0)", "project/languages", true},
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
        const std::filesystem::path place = folder.path(i.place);
        if(i.found) {
            const bool isZip = place.extension() == ".zip";
            std::filesystem::create_directories(place.parent_path());
            write(folder, i.place.substr(0, i.place.size() - (isZip ? 4 : 0)),
                {{"en.json", wrapped(R"({"a": "New"})")}}, isZip);
        }
        Project project{std::string{R"({"settings": {"project": {"name": ")"} +
                i.projectName +
                R"("}, "localization": {"defaultLanguage": "en", )" +
                folder.withOutside(i.settings) +
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

/* Of what can't be read, each its line; the rest is imported */
TEST(ImportTermsTest, names) {
    const TemporaryFolder folder;
    const std::string german = wrapped(R"({"a": "Text"})");
    const std::string codes[]{"d\xff", "\xc3", "a\nb", std::string(200, 'x')};
    for(const std::string& code: codes)
        folder.write(code + ".json", german);
    folder.write("fr.json/file", "");
    folder.write("de.json", german);
    std::filesystem::create_symlink("it.json", folder.path("it.json"));
    std::filesystem::create_directory_symlink(".", folder.path("es.json"));
    Project project{English};
    const std::string before = project.stored("");
    std::string printed;
    {
        const Printed out;
        importFrom(project, folder.path());
        printed = out.text();
    }
    for(const std::string& code: codes)
        EXPECT_NE(printed.find("Unknown language code " + code +
                      " in imported file " + code + ".json\n"),
            std::string::npos)
            << printed;
    EXPECT_NE(printed.find("it.json"), std::string::npos) << printed;
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 7) << printed;
    EXPECT_EQ(project.translationsText(), R"({"de":{"a":"Text"}})");
    EXPECT_EQ(project.stored(""), before);
}

}}
