#include <memory>
#include <gtest/gtest.h>

#include "shared/Function.h"

namespace OrrelinEngine { namespace {

typedef Function<int(int)> IntFunction;

int twice(int i) {
    return 2 * i;
}

TEST(FunctionTest, call) {
    const struct { char bytes[80]; } large{{2}};
    const auto owned = std::make_shared<int>(3);
    int (*const null)(int) = nullptr;
    IntFunction functions[]{twice, &twice,
        /* Doesn't fit */
        [large](int i) { return large.bytes[0] * i; },
        /* Can't be moved as bytes */
        [owned](int i) { return *owned * i - i; }};
    for(IntFunction& function: functions)
        EXPECT_EQ(function(21), 42);
    EXPECT_FALSE(IntFunction{});
    EXPECT_FALSE(IntFunction{null});

    /* Takes what can only be moved, keeps its state */
    Function<int(std::unique_ptr<int> &&)> sum =
        [s = 0](std::unique_ptr<int>&& i) mutable { return s += *i; };
    sum(std::make_unique<int>(1));
    auto moved = std::move(sum);
    EXPECT_EQ(moved(std::make_unique<int>(2)), 3);
}

TEST(FunctionTest, move) {
    const auto first = std::make_shared<int>();
    const auto second = std::make_shared<int>();
    {
        IntFunction a = [first](int i) { return i; };
        IntFunction b = std::move(a);
        EXPECT_FALSE(a);
        EXPECT_EQ(first.use_count(), 2);

        IntFunction c = [second](int i) { return -i; };
        c = std::move(b);
        EXPECT_FALSE(b);
        EXPECT_EQ(first.use_count(), 2);
        EXPECT_EQ(second.use_count(), 1);

        IntFunction& same = c;
        c = std::move(same);
        EXPECT_EQ(c(1), 1);
    }
    EXPECT_EQ(first.use_count(), 1);
}

TEST(FunctionDeathTest, empty) {
    IntFunction function;
    EXPECT_DEATH(function(1),
        testing::Eq("Function::operator()(): Can't call an empty function.\n"));
}

}}
