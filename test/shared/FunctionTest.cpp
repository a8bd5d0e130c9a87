#include <memory>
#include <string>
#include <gtest/gtest.h>

#include "shared/Function.h"

namespace OrrelinEngine { namespace Test { namespace {

typedef Function<int(int)> IntFunction;

int twice(int i) {
    return 2 * i;
}

TEST(FunctionTest, call) {
    const int small = 1;
    const struct { char bytes[80]; } large{{2}};
    const auto owned = std::make_shared<int>(3);
    int (*const null)(int) = nullptr;

    IntFunction functions[]{
        twice,
        &twice,
        [](int i) { return 2 * i; },
        [small](int i) { return small * 2 * i; },
        /* Doesn't fit */
        [large](int i) { return large.bytes[0] * i; },
        /* Can't be moved as bytes */
        [owned](int i) { return *owned * i - i; },
        [text = std::string{"xx"}](int i) { return int(text.size()) * i; },
    };
    for(IntFunction& function: functions) {
        EXPECT_TRUE(function);
        EXPECT_EQ(function(21), 42);
    }
    EXPECT_FALSE(IntFunction{});
    EXPECT_FALSE(IntFunction{null});
}

TEST(FunctionTest, arguments) {
    Function<std::unique_ptr<int>&(
        std::unique_ptr<int>&&, std::unique_ptr<int>&)>
        function = [](std::unique_ptr<int>&& in,
                       std::unique_ptr<int>& out) -> std::unique_ptr<int>& {
        out = std::move(in);
        return out;
    };
    std::unique_ptr<int> out;
    EXPECT_EQ(&function(std::make_unique<int>(5), out), &out);
    ASSERT_TRUE(out);
    EXPECT_EQ(*out, 5);

    /* Keeps its state */
    Function<int()> counter = [i = 0]() mutable { return ++i; };
    counter();
    Function<int()> moved = std::move(counter);
    EXPECT_EQ(moved(), 2);
}

/* Pointers to members, and a result that nobody asked for */
TEST(FunctionTest, members) {
    struct Counter {
        int add(int i) { return count += i; }
        int count;
    } counter{1};
    Function<void(Counter&, int)> add = &Counter::add;
    Function<int&(Counter*)> count = &Counter::count;
    add(counter, 2);
    EXPECT_EQ(&count(&counter), &counter.count);
    EXPECT_EQ(counter.count, 3);
    add = static_cast<int (Counter::*)(int)>(nullptr);
    EXPECT_FALSE(add);
}

TEST(FunctionTest, move) {
    EXPECT_EQ(sizeof(IntFunction), 2 * sizeof(void*) + 64);
    const auto first = std::make_shared<int>();
    const auto second = std::make_shared<int>();
    {
        IntFunction a = [first](int i) { return i; };
        IntFunction b = std::move(a);
        EXPECT_FALSE(a);
        EXPECT_EQ(b(1), 1);
        EXPECT_EQ(first.use_count(), 2);

        IntFunction c = [second](int i) { return -i; };
        c = std::move(b);
        EXPECT_FALSE(b);
        EXPECT_EQ(c(1), 1);
        EXPECT_EQ(first.use_count(), 2);
        EXPECT_EQ(second.use_count(), 1);

        IntFunction& same = c;
        c = std::move(same);
        EXPECT_EQ(c(1), 1);
        a = std::move(c);
        EXPECT_EQ(a(1), 1);
    }
    EXPECT_EQ(first.use_count(), 1);
}

TEST(FunctionDeathTest, empty) {
    const char* const message =
        "Function::operator()(): Can't call an empty function.\n";
    IntFunction function;
    EXPECT_DEATH(function(1), testing::Eq(message));
    Function<void()> nothing;
    EXPECT_DEATH(nothing(), testing::Eq(message));
}

}}}
