/* What no exporter writes. The large file has as many bytes as the environment
   variable LARGE_FILE_BYTES says. */

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include "Project.h"
#include "TemporaryFolder.h"

namespace OrrelinEngine { namespace {

using namespace LocalizationTools;

const char* const Document = R"({
    "settings": {"localization": {"defaultLanguage": "en"}},
    "languages": {"en": {}, "de": {}},
    "texts": {"a": "A"}
})";

std::string file(const std::string& text) {
    return "{\"translation\": {\"a\": " + text + "}}";
}

std::string times(std::size_t count, const std::string& text) {
    std::string out;
    out.reserve(count * text.size());
    while(count--)
        out += text;
    return out;
}

/* What an import prints into a project that has a German text already. What
   it does to the project's own texts has to be one step back. */
std::string printedBy(Project& project, const std::string& path) {
    project.setTranslations(R"({"de":{"a":"Ä"}})");
    const Printed printed;
    importTerms(project.editor(), path, LocalizationFormat::I18next);
    return printed.text();
}

TEST(ImportFaults, content) {
    const std::string invalid = "Invalid JSON in imported file de.json\n";
    const std::string missing =
        "Missing or invalid 'translation' object in imported file de.json\n";
    const std::string type =
        "Invalid type for term a in imported file de.json\n";
    const std::size_t million = 1000000;
    const struct {
        const char* name;
        std::string content;
        const std::string& printed;
    } data[]{
        {"a million open brackets", times(million, "["), invalid},
        {"a million open objects", times(million, "{\"translation\":"),
            invalid},
        {"a million nested arrays",
            file(times(million, "[") + times(million, "]")), type},
        {"a million nested objects",
            file(times(million, "{\"a\":") + "{}" + times(million, "}")), type},
        {"a million brackets in another member",
            "{\"x\":" + times(million, "[") + times(million, "]") + "}",
            missing},
        {"NUL between", file(std::string{"\0\"x\"", 4}), invalid},
        {"NUL after the end", file("\"x\"") + '\0', invalid},
        {"only NUL", std::string(1000, '\0'), invalid},
        {"byte order mark", "\xef\xbb\xbf" + file("\"x\""), invalid},
        {"UTF-16", std::string{"\xff\xfe{\0}\0", 6}, invalid},
#ifdef ORRELIN_STANDINS
        /* Corrade's own parser lets these pass */
        {"NUL in a text", file(std::string{"\"x\0y\"", 5}), invalid},
        {"half a surrogate pair", file("\"\\ud83d\""), invalid},
#endif
        {"half an escape", file("\"\\u12\""), invalid},
        {"cut short in a key", "{\"translation\": {\"a", invalid},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.name);
        const TemporaryFolder folder;
        folder.write("de.json", i.content);
        Project project{Document};
        const std::string before = project.stored("");
        EXPECT_EQ(printedBy(project, folder.path()), i.printed);
        EXPECT_EQ(project.translationsText(), R"({"de":{"a":"Ä"}})");
        EXPECT_EQ(project.stored(""), before);
        EXPECT_FALSE(project.changes().hasUnsavedChanges());
    }
}

/* Of what can't be read, each its line; the rest is imported */
TEST(ImportFaults, names) {
    const TemporaryFolder folder;
    folder.write("d\xff.json", file("\"x\""));
    folder.write("\xc3.json", file("\"x\""));
    folder.write("a\nb.json", file("\"x\""));
    folder.write(std::string(200, 'x') + ".json", file("\"x\""));
    folder.write("fr.json/file", "");
    folder.write("de.json", file("\"Text\""));
    std::filesystem::create_symlink("it.json", folder.path("it.json"));
    std::filesystem::create_directory_symlink(".", folder.path("es.json"));
    Project project{Document};
    const std::string before = project.stored("");
    const std::string printed = printedBy(project, folder.path());
    for(const std::string& name: {std::string{"d\xff"}, std::string{"\xc3"},
            std::string{"a\nb"}, std::string(200, 'x')})
        EXPECT_NE(printed.find("Unknown language code " + name +
                      " in imported file " + name + ".json\n"),
            std::string::npos)
            << printed;
    EXPECT_NE(printed.find("it.json"), std::string::npos) << printed;
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 7) << printed;
    EXPECT_EQ(project.translationsText(), R"({"de":{"a":"Text"}})");
    EXPECT_EQ(project.stored(""), before);
}

TEST(ImportFaults, manyLanguages) {
    constexpr int count = 10000;
    const TemporaryFolder folder;
    std::string languages;
    for(int i = 0; i != count; ++i) {
        const std::string code = "x" + std::to_string(i);
        folder.write(code + ".json", file('"' + code + '"'));
        languages += ", \"" + code + "\": {}";
    }
    Project project{"{\"languages\": {\"en\": {}" + languages +
        "}, \"texts\": {\"a\": \"A\"}}"};
    EXPECT_EQ(printedBy(project, folder.path()), "");
    for(int i = 0; i != count; ++i) {
        const std::string code = "x" + std::to_string(i);
        ASSERT_EQ(text(*project.translations().at(code).at("a")), code);
    }
}

TEST(ImportFaults, largeFile) {
    const char* const size = std::getenv("LARGE_FILE_BYTES");
    const std::string large(
        size ? std::strtoull(size, nullptr, 10) : 20000000, 'x');
    const TemporaryFolder folder;
    folder.write("de.json", file('"' + large + '"'));
    Project project{Document};
    EXPECT_EQ(printedBy(project, folder.path()), "");
    EXPECT_TRUE(*project.translations().at("de").at("a") == large);
}

/* Either of the two contents, one that's cut short or none, but nothing else
   and no reading past the end */
TEST(ImportFaults, fileThatChanges) {
    const TemporaryFolder folder;
    const std::string small = file("\"small\"");
    const std::string large = file('"' + std::string(100000, 'x') + '"');
    folder.write("de.json", small);
    std::atomic<bool> done{false};
    std::thread writer{[&] {
        while(!done) {
            folder.write("de.json", large);
            folder.write("de.json", small);
        }
    }};
    for(int i = 0; i != 300; ++i) {
        Project project{Document};
        const std::string printed = printedBy(project, folder.path());
        const std::size_t length =
            project.translations().at("de").at("a")->size();
        ASSERT_TRUE(length == 5 || length == 100000 || !printed.empty());
        ASSERT_TRUE(printed.empty() == (length == 5 || length == 100000));
    }
    done = true;
    writer.join();
}

}}
