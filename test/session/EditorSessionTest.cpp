#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>
#include <sys/stat.h>
#include <unistd.h>
#include <gtest/gtest.h>

#include "Project.h"
#include "TemporaryFolder.h"
#include "editor/EditorSceneData.h"
#include "session/EditorSession.h"

namespace OrrelinEngine { namespace {

using Containers::StringView;
using namespace Containers::Literals;

std::string nested(std::size_t depth) {
    return "{\"a\": " + std::string(depth - 1, '[') +
        std::string(depth - 1, ']') + '}';
}

/* An open project with a history, terms and a change that can be redone */
struct EditorSessionTest: testing::Test {
    EditorSessionTest() {
        EXPECT_TRUE(session.parse(R"({"a": {"b": "c"}})"));
        session.localization().terms.emplace("term", "/a/b");
        session.changeManager().pushChange("/a/b", JsonValue{1}, false);
        session.changeManager().pushChange("/a/b", JsonValue{2}, false);
        session.changeManager().undoLast();
    }

    void expectKept() {
        EXPECT_EQ(jsonText(session.projectFile().document), R"({"a":{"b":1}})");
        EXPECT_EQ(session.localization().terms.size(), 1u);
        EXPECT_EQ(text(*session.editor().projectRoot), "root");
        EXPECT_TRUE(session.changeManager().hasUnsavedChanges());

        session.changeManager().redoLastUndo();
        EXPECT_EQ(jsonText(session.projectFile().document), R"({"a":{"b":2}})");
        session.changeManager().undoLast();
    }

    EditorSession session{"root"};
    TemporaryFolder folder;
};

const struct {
    const char* name;
    std::string json;
    const char* fault;
} Faults[]{
    {"empty", "", "The document is empty at line 1, column 1"},
    {"blank", " \n ", "The document is empty at line 2, column 2"},
    {"columns are characters", "{\"äöü\": \"é\", x}",
        "Missing a name for object member at line 1, column 14"},
    {"trailing comma", "{\"a\": 1,}",
        "Missing a name for object member at line 1, column 9"},
    {"NUL after it", {"{\"a\":1}\0garbage", 15},
        "The document root must not be followed by other values "
        "at line 1, column 8"},
    {"NUL in a string", {"{\"a\": \"b\0c\"}", 12},
        "Invalid escape character in string at line 1, column 9"},
    {"NUL between", {"{\0\"a\": 1}", 9},
        "Missing a name for object member at line 1, column 2"},
    {"number a little too large", "{\"a\": -1.8e308}",
        "Number too big to be stored in double at line 1, column 7"},
    {"fault after a byte order mark", "\xef\xbb\xbf{x}",
        "Missing a name for object member at line 1, column 2"},
    {"root is an array", "[{}]", "The root is no object at line 1, column 1"},
    {"root is null", "\n null", "The root is no object at line 1, column 1"},
    {"too deep", nested(1001),
        "More than 1000 nested levels at line 1, column 1006"},
    {"far too deep", "{\"a\": " + std::string(1000000, '['),
        "More than 1000 nested levels at line 1, column 1006"},
};

TEST_F(EditorSessionTest, faults) {
    const std::string file = folder.path("project.json");
    for(const auto& data: Faults) {
        SCOPED_TRACE(data.name);
        folder.write("project.json", data.json);
        {
            const Printed printed;
            EXPECT_FALSE(session.parse({data.json.data(), data.json.size()}));
            EXPECT_FALSE(session.open(file));
            EXPECT_EQ(printed.text(),
                std::string{"EditorSession::parse(): "} + data.fault +
                    "\nEditorSession::open(): can't open " + file + ": " +
                    data.fault + '\n');
        }
        expectKept();
    }
}

/* Nothing changes then, neither the session nor the folder */
TEST_F(EditorSessionTest, filesThatFail) {
    folder.write("folder.json/inside", "");
    const struct {
        bool saves;
        std::string file;
        const char* reason;
    } files[]{
        {false, folder.path("absent.json"), "No such file or directory"},
        {false, folder.path("absent/project.json"),
            "No such file or directory"},
        {false, folder.path(), "Is a directory"},
        {false, "", "No such file or directory"},
        {true, folder.path("absent/project.json"), "No such file or directory"},
        {true, folder.path("folder.json"), "Is a directory"},
    };
    for(const auto& data: files) {
        SCOPED_TRACE(data.file);
        const Printed printed;
        EXPECT_FALSE(
            data.saves ? session.save(data.file) : session.open(data.file));
        EXPECT_EQ(printed.text(),
            "EditorSession::" +
                std::string{data.saves ? "save(): can't write "
                                       : "open(): can't read "} +
                data.file + ": " + data.reason + '\n');
    }
    expectKept();
    for(const auto& i: std::filesystem::directory_iterator{folder.path()})
        EXPECT_EQ(i.path().filename(), "folder.json");
}

const struct {
    const char* name;
    std::string json;
    const char* document;
} Documents[]{
    {"smallest", "{}", "{}"},
    {"byte order mark", "\xef\xbb\xbf{\"a\": 1}", R"({"a":1})"},
    {"space around it", " \r\n\t{ } \n", "{}"},
    {"escapes", R"({"\u00e9\n": "\ud83d\ude00\/", "nul": "\u0000"})",
        "{\"\u00e9\\n\":\"\U0001f600/\",\"nul\":\"\\u0000\"}"},
    {"integers", R"({"a": [0, -0, -1, 2147483648, -9223372036854775808,
            18446744073709551615, 18446744073709551616]})",
        R"({"a":[0,0,-1,2147483648,-9223372036854775808,)"
        R"(18446744073709551615,18446744073709553000.0]})"},
    {"fractions", R"({"a": [0.1, 1e3, 1.7976931348623157e308, 5e-324]})",
        R"({"a":[0.1,1000.0,1.7976931348623157e308,5e-324]})"},
    {"zeros", R"({"a": [-0.0, 0e113, -0.00e50, 123e-400, -0.0001e-330]})",
        R"({"a":[-0.0,0.0,-0.0,0.0,-0.0]})"},
};

TEST_F(EditorSessionTest, parse) {
    for(const auto& data: Documents) {
        SCOPED_TRACE(data.name);
        const Printed printed;
        EXPECT_TRUE(session.parse({data.json.data(), data.json.size()}));
        EXPECT_EQ(jsonText(session.projectFile().document), data.document);
        EXPECT_EQ(printed.text(), "");
    }
    EXPECT_EQ(text(*session.editor().projectRoot), "root");
}

TEST_F(EditorSessionTest, openingStartsAnew) {
    bool told = false;
    session.changeManager().addChangeHandler("a",
        Containers::Pointer<FunctionChangeHandler>{Corrade::InPlaceInit,
            [](const Change&, Containers::ArrayView<StringView>,
                void* userData) { *static_cast<bool*>(userData) = true; },
            &told});
    session.localization().translations["de"];
    session.addScriptType("button", {});
    session.changeManager().beginGroup();

    ASSERT_TRUE(session.parse(R"({"a": {"b": "other"}})"));
    EXPECT_FALSE(session.changeManager().hasUnsavedChanges());
    EXPECT_TRUE(session.localization().terms.empty());
    EXPECT_TRUE(session.localization().translations.empty());
    EXPECT_EQ(
        *session.editor().sceneData->main().javaScriptManager.typeCount, 1u);

    /* Nothing to undo or redo, no group is open, nobody listens */
    session.changeManager().undoLast();
    session.changeManager().redoLastUndo();
    EXPECT_EQ(text(session.editor().project["a/b"].asString()), "other");
    session.changeManager().pushRemoval("/a/b");
    EXPECT_FALSE(told);
    session.changeManager().undoLast();
    EXPECT_EQ(text(session.editor().project["a/b"].asString()), "other");
    EXPECT_FALSE(session.changeManager().hasUnsavedChanges());
}

TEST_F(EditorSessionTest, openSetsTheRoot) {
    folder.write("project.json", "{}");
    ASSERT_TRUE(session.open(folder.path("project.json")));
    EXPECT_EQ(text(*session.editor().projectRoot), folder.path());

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_TRUE(session.open("project.json"));
    EXPECT_EQ(text(*session.editor().projectRoot), ".");
    std::filesystem::current_path(before);
}

TEST_F(EditorSessionTest, saveIsByteIdentical) {
    const std::string original =
        TemporaryFolder::readFile(EXAMPLES "/museum/project.json");
    ASSERT_FALSE(original.empty());
    ASSERT_TRUE(session.open(EXAMPLES "/museum/project.json"));
    ASSERT_TRUE(session.save(folder.path("project.json")));
    EXPECT_EQ(folder.read("project.json"), original);
}

TEST_F(EditorSessionTest, saveKeepsLinkAndMode) {
    namespace fs = std::filesystem;
    folder.write("projects/museum.json", "{}");
    fs::create_symlink("projects/museum.json", folder.path("link.json"));
    fs::permissions(folder.path("projects/museum.json"), fs::perms(0640));

    ASSERT_TRUE(session.save(folder.path("link.json")));
    EXPECT_TRUE(fs::is_symlink(folder.path("link.json")));
    EXPECT_NE(folder.read("projects/museum.json"), "{}");
    EXPECT_EQ(fs::status(folder.path("projects/museum.json")).permissions(),
        fs::perms(0640));

    /* A link to where nothing is yet */
    fs::remove(folder.path("projects/museum.json"));
    ASSERT_TRUE(session.save(folder.path("link.json")));
    EXPECT_TRUE(fs::is_symlink(folder.path("link.json")));
    EXPECT_TRUE(fs::exists(folder.path("projects/museum.json")));
}

TEST_F(EditorSessionTest, newFileHasTheUsualMode) {
    const mode_t mask = ::umask(0027);
    EXPECT_TRUE(session.save(folder.path("project.json")));
    ::umask(mask);
    EXPECT_EQ(
        std::filesystem::status(folder.path("project.json")).permissions(),
        std::filesystem::perms(0640));
}

TEST_F(EditorSessionTest, saveOfWhatIsNoNumber) {
    JsonValue list{rapidjson::kArrayType};
    for(const double d: {1.5, double(NAN), HUGE_VAL, -HUGE_VAL})
        list.PushBack(d, session.projectFile().allocator());
    session.projectFile()["a"].writeValue() = list;

    const Printed printed;
    EXPECT_TRUE(session.save(folder.path("project.json")));
    EXPECT_EQ(printed.text(),
        "EditorSession::save(): numbers in " + folder.path("project.json") +
            " that aren't finite were written as null: 3\n");
    ASSERT_TRUE(session.open(folder.path("project.json")));
    EXPECT_EQ(jsonText(session.projectFile().document),
        R"({"a":[1.5,null,null,null]})");
}

/* What couldn't be opened again isn't, and the mark stays where it was */
TEST_F(EditorSessionTest, saveMarksWhatIsSaved) {
    const std::string file = folder.path("project.json");
    folder.write("project.json", "old");
    for(const std::string& json:
        {nested(1001), nested(1000000), std::string{"[]"}}) {
        JsonDocument value;
        value.Parse<rapidjson::kParseIterativeFlag>(json.data());
        session.changeManager().pushChange("", value, false);
        const Printed printed;
        EXPECT_FALSE(session.save(file));
        EXPECT_EQ(printed.text(),
            "EditorSession::save(): can't write " + file + ": " +
                (json == "[]" ? "The root is no object\n"
                              : "More than 1000 nested levels\n"));
    }
    EXPECT_EQ(folder.read("project.json"), "old");
    EXPECT_TRUE(session.changeManager().hasUnsavedChanges());

    session.projectFile().document.Parse(nested(1000).data());
    EXPECT_TRUE(session.save(file));
    EXPECT_FALSE(session.changeManager().hasUnsavedChanges());
    EXPECT_EQ(text(*session.editor().projectRoot), "root");
    session.changeManager().undoLast();
    EXPECT_TRUE(session.changeManager().hasUnsavedChanges());
    EXPECT_TRUE(session.open(file));
}

TEST_F(EditorSessionTest, tooManyScriptTypes) {
    for(int i = 0; i != 65535; ++i)
        session.addScriptType("type", {});
    const Printed printed;
    session.addScriptType("one", {});
    EXPECT_EQ(printed.text(),
        "EditorSession::addScriptType(): no room for "
        "one with 0 parameters\n");
}

}}
