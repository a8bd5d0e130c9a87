#include <utility>

#include "editor/StringArray.h"
#include "Project.h"

namespace OrrelinEngine { namespace {

using Containers::StringView;
using namespace Containers::Literals;

TEST(StringArrayViewTest, views) {
    constexpr char characters[] = "text\0hello";
    const StringArrayView view{
        Containers::Array<std::size_t>{Corrade::InPlaceInit, {0, 5, 11}},
        characters};
    ASSERT_EQ(view.size(), 2u);
    EXPECT_EQ(text(view.get(0)), "text");
    EXPECT_EQ(view.get(1).data(), characters + 5);
    EXPECT_TRUE(
        view.get(1).flags() == Containers::StringViewFlag::NullTerminated);
    EXPECT_DEATH(view.get(2),
        testing::Eq("StringArrayView::get(): invalid index 2 for size 2\n"));
    EXPECT_EQ(StringArrayView{}.size(), 0u);
}

TEST(StringArrayViewTest, growingList) {
    StringArray list{2};
    EXPECT_EQ(list.size(), 0u);
    for(const StringView name: {"de.json"_s, StringView{}, "a\0b"_s})
        list.add(name);
    /* Past any capacity, as part of itself, also when moved away */
    for(int i = 0; i != 1000; ++i)
        list.add(list.get(0));
    const StringArray moved = std::move(list);
    ASSERT_EQ(moved.size(), 1003u);
    EXPECT_EQ(text(moved.get(0)), "de.json");
    EXPECT_EQ(text(moved.get(1)), "");
    EXPECT_EQ(moved.get(2), "a\0b"_s);
    EXPECT_EQ(text(moved.get(1002)), "de.json");
}

}}
