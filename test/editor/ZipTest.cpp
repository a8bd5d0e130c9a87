#include <algorithm>
#include <string>
#include <vector>
#include <sys/stat.h>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "editor/StringArray.h"
#include "editor/Zip.h"

namespace OrrelinEngine { namespace {

using Containers::Array;
using Containers::ArrayView;
using Containers::StringView;

struct Entry {
    std::string name, content;

    bool operator==(const Entry& other) const {
        return name == other.name && content == other.content;
    }
};

typedef std::vector<Entry> Entries;

std::ostream& operator<<(std::ostream& out, const Entry& entry) {
    return out << entry.name << " (" << entry.content.size() << " bytes)";
}

Result write(const Entries& entries, const std::string& path) {
    Array<StringView> names;
    Array<ArrayView<const char>> contents;
    for(const Entry& i: entries) {
        arrayAppend(names, StringView{i.name.data(), i.name.size()});
        arrayAppend(contents,
            ArrayView<const char>{i.content.data(), i.content.size()});
    }
    return writeZip(names, contents, StringView{path.data(), path.size()});
}

/* Appends to what is there, the reason of a failure otherwise */
std::string read(const std::string& path, Entries& out,
    const Containers::StringIterable& extensions = {".json"}) {
    StringArray names;
    Array<Array<char>> contents;
    names.add("before");
    arrayAppend(contents, Array<char>{});

    const Result result = readZip(names, extensions, contents, path.data());
    EXPECT_EQ(names.size(), contents.size());
    EXPECT_EQ(names.get(0), "before");
    for(std::size_t i = 1; i < names.size(); ++i)
        out.push_back({std::string{names.get(i)},
            {contents[i].begin(), contents[i].end()}});
    return result ? "" : std::string{result.error()};
}

std::string littleEndian(std::uint32_t value, std::size_t size) {
    std::string out;
    for(; size; --size, value >>= 8)
        out += char(value);
    return out;
}

std::string noise(std::size_t size) {
    std::string out;
    for(std::uint32_t i = 1; out.size() != size; i = i * 1664525 + 1013904223)
        out += char(i >> 24);
    return out;
}

struct Zip: testing::Test {
    /* The entries of an archive with this content */
    std::string readContent(const std::string& content, Entries& out) {
        /* Some file systems take their time to write over a file */
        std::filesystem::remove(path);
        folder.write("Demo.zip", content);
        return read(path, out);
    }

    TemporaryFolder folder;
    std::string path = folder.path("Demo.zip");
};

const Entries Languages{
    {"de.json", "{\"translation\": {\"hello\": \"Hallo, hallo, hallo\"}}\n"},
    {"notes.txt", "Hello!"},
    {"sub/māori ✓.json", std::string{"\0\xff binary \r\n", 12}},
    {"empty.json", ""}};

TEST_F(Zip, RoundTrip) {
    Entries many;
    for(std::size_t i = 0; i != 2000; ++i)
        many.push_back({std::to_string(i) + ".json", noise(i)});

    for(const Entries& i: {Languages, many, {{"a.json", noise(3'000'000)}}}) {
        EXPECT_TRUE(write(i, path));
        Entries out;
        EXPECT_EQ(read(path, out, {".txt", ".json"}), "");
        EXPECT_EQ(out, i);
    }
}

TEST_F(Zip, OtherReader) {
    if(std::system("unzip -v > /dev/null 2>&1"))
        GTEST_SKIP() << "unzip is not installed";

    ASSERT_TRUE(write(Languages, path));
    const std::string command =
        "cd " + folder.path() + " && LC_ALL=C.UTF-8 unzip -qq Demo.zip";
    EXPECT_EQ(std::system(command.data()), 0);
    for(const Entry& i: Languages)
        EXPECT_EQ(folder.read(i.name), i.content) << i.name;
}

TEST_F(Zip, SameBytes) {
    ASSERT_TRUE(write(Languages, path));
    const std::string bytes = folder.read("Demo.zip");
    /* Of the first entry: deflated, no time of day, the first day there is */
    EXPECT_EQ(bytes.substr(8, 6), (std::string{"\x08\0\0\0\x21\0", 6}));
    /* A file with mode 0644 */
    EXPECT_EQ(bytes.substr(bytes.find("PK\1\2") + 38, 4),
        (std::string{"\0\0\xa4\x81", 4}));

    /* A repetition is no entry of its own */
    Entries repeated = Languages;
    repeated.push_back(Languages[0]);
    ASSERT_TRUE(write(repeated, path));
    EXPECT_EQ(folder.read("Demo.zip"), bytes);
}

TEST_F(Zip, Extensions) {
    const struct {
        std::vector<StringView> extensions;
        Entries expected;
    } data[]{
        {{".json"}, {{"a.json", "1"}, {"x/a.json", "2"}, {"b.b.json", "3"}}},
        {{".JSON", ".txt"}, {{"c.JSON", "4"}}},
        {{""}, {{".json", "5"}, {"json", "6"}}}, {{}, {}}};
    ASSERT_TRUE(write(
        {{"a.json", "1"}, {"c.JSON", "4"}, {"x/", ""}, {"x/a.json", "2"},
            {".json", "5"}, {"y.json/", ""}, {"json", "6"}, {"b.b.json", "3"}},
        path));
    for(const auto& i: data) {
        Entries out;
        EXPECT_EQ(read(path, out,
                      ArrayView<const StringView>{
                          i.extensions.data(), i.extensions.size()}),
            "");
        EXPECT_EQ(out, i.expected);
    }
}

/* A failure leaves the folder as it was, whatever stands in the way */
TEST_F(Zip, WriteFailures) {
    const std::string name(65536, 'x');
    const struct {
        Entries entries;
        const char* file;
        std::string reason;
    } data[]{{{}, "old.zip", "there are no entries"},
        {{{"a", "1"}, {"b", "2"}, {"a", "3"}}, "old.zip",
            "entry a: two different contents have this name"},
        {{{"a", ""}, {std::string{"a\0b", 3}, ""}}, "old.zip",
            std::string{
                "entry a\0b: the name is too long or has a zero byte", 50}},
        {{{name, ""}}, "old.zip",
            "entry " + name + ": the name is too long or has a zero byte"},
        {{{"", ""}}, "old.zip", "entry : the name is empty"},
        {{{"\xff.json", ""}}, "old.zip",
            "entry \xff.json: the name is not UTF-8"},
        {Languages, "folder", "Is a directory"},
        {Languages, "pipe", "it is not a regular file"},
        {Languages, "missing/x.zip", "No such file or directory"},
        {Languages, "old.zip/x.zip", "Not a directory"}};

    folder.write("old.zip", "old");
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").data(), 0600), 0);
    for(const auto& i: data) {
        const std::string file = folder.path(i.file);
        const Result result = write(i.entries, file);
        ASSERT_FALSE(result) << file;
        EXPECT_EQ(std::string{result.error()},
            "can't write " + file + ": " + i.reason);
    }
    EXPECT_EQ(folder.read("old.zip"), "old");
    EXPECT_TRUE(std::filesystem::is_fifo(folder.path("pipe")));
    const std::filesystem::directory_iterator files{folder.path()};
    EXPECT_EQ(std::distance(begin(files), end(files)), 3);
}

TEST_F(Zip, NoArchive) {
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").data(), 0600), 0);
    folder.write("nothing", "");
    folder.write("text", "{\"translation\": {}}");
    const struct {
        const char *file, *reason;
    } data[]{{"missing", "No such file or directory"},
        {"folder", "Is a directory"}, {"pipe", "it is not a regular file"},
        {"nothing", "it is empty"}, {"text", "Not a zip archive"}};
    for(const auto& i: data) {
        const std::string file = folder.path(i.file);
        Entries out;
        EXPECT_EQ(read(file, out), "can't read " + file + ": " + i.reason);
        EXPECT_EQ(out, Entries{});
    }

    /* This is one, without entries */
    Entries out;
    EXPECT_EQ(readContent("PK\5\6" + std::string(18, '\0'), out), "");
    EXPECT_EQ(out, Entries{});
}

/* Offsets in the central directory's record of an entry */
enum : std::size_t {
    Flags = 8,
    Method = 10,
    Crc = 16,
    Packed = 20,
    Size = 24,
    Offset = 42
};

TEST_F(Zip, HostileEntries) {
    constexpr std::uint32_t limit = 2048u << 20;
    const struct {
        std::size_t entry, field, size;
        std::uint32_t value;
        const char* reason;
    } data[]{{0, Crc, 4, 0xdeadbeef, "entry de.json: CRC error"},
        {0, Flags, 2, 1, "entry de.json: it is encrypted"},
        {0, Method, 2, 12, "entry de.json: it is packed in an unsupported way"},
        {0, Method, 2, 0, "entry de.json: its size can't be true"},
        {0, Packed, 4, 7, "entry de.json: its size can't be true"},
        {0, Packed, 4, 970, "entry de.json: CRC error"},
        {0, Packed, 4, 1000000, "entry de.json: it overlaps others"},
        {0, Offset, 4, 1000000, "entry de.json: Invalid argument"},
        /* The first has 1,000,000 bytes, the last none */
        {0, Size, 4, 10, "entry de.json: it is larger than it claims to be"},
        {0, Size, 4, 1000001,
            "entry de.json: it is smaller than it claims to be"},
        {0, Size, 4, 0xfffffff0,
            "entry de.json: all together are larger than 2 GiB"},
        {2, Size, 4, limit - 1000000,
            "entry empty.json: its size can't be true"},
        {2, Size, 4, limit - 999999,
            "entry empty.json: all together are larger than 2 GiB"},
        /* Nobody wants this one */
        {1, Crc, 4, 0xdeadbeef, ""}};

    const Entries good{{"de.json", std::string(1000000, ' ')},
        {"notes.txt", "Hello!"}, {"empty.json", ""}};
    ASSERT_TRUE(write(good, path));
    const std::string archive = folder.read("Demo.zip");
    std::vector<std::size_t> records;
    for(std::size_t at = 0;
        (at = archive.find("PK\1\2", at)) != std::string::npos; ++at)
        records.push_back(at);
    ASSERT_EQ(records.size(), 3);

    for(const auto& i: data) {
        std::string changed = archive;
        changed.replace(
            records[i.entry] + i.field, i.size, littleEndian(i.value, i.size));
        Entries out;
        EXPECT_EQ(readContent(changed, out),
            *i.reason ? "can't read " + path + ": " + i.reason : "");
        EXPECT_EQ(out, *i.reason ? Entries{} : (Entries{good[0], good[2]}));
    }
}

TEST_F(Zip, Cut) {
    ASSERT_TRUE(write(Languages, path));
    const std::string archive = folder.read("Demo.zip");
    for(std::size_t size = 0; size != archive.size(); ++size) {
        Entries out;
        EXPECT_NE(readContent(archive.substr(0, size), out), "") << size;
        EXPECT_EQ(out, Entries{}) << size;
    }
}

/* Contents never change, whatever byte does */
TEST_F(Zip, Damaged) {
    ASSERT_TRUE(write(Languages, path));
    const std::string archive = folder.read("Demo.zip");
    for(std::size_t i = 0; i != archive.size(); ++i)
        for(const char bits: {'\x01', '\x20', '\x80', '\xff'}) {
            std::string changed = archive;
            changed[i] = char(changed[i] ^ bits);
            Entries out;
            const bool failed = !readContent(changed, out).empty();
            EXPECT_TRUE(!failed || out.empty());
            for(const Entry& j: out)
                EXPECT_TRUE(std::any_of(Languages.begin(), Languages.end(),
                    [&](const Entry& k) { return k.content == j.content; }))
                    << j << " with byte " << i << " changed";
        }
}

TEST(Result, ErrorOfSuccess) {
    EXPECT_FALSE(Result{Containers::String{"reason"}});
    EXPECT_EQ(Result{Containers::String{"reason"}}.error(), "reason");
    EXPECT_TRUE(Result{});
    EXPECT_EXIT(Result{}.error(), testing::KilledBySignal(SIGABRT),
        "^Result::error\\(\\): Accessed error of valid result\n$");
}

}}
