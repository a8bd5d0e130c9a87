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

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using namespace OrrelinEngine;
namespace Path = Utility::Path;

TEST(Path, splitExtension) {
    for(const rapidjson::Value& i: vectors("splitExtension").GetArray()) {
        SCOPED_TRACE(i[0].GetString());
        const auto actual = Path::splitExtension(stringView(i[0]));
        EXPECT_EQ(actual.first(), stringView(i[1]));
        EXPECT_EQ(actual.second(), stringView(i[2]));
    }
}

TEST(Path, join) {
    for(const rapidjson::Value& i: vectors("join").GetArray()) {
        Containers::Array<Containers::StringView> parts{
            ValueInit, i["parts"].Size()};
        for(std::size_t j = 0; j != parts.size(); ++j)
            parts[j] = stringView(i["parts"][j]);
        EXPECT_EQ(Path::join(parts), stringView(i["result"]));
        if(parts.size() == 2) {
            EXPECT_EQ(Path::join(parts[0], parts[1]), stringView(i["result"]));
        }
    }
}

TEST(Path, split) {
    const char* const data[][2]{{"", ""}, {"file", ""}, {"/file", "/"},
        {"/a/b/file", "/a/b"}, {"a/b/", "a/b"}};
    for(const auto& i: data) {
        EXPECT_EQ(Path::split(i[0]).first(), i[1]);
        EXPECT_EQ(Path::path(i[0]), i[1]);
    }
}

struct PathFiles: testing::Test {
    Containers::String file(Containers::StringView name) const {
        return Path::join(_root, name);
    }

    OrrelinEngine::TemporaryFolder folder;
    Containers::String _root{folder.path("new")};
};

TEST_F(PathFiles, writeReadRemove) {
    const Containers::String directory = file("a/b/"_s);
    EXPECT_FALSE(Path::exists(directory));
    ASSERT_TRUE(Path::make(directory));
    EXPECT_TRUE(Path::make(directory));
    EXPECT_TRUE(Path::isDirectory(directory));

    const Containers::String first = file("a/b/first"_s);
    const Containers::String second = file("a/second"_s);
    for(const std::size_t size: {0, 1, 4095, 100000}) {
        const Containers::String text{std::string(size, 'x')};
        ASSERT_TRUE(Path::write(first, Containers::StringView{text}));
        EXPECT_EQ(*Path::size(first), size);
        const Containers::Optional<Containers::Array<char>> data =
            Path::read(first);
        ASSERT_TRUE(data);
        EXPECT_EQ(Containers::StringView{*data}, text);
        EXPECT_EQ(*Path::readString(first), text);
    }
    EXPECT_FALSE(Path::isDirectory(first));

    EXPECT_TRUE(Path::move(first, second));
    EXPECT_FALSE(Path::exists(first));
    EXPECT_TRUE(Path::remove(second));
    EXPECT_FALSE(Path::exists(second));
    EXPECT_TRUE(Path::remove(file("a/b")));
}

TEST_F(PathFiles, list) {
    ASSERT_TRUE(Path::make(file("z")));
    ASSERT_TRUE(Path::write(file("a"), "x"_s));
    const auto names = Path::list(_root);
    ASSERT_TRUE(names);
    std::set<std::string> actual(names->begin(), names->end());
    EXPECT_EQ(actual, (std::set<std::string>{".", "..", "a", "z"}));
}

TEST_F(PathFiles, specialFile) {
    /* Has a size of zero according to the system */
    const Containers::Optional<Containers::Array<char>> data =
        Path::read("/proc/self/status"_s);
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->size() > 100);
}

TEST_F(PathFiles, errors) {
    ASSERT_TRUE(Path::make(_root));
    const Containers::String missing = file("missing");
    const Containers::String present = file("present");
    ASSERT_TRUE(Path::write(present, "x"_s));

    Containers::String out;
    const auto fails = [&](bool result, Containers::StringView function) {
        EXPECT_FALSE(result) << function.data();
        EXPECT_TRUE(Containers::StringView{out}.hasPrefix(
            "Utility::Path::" + function + "(): "))
            << out.data();
        out = {};
    };
    Utility::Error redirectError{&out};
    fails(bool(Path::read(missing)), "read");
    fails(bool(Path::read(_root)), "read");
    fails(bool(Path::list(missing)), "list");
    fails(Path::write(Path::join(missing, "x"), "x"_s), "write");
    fails(Path::remove(missing), "remove");
    fails(Path::move(missing, present), "move");
    fails(Path::make(Path::join(present, "x/y")), "make");
    fails(Path::make(present), "make");
#ifdef ORRELIN_STANDINS
    fails(bool(Path::size(missing)), "size");
    fails(Path::write("/dev/full"_s, "x"_s), "write");
#endif
}

}
