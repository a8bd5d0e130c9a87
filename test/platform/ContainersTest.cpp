#include <string>

#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/Reference.h>
#include <Corrade/Containers/String.h>

#include "vectors.h"

namespace Other {

enum class Flag : unsigned char { A = 1, B = 2, C = 4 };
typedef Corrade::Containers::EnumSet<Flag, 7> Flags;
CORRADE_ENUMSET_OPERATORS(Flags)

}

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using Containers::Array;
using Containers::ArrayView;
using Containers::String;

/* Counts instances, so leaks and double destructions are seen */
struct Counted {
    static int count;

    /*implicit*/ Counted(int number = 0): value{new int{number}} { ++count; }
    Counted(const Counted& other): Counted{*other.value} {}
    Counted(Counted&& other) noexcept: value{other.value} {
        other.value = nullptr;
        ++count;
    }
    ~Counted() {
        delete value;
        --count;
    }
    Counted& operator=(Counted&& other) noexcept {
        std::swap(value, other.value);
        return *this;
    }

    int* value;
};

int Counted::count = 0;

std::string text(ArrayView<const Counted> values) {
    std::string out;
    for(const Counted& i: values)
        out += std::to_string(*i.value) + " ";
    return out;
}

TEST(Array, construction) {
    {
        const Array<Counted> zeros{ValueInit, 2};
        const Array<Counted> sevens{DirectInit, 2, 7};
        Array<Counted> list{InPlaceInit, {1, 2, 3}};
        const Array<Counted> copy{InPlaceInit, ArrayView<const Counted>{list}};
        EXPECT_EQ(text(zeros) + text(sevens) + text(copy), "0 0 7 7 1 2 3 ");
        EXPECT_EQ(Counted::count, 10);

        Array<Counted> moved = std::move(list);
        EXPECT_TRUE(list.isEmpty());
        EXPECT_EQ(text(moved.slice(1, 3)), "2 3 ");
        EXPECT_EQ(text(moved.prefix(1)), "1 ");
        EXPECT_EQ(text(moved.exceptSuffix(1)), "1 2 ");
    }
    EXPECT_EQ(Counted::count, 0);

    static std::size_t deleted = 0;
    int data[3]{};
    {
        const Array<int> custom{
            data, 3, [](int*, std::size_t size) { deleted = size; }};
        EXPECT_EQ(&custom.back(), data + 2);
    }
    EXPECT_EQ(deleted, 3);
}

TEST(Array, growing) {
    {
        Array<Counted> array{InPlaceInit, {1, 2}};
        EXPECT_FALSE(arrayIsGrowable(array));
        arrayAppend(array, Counted{3});
        arrayAppend(array, InPlaceInit, 4);
        const Counted five{5};
        arrayAppend(array, five);
        EXPECT_TRUE(arrayIsGrowable(array));
        arrayAppend(array, array.prefix(2));
        EXPECT_EQ(text(array), "1 2 3 4 5 1 2 ");

        arrayRemove(array, 1, 2);
        arrayRemoveSuffix(array, 2);
        arrayInsert(array, 1, Counted{9});
        EXPECT_EQ(text(array), "1 9 4 5 ");
        EXPECT_EQ(Counted::count, 5);

        arrayResize(array, 5);
        arrayResize(array, DirectInit, 6, 8);
        EXPECT_EQ(text(array), "1 9 4 5 0 8 ");
        arrayResize(array, 1);
        EXPECT_EQ(text(array), "1 ");

        arrayReserve(array, 100);
        const Counted* const data = array.data();
        for(int i = 0; i != 99; ++i)
            arrayAppend(array, Counted{i});
        EXPECT_EQ(array.data(), data);
        arrayShrink(array);
        EXPECT_FALSE(arrayIsGrowable(array));
        EXPECT_EQ(array.size(), 100);

        Array<Counted> fixed{InPlaceInit, {1, 2}};
        arrayRemoveSuffix(fixed);
        EXPECT_EQ(text(fixed), "1 ");
        arrayClear(fixed);
        EXPECT_TRUE(fixed.isEmpty());
    }
    EXPECT_EQ(Counted::count, 0);
}

TEST(Array, growthIsAmortized) {
    Array<char> array;
    std::size_t reallocations = 0;
    for(std::size_t i = 0; i != 1000000; ++i) {
        const char* const data = array.data();
        arrayAppend(array, char(i));
        if(array.data() != data)
            ++reallocations;
    }
    EXPECT_LT(reallocations, 50);

    /* The deleter goes with the memory */
    const auto deleter = array.deleter();
    const std::size_t size = array.size();
    const Array<char> other{array.release(), size, deleter};
    EXPECT_EQ(other[999999], char(999999));
}

TEST(ArrayView, conversions) {
    std::uint16_t data[]{1, 2, 3};
    EXPECT_EQ(ArrayView<const void>{data}.size(), 6);
    EXPECT_EQ(ArrayView<const void>{ArrayView<void>{data}}.size(), 6);
    EXPECT_EQ(
        ArrayView<const void>{Containers::arrayView(data).prefix(1)}.size(), 2);
    EXPECT_EQ(ArrayView<const void>{String{"hello"}}.size(), 5);
    EXPECT_EQ(ArrayView<const char>{"hello"_s}.size(), 5);
    EXPECT_EQ(Containers::arrayView({3, 4, 5}).size(), 3);
    static_assert(
        !std::is_convertible<ArrayView<const int>, ArrayView<int>>::value, "");
    static_assert(
        !std::is_convertible<ArrayView<const int>, ArrayView<void>>::value, "");
}

#ifndef NDEBUG
TEST(ArrayView, outOfRange) {
    const Array<int> array{ValueInit, 2};
    EXPECT_DEATH(
        array[2], "operator\\[\\]\\(\\): index 2 out of range for 2 elements");
    EXPECT_DEATH(array.prefix(3), "slice\\(\\): slice");
    EXPECT_DEATH("abc"_s.slice(2, 1), "slice\\(\\): slice");
    EXPECT_DEATH(*Containers::Optional<int>{}, "Containers::Optional: ");
    EXPECT_DEATH(*Containers::Pointer<int>{}, "Containers::Pointer: ");
}
#endif

TEST(Pointer, ownership) {
    struct Base {
        virtual ~Base() = default;
    };
    struct Derived: Base {
        explicit Derived(Counted&& value): counted{std::move(value)} {}
        Counted counted;
    };
    {
        Containers::Pointer<Base> a = Containers::pointer<Derived>(Counted{5});
        Containers::Pointer<Base> b = std::move(a);
        EXPECT_TRUE(a == nullptr);
        EXPECT_EQ(*static_cast<Derived&>(*b).counted.value, 5);
        b.reset();
        EXPECT_EQ(Counted::count, 0);
        a.reset(new Derived{Counted{7}});
        delete a.release();
    }
    EXPECT_EQ(Counted::count, 0);
}

TEST(Optional, values) {
    {
        Containers::Optional<Counted> a;
        EXPECT_FALSE(a);
        a = Counted{3};
        Containers::Optional<Counted> b = std::move(a);
        EXPECT_EQ(*b->value, 3);
        b.emplace(4);
        EXPECT_EQ(*(*std::move(b)).value, 4);
        b = Containers::NullOpt;
        EXPECT_FALSE(b);
    }
    EXPECT_EQ(Counted::count, 0);
    EXPECT_TRUE(Containers::optional(3) == 3);
    EXPECT_TRUE(Containers::Optional<int>{} == Containers::NullOpt);
}

TEST(PairReference, values) {
    Containers::Pair<String, Containers::Pointer<int>> pair{
        "a", Containers::pointer<int>(5)};
    EXPECT_EQ(pair.first(), "a"_s);
    EXPECT_EQ(*std::move(pair).second(), 5);
    EXPECT_TRUE(Containers::pair(1, 2) == Containers::pair(1, 2));

    int value = 3;
    const Containers::Reference<int> reference = value;
    *reference = 4;
    EXPECT_EQ(value, 4);
}

TEST(EnumSet, operations) {
    using Other::Flag;
    using Other::Flags;

    constexpr Flags ab = Flag::A | Flag::B;
    EXPECT_TRUE(ab >= Flag::A);
    EXPECT_FALSE(ab >= (Flag::A | Flag::C));
    EXPECT_TRUE(Flag::A <= ab);
    EXPECT_EQ(~ab, Flag::C);
    EXPECT_EQ(ab & Flag::B, Flag::B);
    EXPECT_EQ(ab ^ Flag::B, Flag::A);
    EXPECT_FALSE(ab & Flag::C);
}

}
