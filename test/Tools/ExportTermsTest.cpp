#include <algorithm>
#include <Corrade/Containers/StringIterable.h>

#include "Project.h"
#include "TemporaryFolder.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

/* All files and, with a slash at the end, folders */
std::string listed(const TemporaryFolder& folder) {
    std::vector<std::string> names;
    for(const auto& i:
        std::filesystem::recursive_directory_iterator{folder.path()})
        names.push_back(i.path().string().substr(folder.path().size() + 1) +
            (i.is_directory() ? "/ " : " "));
    std::sort(names.begin(), names.end());
    std::string out;
    for(const std::string& name: names)
        out += name;
    return out;
}

std::string project(const char* name, const std::string& localization) {
    return std::string{R"({"settings": {"project": {"name": ")"} + name +
        R"("}, "localization": {)" + localization +
        R"(}}, "texts": {"a": "A"}})";
}

TEST(ExportTermsTest, places) {
    const struct {
        const char *name, *projectName;
        /* # is a folder outside of the project */
        std::string settings;
        const char* expected;
    } data[]{
        {"no settings", "Demo", "",
            "project/ project/languages/ project/languages/de.json "
            "project/languages/en.json "},
        {"absolute folder", "Demo",
            R"("languagesFolder": "#", "format": "other")",
            "outside/ outside/de.json outside/en.json "},
        {"folder with an extension", "Demo",
            R"("languagesFolder": "lang.d/texts.old")",
            "project/ project/lang.d/ project/lang.d/texts.old/ "
            "project/lang.d/texts/ project/lang.d/texts/de.json "
            "project/lang.d/texts/en.json "},
        {"empty folder", "Demo", R"("languagesFolder": "")",
            "project/ project/de.json project/en.json "},
        {"zip", "Demo",
            R"("languagesFolder": "lang", "enableZipCompression": true)",
            "project/ project/lang/ project/lang/Demo.zip "},
        {"zip of a name with a dot", "Demo.final",
            R"("languagesFolder": "#", "enableZipCompression": true)",
            "outside/ outside/Demo.zip "},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        const TemporaryFolder folder;
        Project demo{project(i.projectName, folder.withOutside(i.settings)),
            folder.path("project")};
        const std::string before = demo.stored("");

        const Printed printed;
        exportTerms(demo.editor(), {"en", "de"});
        EXPECT_EQ(listed(folder), i.expected);
        EXPECT_EQ(printed.text(), "");
        EXPECT_EQ(demo.stored(""), before);
        EXPECT_FALSE(demo.changes().hasUnsavedChanges());
    }
}

/* Those of other languages stay */
TEST(ExportTermsTest, explicitPaths) {
    const TemporaryFolder folder;
    Project demo{project("Demo", "")};
    const LocalizationFormat format = LocalizationFormat::I18next;
    OrrelinEditor& editor = demo.editor();
    exportTerms(editor, {"de"}, folder.path("a/texts.old"), format);
    exportTerms(editor, {"fr"}, folder.path("a/texts"), format);
    exportTerms(editor, {"de"}, folder.path("unknown"), LocalizationFormat(1));
    exportTermsCompressed(editor, {"de"}, folder.path("a/x.tar.gz"), format);
    EXPECT_EQ(listed(folder),
        "a/ a/texts/ a/texts/de.json a/texts/fr.json a/x.tar.zip unknown/ ");
}

TEST(ExportTermsTest, failures) {
    const TemporaryFolder folder;
    folder.write("texts/fr.json/file", "");
    folder.write("file", "kept");
    folder.write("archive.zip/file", "kept");
    folder.write("old.zip", "no archive");
    Project demo{project("Demo", "")};
    OrrelinEditor& editor = demo.editor();
    const LocalizationFormat format = LocalizationFormat::I18next;

    /* One file that can't be written doesn't stop the others */
    {
        const Printed printed;
        exportTerms(editor, {"de", "fr", "it"}, folder.path("texts"), format);
    }
    EXPECT_NE(folder.read("texts/de.json"), "");
    EXPECT_EQ(folder.read("texts/it.json"), folder.read("texts/de.json"));

    /* A file stands where the folder should be */
    {
        const Printed printed;
        exportTerms(editor, {"de"}, folder.path("file"), format);
    }
    EXPECT_EQ(folder.read("file"), "kept");

    for(const char* const archive:
        {"archive", "missing/archive", "file/archive", "old"}) {
        SCOPED_TRACE(archive);
        const Printed printed;
        /* An archive has to have entries */
        exportTermsCompressed(editor,
            archive == std::string{"old"} ? Containers::StringIterable{}
                                          : Containers::StringIterable{"de"},
            folder.path(archive), format);
        const std::string expected =
            "LocalizationTools::exportTermsCompressed(): can't write " +
            folder.path(archive) + ".zip: ";
        EXPECT_EQ(printed.text().substr(0, expected.size()), expected);
        EXPECT_EQ(printed.text().find('\n'), printed.text().size() - 1);
    }
    EXPECT_EQ(folder.read("archive.zip/file"), "kept");
    EXPECT_EQ(folder.read("old.zip"), "no archive");
    EXPECT_EQ(listed(folder),
        "archive.zip/ archive.zip/file file old.zip texts/ texts/de.json "
        "texts/fr.json/ texts/fr.json/file texts/it.json ");
}

}}
