#include <set>
#include <string>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "TemporaryFolder.h"
#include "vectors.h"

namespace OrrelinEngine { namespace {

namespace Path = Utility::Path;
using namespace Containers::Literals;

TEST(PathTest, vectors) {
    for(const rapidjson::Value& i: vectors("splitExtension").GetArray()) {
        const auto actual = Path::splitExtension(stringView(i[0]));
        EXPECT_EQ(actual.first(), stringView(i[1])) << i[0].GetString();
        EXPECT_EQ(actual.second(), stringView(i[2])) << i[0].GetString();
    }
    for(const rapidjson::Value& i: vectors("join").GetArray()) {
        Containers::Array<Containers::StringView> parts{
            Corrade::ValueInit, i["parts"].Size()};
        for(std::size_t j = 0; j != parts.size(); ++j)
            parts[j] = stringView(i["parts"][j]);
        EXPECT_EQ(Path::join(parts), stringView(i["result"]));
    }
}

TEST(PathTest, split) {
    const char* const data[][2]{{"", ""}, {"file", ""}, {"/file", "/"},
        {"/a/b/file", "/a/b"}, {"a/b/", "a/b"}};
    for(const auto& i: data)
        EXPECT_EQ(Path::split(i[0]).first(), i[1]);
}

TEST(PathTest, files) {
    const TemporaryFolder folder;
    const std::string directory = folder.path("a/b/");
    const std::string first = directory + "first", second = folder.path("c");
    for(int i = 0; i != 2; ++i)
        EXPECT_TRUE(Path::make(directory));
    EXPECT_TRUE(Path::isDirectory(directory));
    for(const std::size_t size: {0, 1, 4095, 100000}) {
        const std::string text(size, 'x');
        ASSERT_TRUE(Path::write(first, Containers::StringView{text}));
        EXPECT_EQ(*Path::size(first), size);
        EXPECT_EQ(*Path::readString(first), text);
    }
    EXPECT_FALSE(Path::isDirectory(first));
    EXPECT_TRUE(Path::move(first, second));
    EXPECT_FALSE(Path::exists(first));
    const auto names = Path::list(folder.path());
    EXPECT_EQ(std::set<std::string>(names->begin(), names->end()),
        (std::set<std::string>{".", "..", "a", "c"}));
    for(const std::string& i: {second, directory}) {
        EXPECT_TRUE(Path::remove(i));
        EXPECT_FALSE(Path::exists(i));
    }
    /* Has a size of zero according to the system */
    EXPECT_GT(Path::readString("/proc/self/status")->size(), 100u);
}

TEST(PathTest, errors) {
    const TemporaryFolder folder;
    folder.write("present", "x");
    const std::string missing = folder.path("missing");
    const std::string present = folder.path("present");
    Containers::String out;
    const auto fails = [&](bool result, const std::string& function) {
        EXPECT_FALSE(result) << function;
        EXPECT_TRUE(Containers::StringView{out}.hasPrefix(
            "Utility::Path::" + function + "(): "))
            << out.data();
        out = {};
    };
    Utility::Error redirectError{&out};
    fails(bool(Path::read(missing)), "read");
    fails(bool(Path::read(folder.path())), "read");
    fails(bool(Path::list(missing)), "list");
    fails(Path::write(missing + "/x", "x"_s), "write");
    fails(Path::remove(missing), "remove");
    fails(Path::move(missing, present), "move");
    fails(Path::make(present + "/x"), "make");
#ifdef ORRELIN_STANDINS
    fails(bool(Path::size(missing)), "size");
    fails(Path::write("/dev/full", "x"_s), "write");
#endif
}

}}
