#include <type_traits>
#include <utility>
#include <gtest/gtest.h>

#include "editor/StringArray.h"
#include "Project.h"

namespace OrrelinEngine { namespace {

using Containers::Array;
using Containers::StringView;
using Containers::StringViewFlag;
using namespace Containers::Literals;

constexpr char Characters[] = "text\0hello";

StringArrayView textAndHello() {
    return StringArrayView{
        Array<std::size_t>{Corrade::InPlaceInit, {0, 5, 11}}, Characters};
}

TEST(StringArrayViewTest, get) {
    const StringArrayView view = textAndHello();
    ASSERT_EQ(view.size(), 2u);
    EXPECT_EQ(text(view.get(0)), "text");
    EXPECT_EQ(text(view.get(1)), "hello");
    EXPECT_EQ(static_cast<const void*>(view.get(1).data()), Characters + 5);
    EXPECT_TRUE(view.get(0).flags() == StringViewFlag::NullTerminated);
}

TEST(StringArrayViewTest, empty) {
    EXPECT_EQ(StringArrayView{}.size(), 0u);
    EXPECT_EQ(
        (StringArrayView{Array<std::size_t>{Corrade::ValueInit, 1}, Characters}
                .size()),
        0u);
}

TEST(StringArrayViewDeathTest, getOutOfRange) {
    EXPECT_DEATH(textAndHello().get(2),
        testing::Eq("StringArrayView::get(): invalid index 2 for size 2\n"));
    EXPECT_DEATH(StringArrayView{}.get(0),
        testing::Eq("StringArrayView::get(): invalid index 0 for size 0\n"));
}

TEST(StringArrayViewTest, ownsItsPositionsOnly) {
    static int freed;
    freed = 0;
    static std::size_t positions[]{0, 5, 11};
    {
        StringArrayView view{Array<std::size_t>{positions, 3,
                                 [](std::size_t*, std::size_t) { ++freed; }},
            Characters};
        const StringArrayView moved = std::move(view);
        EXPECT_EQ(text(moved.get(1)), "hello");
        EXPECT_EQ(freed, 0);
    }
    EXPECT_EQ(freed, 1);
    EXPECT_FALSE(std::is_copy_constructible<StringArrayView>::value);
    EXPECT_TRUE(std::has_virtual_destructor<StringArrayView>::value);
}

TEST(StringArrayViewTest, growingList) {
    StringArray list{2};
    EXPECT_EQ(list.size(), 0u);

    MutableStringArrayView& writable = list;
    for(const StringView name: {"de.json"_s, ""_s, StringView{}, "a\0b"_s})
        writable.add(name);
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(text(list.get(0)), "de.json");
    EXPECT_EQ(text(list.get(1)), "");
    EXPECT_EQ(text(list.get(2)), "");
    EXPECT_EQ(list.get(3), "a\0b"_s);
    EXPECT_EQ(list.get(0).data()[7], '\0');

    /* Past any capacity, as part of itself, also when moved away */
    for(int i = 0; i != 1000; ++i)
        list.add(list.get(0));
    const StringArray moved = std::move(list);
    ASSERT_EQ(moved.size(), 1004u);
    EXPECT_EQ(text(moved.get(0)), "de.json");
    EXPECT_EQ(text(moved.get(1003)), "de.json");
}

}}
