#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>
#include <sys/stat.h>
#include <unistd.h>
#include <gtest/gtest.h>

#include "Project.h"
#include "Random.h"
#include "TemporaryFolder.h"
#include "editor/AllLanguages.h"
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
        "A zero byte at line 1, column 8"},
    {"NUL in a string", {"{\"a\": \"b\0c\"}", 12},
        "A zero byte at line 1, column 9"},
    {"NUL between", {"{\0\"a\": 1}", 9}, "A zero byte at line 1, column 2"},
    {"not UTF-8", "{\n\"\xc3\xa4\xe4\": 1}",
        "Text that isn't UTF-8 at line 2, column 3"},
    {"cut character", "{\"a\": \"\xe2\x82",
        "Text that isn't UTF-8 at line 1, column 8"},
    {"surrogate that isn't escaped", "{\"a\": \"\xed\xa0\x80\"}",
        "Text that isn't UTF-8 at line 1, column 8"},
    {"low surrogate", R"({"a": "\\\udc00"})",
        "Half of a surrogate pair at line 1, column 10"},
    {"high surrogate", R"({"a": "\ud83d\\dc00"})",
        "Half of a surrogate pair at line 1, column 8"},
    {"surrogates in the wrong order", R"({"a": "\udc00\ud83d"})",
        "Half of a surrogate pair at line 1, column 8"},
    {"integer above 64 bits", "{\"a\": [18446744073709551616]}",
        "An integer that doesn't fit 64 bits at line 1, column 8"},
    {"integer below 64 bits", "{\"a\": -9223372036854775809}",
        "An integer that doesn't fit 64 bits at line 1, column 7"},
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
            const std::string opening = "EditorSession::open(): can't open " +
                file + ": " + data.fault + '\n';
            EXPECT_EQ(printed.text(),
                std::string{"EditorSession::parse(): "} + data.fault + '\n' +
                    opening);
        }
        expectKept();
    }
}

/* Nothing changes then, neither the session nor the folder */
TEST_F(EditorSessionTest, filesThatFail) {
    folder.write("folder.json/inside", "");
    folder.write("locked.json", "{}");
    ASSERT_EQ(::chmod(folder.path("locked.json").data(), 0444), 0);
    ASSERT_EQ(::mkfifo(folder.path("pipe.json").data(), 0600), 0);
    folder.write("large.json", "{}");
    std::filesystem::resize_file(folder.path("large.json"), 1ull << 32);
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
        {false, folder.path("pipe.json"), "it is not a regular file"},
        {false, "/dev/zero", "it is not a regular file"},
        {false, folder.path("large.json"), "it is larger than 4 GiB"},
        {true, folder.path("locked.json"), "it is read-only"},
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
    EXPECT_EQ(folder.read("locked.json"), "{}");
    const std::filesystem::directory_iterator left{folder.path()};
    EXPECT_EQ(std::distance(begin(left), end(left)), 4);
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
            18446744073709551615]})",
        R"({"a":[0,-0.0,-1,2147483648,-9223372036854775808,)"
        R"(18446744073709551615]})"},
    {"fractions", R"({"a": [0.1, 1e3, 18446744073709551616e0,
            1.7976931348623157e308, 5e-324]})",
        R"({"a":[0.1,1000.0,18446744073709553000.0,)"
        R"(1.7976931348623157e308,5e-324]})"},
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

/* What adding a language adds to a file, and what is around it */
const struct {
    const char* name;
    std::string before, added, after;
} Looks[]{
    {"two spaces", "{\n  \"languages\": {\n    \"de\": {}",
        ",\n    \"en\": {\n      \"name\": \"English\"\n    }", "\n  }\n}"},
    {"tabs, CRLF, byte order mark",
        "\xef\xbb\xbf{\r\n\t\"e\": [1, \"\xc3\xa9\"],\r\n\t\"languages\": "
        "{\r\n\t\t\"de\": {\r\n\t\t}",
        ",\r\n\t\t\"en\": {\r\n\t\t\t\"name\": \"English\"\r\n\t\t}",
        "\r\n\t}\r\n}\r\n"},
    {"no indentation",
        "{\n\"a\" :[\n27.18933,\n-8.41e-7,\n4e22\n],\n\"languages\" :{\n\"de\" :[]",
        ",\n\"en\" :{\n\"name\" :\"English\"\n}", "\n}\n}\n\n"},
    {"one line", R"({"a":[1,{"b":""}],"languages":{"de":{})",
        R"(,"en":{"name":"English"})", "}}"},
    {"one line with spaces, ASCII",
        R"({"a": ["\u00e9", "\ud83d\ude00\u001f\n"], "languages": {"de": [])",
        R"(, "en": {"name": "English"})", "}}\n"},
    {"upper case, strings like JSON",
        "{\n   \"a\": \"\\\\[{,\\\"\\u00E9\",\n   \"languages\": {\n"
        "      \"de\": {}",
        ",\n      \"en\": {\n         \"name\": \"English\"\n      }",
        "\n   }\n}\n"},
};

unsigned short languageRow(StringView code) {
    unsigned short row = 0;
    while(AllLanguages[row].code != code)
        ++row;
    return row;
}

TEST_F(EditorSessionTest, filesKeepTheirLook) {
    const std::string file = folder.path("project.json");
    for(const auto& data: Looks) {
        SCOPED_TRACE(data.name);
        folder.write("project.json", data.before + data.after);
        const auto old =
            std::filesystem::last_write_time(file) - std::chrono::hours{1};
        std::filesystem::last_write_time(file, old);
        ASSERT_TRUE(session.open(file));
        ASSERT_TRUE(session.save(file));
        EXPECT_EQ(folder.read("project.json"), data.before + data.after);
        EXPECT_EQ(std::filesystem::last_write_time(file), old);

        LocalizationTools::addLanguage(session.editor(), languageRow("en"));
        const std::string added = data.before + data.added + data.after;
        ASSERT_TRUE(session.save(file));
        EXPECT_EQ(folder.read("project.json"), added);

        /* The same for who reads and writes files in another way */
        ASSERT_TRUE(session.open(file, {added.data(), added.size()}));
        EXPECT_EQ(*session.write(), added);
        EXPECT_EQ(text(*session.editor().projectRoot), folder.path());
    }

    ASSERT_TRUE(session.open(EXAMPLES "/museum/project.json"));
    EXPECT_EQ(*session.write(),
        TemporaryFolder::readFile(EXAMPLES "/museum/project.json"));
    ASSERT_TRUE(session.parse(R"({"a":{}})"));
    EXPECT_EQ(*session.write(), "{\n    \"a\": {}\n}\n");
}

const struct {
    const char* name;
    std::string before;
    const char* document;
    std::string after;
} Updates[]{
    {"additions", R"({
  "a": {"b" : 1.50, "c": [ 1, 1e3 ]},
  "d": {}, "e": [],
  "f": [
    {"g": "\u00e9\/"}
  ]
})",
        R"({"a": {"b": 1.5, "c": [1, 1000.0, 2], "n": {"o": [3]}},
            "d": {"p": 4}, "e": [5], "f": [{"g": "é/"}, {"h": 6}], "i": 7})",
        R"({
  "a": {"b" : 1.50, "c": [ 1, 1e3, 2 ], "n": {"o": [3]}},
  "d": {
    "p": 4
  }, "e": [5],
  "f": [
    {"g": "\u00e9\/"},
    {
      "h": 6
    }
  ],
  "i": 7
})"},
    {"changes", "{\r\n\t\"a\" : [ -0 , 1 ],\r\n\t\"b\": 0.0, \"c\": 1}\r\n",
        R"({"a": [-0.0, 1.0], "b": -0.0, "c": "1"})",
        "{\r\n\t\"a\" : [ -0 , 1.0 ],\r\n\t\"b\": -0.0, \"c\": \"1\"}\r\n"},
    {"removals",
        "{\n \"a\": [1,  2.0,\n3, 4],\n \"b\": { \"c\": 1 },\n"
        " \"d\":  {\"e\":0, \"f\":1.0}, \"g\": 1e0\n}",
        R"({"a": [1, 3, 4], "b": {}, "d": {"f": 1.0}})",
        "{\n \"a\": [1,\n3, 4],\n \"b\": {},\n \"d\":  {\"f\":1.0}\n}"},
    {"moves", "{\n \"a\": 1.0,\n \"b\": 1.00,\n  \"b\": 2e0,\n \"c\": 0e0\n}\n",
        R"({"c": 0.0, "x": 1, "b": 1.0, "b": 2.0, "a": 1.0, "b": 3.0})",
        "{\n \"c\": 0e0,\n \"x\": 1,\n \"b\": 1.00,\n \"b\": 2.0,\n"
        " \"a\": 1.0,\n \"b\": 3.0\n}\n"},
    {"an array that got longer and changed", "{\"a\": [[1e0,2],  [3e0]]}",
        R"({"a": [[1.0, 3], [4], [3.0]]})", "{\"a\": [[1e0,3],[4],  [3e0]]}"},
};

TEST_F(EditorSessionTest, unchangedStays) {
    const std::string file = folder.path("project.json");
    for(const auto& data: Updates) {
        SCOPED_TRACE(data.name);
        folder.write("project.json", data.before);
        ASSERT_TRUE(session.open(file));
        EXPECT_EQ(*session.write(), data.before);
        session.projectFile().document.Parse(data.document);
        EXPECT_EQ(*session.write(), data.after);
        ASSERT_TRUE(session.save(file));
        EXPECT_EQ(*session.write(), data.after);
    }

    /* Whatever happened to the file */
    const std::string expected = jsonText(session.projectFile().document);
    for(const char* const other:
        {"", "{", "{\"a\": [[1e0,3], [4], [3\n4]]}", "{\"a\": [[1e0,3}, [4]]}",
            "{\"a\"  [}", "{\"\n\": 1, \"a\":tru}"}) {
        SCOPED_TRACE(other);
        folder.write("project.json", other);
        EditorSession written;
        ASSERT_TRUE(written.parse(*session.write()));
        EXPECT_EQ(jsonText(written.projectFile().document), expected);
    }
}

std::string randomSpace(Random& random) {
    const char* const spaces[]{"", "", " ", "\n", "\r\n", "\t"};
    return random.oneOf(spaces);
}

std::string randomJson(Random& random, int depth) {
    const char* const scalars[]{"null", "true", "-1", "9007199254740993", "-0",
        "0.1", "27.18933", "1.50", "-2.5E-3", "8.41e-07", "123456789012345678",
        "4e22", "1.7976931348623157e308", "\"\"", "\"\\u00e4\\n\\/\"",
        "\"\xf0\x9f\x98\x80\\\\\\\"\"", "\"\\ud83d\\ude00\\u0000\""};
    if(!depth || random.oneIn(3))
        return random.oneOf(scalars);
    const bool object = random.oneIn(2);
    std::string out = object ? "{" : "[";
    for(std::size_t i = 0, size = random.below(5); i != size; ++i)
        out += (i ? "," : "") + randomSpace(random) +
            (object ? "\"" + std::to_string(i) + "\\t\":" : "") +
            randomSpace(random) + randomJson(random, depth - 1);
    return out + randomSpace(random) + (object ? '}' : ']');
}

/* Numbers come as they're spelled: integers stay so, others stay the same
   double */
void expectSame(const JsonValue& a, const JsonValue& b) {
    ASSERT_EQ(a.GetType(), b.GetType());
    if(a.IsString() && a != b) {
        const std::string number = a.GetString();
        EXPECT_TRUE(
            number == "-0" || number.find_first_of(".eE") != number.npos)
            << number << " became " << b.GetString();
        const double before = std::strtod(a.GetString(), nullptr);
        const double after = std::strtod(b.GetString(), nullptr);
        EXPECT_EQ(std::memcmp(&before, &after, sizeof(double)), 0) << number;
    } else if(a.IsArray()) {
        ASSERT_EQ(a.Size(), b.Size());
        for(unsigned i = 0; i != a.Size(); ++i)
            expectSame(a[i], b[i]);
    } else if(a.IsObject()) {
        ASSERT_EQ(a.MemberCount(), b.MemberCount());
        for(unsigned i = 0; i != a.MemberCount(); ++i) {
            EXPECT_EQ(a.MemberBegin()[i].name, b.MemberBegin()[i].name);
            expectSame(a.MemberBegin()[i].value, b.MemberBegin()[i].value);
        }
    }
}

JsonDocument spelled(StringView json) {
    JsonDocument out;
    out.Parse<rapidjson::kParseNumbersAsStringsFlag>(json.data(), json.size());
    return out;
}

TEST_F(EditorSessionTest, valuesDontChange) {
    Random random{environment("ORRELIN_SEED", 1)};
    for(int i = 0; i != 2000; ++i) {
        const std::string json =
            "{\"a\":" + randomSpace(random) + randomJson(random, 5) + '}';
        SCOPED_TRACE(json);
        ASSERT_TRUE(session.open("project.json", {json.data(), json.size()}));
        const Containers::String saved = *session.write();
        expectSame(spelled({json.data(), json.size()}), spelled(saved));
        ASSERT_TRUE(session.open("project.json", saved));
        ASSERT_EQ(text(*session.write()), text(saved));
    }
}

void edit(JsonValue& value, JsonAllocator& allocator, Random& random) {
    const bool isDeep = !random.oneIn(3);
    if(value.IsObject() && value.MemberCount()) {
        const auto i = value.MemberBegin() +
            std::ptrdiff_t(random.below(value.MemberCount()));
        if(isDeep)
            edit(i->value, allocator, random);
        else if(random.oneIn(2))
            value.EraseMember(i);
        else
            value.AddMember("new", JsonValue{rapidjson::kArrayType}, allocator);
    } else if(value.IsArray() && !value.Empty()) {
        JsonValue* const i = value.Begin() + random.below(value.Size());
        if(isDeep)
            edit(*i, allocator, random);
        else if(random.oneIn(2))
            value.Erase(i);
        else {
            value.PushBack(0.5, allocator);
            std::swap(*i, value[value.Size() - 1]);
        }
    } else
        value.SetObject().AddMember("\t", 1, allocator);
}

TEST_F(EditorSessionTest, otherRecordsStay) {
    Random random{environment("ORRELIN_SEED", 1)};
    const std::string file = folder.path("project.json");
    for(int i = 0; i != 300; ++i) {
        std::vector<std::string> records;
        std::string json;
        for(std::size_t j = 0; j != 8; ++j) {
            records.push_back("\"" + std::to_string(j) + "\"" +
                randomSpace(random) + ":" + randomSpace(random) +
                randomJson(random, 4));
            json += (j ? "," : "{") + randomSpace(random) + records.back();
        }
        folder.write("project.json", json + '}');
        SCOPED_TRACE(json);
        ASSERT_TRUE(session.open(file));
        /* Saved twice, as what was saved is the text for the next time */
        for(const std::size_t record: {random.below(8), random.below(8)}) {
            JsonDocument& document = session.projectFile().document;
            edit((document.MemberBegin() + std::ptrdiff_t(record))->value,
                document.GetAllocator(), random);
            records[record].clear();
            const std::string expected = jsonText(document);
            ASSERT_TRUE(session.save(file));
            const std::string saved = folder.read("project.json");
            std::size_t at = 0;
            for(const std::string& kept: records)
                ASSERT_NE(at = saved.find(kept, at), saved.npos) << saved;
            EditorSession other;
            ASSERT_TRUE(other.open(file));
            ASSERT_EQ(jsonText(other.projectFile().document), expected);
        }
    }
}

/* Of languages that are added, the change manager doesn't know */
TEST_F(EditorSessionTest, unsavedLanguages) {
    const auto unsaved = [&] { return session.hasUnsavedChanges(); };
    ASSERT_TRUE(session.parse(
        R"({"languages": {"de": {"name": "German"}, "fr": {}}})"));
    EXPECT_FALSE(unsaved());

    /* Undoing a removal puts a language at the end */
    LocalizationTools::removeLanguage(session.editor(), "de");
    EXPECT_TRUE(unsaved());
    session.changeManager().undoLast();
    EXPECT_FALSE(unsaved());

    LocalizationTools::addLanguage(session.editor(), languageRow("de"));
    EXPECT_FALSE(unsaved());
    LocalizationTools::addLanguage(session.editor(), languageRow("fr"));
    EXPECT_TRUE(unsaved());
    session.markSaved();
    EXPECT_FALSE(unsaved());
    session.editor().project["languages/fr/name"].setString("French!");
    EXPECT_TRUE(unsaved());
    EXPECT_TRUE(session.save(folder.path("project.json")));
    EXPECT_FALSE(unsaved());
    session.editor().project["settings/localization/defaultLanguage"].setString(
        "fr");
    EXPECT_TRUE(unsaved());
    ASSERT_TRUE(session.open(folder.path("project.json")));
    EXPECT_FALSE(unsaved());

    /* Removed and added again, then undone */
    LocalizationTools::addLanguage(session.editor(), languageRow("en"));
    session.markSaved();
    LocalizationTools::removeLanguage(session.editor(), "en");
    LocalizationTools::addLanguage(session.editor(), languageRow("en"));
    session.changeManager().undoLast();
    EXPECT_FALSE(unsaved());
}

TEST_F(EditorSessionTest, saveKeepsLinkAndMode) {
    namespace fs = std::filesystem;
    folder.write("projects/museum.json", "{}");
    fs::create_symlink("projects/museum.json", folder.path("link.json"));
    fs::permissions(folder.path("projects/museum.json"), fs::perms(0640));

    /* Only an administrator can give files away */
    const uid_t owner = ::geteuid() ? ::geteuid() : 12345;
    ASSERT_EQ(
        ::chown(folder.path("projects/museum.json").data(), owner, gid_t(-1)),
        0);

    ASSERT_TRUE(session.save(folder.path("link.json")));
    struct stat status;
    ASSERT_EQ(::stat(folder.path("link.json").data(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
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
        {nested(1001), nested(1000000), std::string{"[]"},
            std::string{"{\"a\": [0, {\"b/c\": \"\xff\"}]}"}}) {
        JsonDocument value;
        value.Parse<rapidjson::kParseIterativeFlag>(json.data());
        session.changeManager().pushChange("", value, false);
        const Printed printed;
        EXPECT_FALSE(session.save(file));
        const std::string line = printed.text();
        EXPECT_FALSE(session.write());
        EXPECT_EQ(line,
            "EditorSession::save(): can't write " + file + ": " +
                (json == "[]"              ? "The root is no object\n"
                        : json.size() < 50 ? "A text that isn't UTF-8 at "
                                             "/a/1/b~1c\n"
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
