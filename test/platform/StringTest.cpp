#include <cstring>
#include <string>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Containers/StringStlView.h>

#include "vectors.h"

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Containers::String;
using Containers::StringView;
using Containers::StringViewFlag;

TEST(String, storage) {
    static_assert(sizeof(String) == 24 && sizeof(StringView) == 16, "");

    /* Around the size where it stops fitting into the instance */
    for(const std::size_t size: {0, 1, 21, 22, 23, 24, 1000}) {
        SCOPED_TRACE(size);
        const std::string expected(size, 'x');
        String a = expected;
        EXPECT_EQ(a.isSmall(), size <= 22);
        EXPECT_EQ(a.size(), size);
        EXPECT_EQ(a, expected);
        EXPECT_EQ(a.data()[size], '\0');

        const String copy = a;
        String moved = std::move(a);
        EXPECT_EQ(copy, moved);
        EXPECT_TRUE(a.isEmpty());

        a = "something else that is longer than a small string";
        a = std::move(moved);
        EXPECT_EQ(a, expected);
        EXPECT_EQ((String{Containers::AllocatedInit, copy}), expected);
        EXPECT_EQ(std::string{a}, expected);
        EXPECT_EQ(std::string_view{a}, expected);

        /* Moving the memory moves the string */
        alignas(String) char memory[sizeof(String)];
        std::memcpy(memory, static_cast<const void*>(&a), sizeof(String));
        new(&a) String;
        EXPECT_EQ(*reinterpret_cast<String*>(memory), expected);
        reinterpret_cast<String*>(memory)->~String();
    }
}

TEST(String, nullTerminated) {
    const StringView literal =
        "a literal that wouldn't fit into a small string"_s;
    EXPECT_EQ(String::nullTerminatedView(literal).data(), literal.data());
    EXPECT_EQ(String::nullTerminatedView(literal.exceptPrefix(1)).data(),
        literal.data() + 1);
    EXPECT_NE(String::nullTerminatedView(literal.exceptSuffix(1)).data(),
        literal.data());

    const String owned = literal;
    EXPECT_EQ(String::nullTerminatedView(owned).data(), owned.data());
    EXPECT_NE(String::nullTerminatedGlobalView(owned).data(), owned.data());
}

TEST(StringView, flags) {
    const StringViewFlag Global = StringViewFlag::Global,
                         NullTerminated = StringViewFlag::NullTerminated;
    EXPECT_EQ("abc"_s.flags(), Global | NullTerminated);
    EXPECT_EQ("abc"_s.exceptPrefix(1).flags(), Global | NullTerminated);
    EXPECT_EQ("abc"_s.prefix(1).flags(), Global);
    EXPECT_EQ(StringView{"abc"}.flags(), NullTerminated);
    const String string = "abc";
    EXPECT_EQ(StringView{string}.flags(), NullTerminated);
    EXPECT_EQ(StringView{}.flags(), Global);
    EXPECT_EQ("a\0b"_s.size(), 3);
    EXPECT_FALSE(""_s);
    EXPECT_TRUE("a"_s);
}

TEST(StringView, order) {
    /* Sorted by unsigned bytes, then by size */
    const StringView sorted[]{
        "", "a"_s, "a\0"_s, "aa", "b", "\x7f", "\x80", "\xff"};
    for(const StringView& a: sorted)
        for(const StringView& b: sorted) {
            EXPECT_EQ(a == b, &a == &b);
            EXPECT_EQ(a != b, &a != &b);
            EXPECT_EQ(a < b, &a < &b);
            EXPECT_EQ(a <= b, &a <= &b);
            EXPECT_EQ(a > b, &a > &b);
            EXPECT_EQ(a >= b, &a >= &b);
        }
}

TEST(StringView, splitJoin) {
    const struct {
        const char *text, *parts, *nonEmpty;
    } data[]{
        {"", "", ""},
        {"a", "[a]", "[a]"},
        {"/a", "[][a]", "[a]"},
        {"a/", "[a][]", "[a]"},
        {"a//bc/d", "[a][][bc][d]", "[a][bc][d]"},
        {"//", "[][][]", ""},
    };
    for(const auto& i: data) {
        SCOPED_TRACE(i.text);
        const String text = i.text;
        std::string parts, nonEmpty;
        for(const StringView j: text.split('/'))
            parts += "[" + std::string{j} + "]";
        for(const StringView j: text.splitWithoutEmptyParts('/'))
            nonEmpty += "[" + std::string{j} + "]";
        EXPECT_EQ(parts, i.parts);
        EXPECT_EQ(nonEmpty, i.nonEmpty);
        EXPECT_EQ("/"_s.join(text.split('/')), text);
        EXPECT_EQ("/"_s.joinWithoutEmptyParts(text.split('/')),
            "/"_s.join(text.splitWithoutEmptyParts('/')));
    }
}

TEST(StringView, find) {
    const StringView text = "/objects/12/name"_s;
    EXPECT_EQ(text.find('/').data(), text.data());
    EXPECT_EQ(text.find("/1"_s).data(), text.data() + 8);
    EXPECT_EQ(text.findLast('/').data(), text.data() + 11);
    EXPECT_EQ(text.findLast("/"_s).data(), text.data() + 11);
    EXPECT_EQ(text.find("nothing").data(), nullptr);
    EXPECT_EQ(text.findOr('x', text.end()).data(), text.end());
    EXPECT_TRUE(text.contains("12"));
    EXPECT_FALSE(text.contains('x'));
    EXPECT_EQ(text.count('/'), 3);
    EXPECT_TRUE(text.hasPrefix("/objects") && text.hasPrefix('/') &&
        !text.hasPrefix("objects"));
    EXPECT_TRUE(text.hasSuffix("name") && text.hasSuffix('e') &&
        !text.hasSuffix("/objects/12/name/"));
    EXPECT_EQ(text.exceptPrefix("/objects/"), "12/name");
    EXPECT_EQ(text.exceptSuffix("/name"), "/objects/12");
    EXPECT_DEATH(
        text.exceptPrefix("objects"), "exceptPrefix\\(\\): .* objects");
    EXPECT_EQ(" \t a b\r\n"_s.trimmed(), "a b");

    const auto first = text.partition('/');
    EXPECT_EQ(first[0], "");
    EXPECT_EQ(first[2], "objects/12/name");
    const auto last = text.partitionLast('/');
    EXPECT_EQ(last[0], "/objects/12");
    EXPECT_EQ(last[2], "name");
    EXPECT_EQ("ab"_s.partition('/')[0], "ab");
    EXPECT_EQ("ab"_s.partitionLast('/')[2], "ab");
}

TEST(StringIterable, sources) {
    const String strings[]{"a", "b"};
    const StringView views[]{"a", "b"};
    const char* const pointers[]{"a", "b"};
    const std::string stl[]{"a", "b"};
    const Containers::Array<String> array{InPlaceInit, {"a", "b"}};
    const auto join = [](const Containers::StringIterable& list) {
        EXPECT_EQ(list.size(), 2);
        EXPECT_EQ(list.front() + list.back(), "ab"_s);
        return ", "_s.join(list);
    };
    EXPECT_EQ(join(strings), "a, b");
    EXPECT_EQ(join(views), "a, b");
    EXPECT_EQ(join(pointers), "a, b");
    EXPECT_EQ(join(Containers::arrayView(stl)), "a, b");
    EXPECT_EQ(join(array), "a, b");
    EXPECT_EQ(join(array.exceptPrefix(0)), "a, b");
    EXPECT_EQ(join({"a", "b"}), "a, b");
    EXPECT_TRUE(Containers::StringIterable{}.isEmpty());
}

}
