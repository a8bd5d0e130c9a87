#include <sstream>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>

#include "vectors.h"

namespace Other {

struct Value {
    int number;
};

Corrade::Utility::Debug& operator<<(
    Corrade::Utility::Debug& debug, const Value& value) {
    using Corrade::Utility::Debug;
    return debug << "Value(" << Debug::nospace << value.number << Debug::nospace
                 << ")";
}

}

namespace {

using namespace Corrade;
using namespace Corrade::Containers::Literals;
using namespace OrrelinEngine;
using Utility::Debug;
using Utility::Error;
using Utility::Warning;

TEST(Debug, vectors) {
    const rapidjson::Value& expected = vectors("debug");

    std::ostringstream out[2];
    Debug{&out[0]} << "Change"_s << Containers::String{"/a/b"} << Debug::nospace
                   << ":"
                   << "OLD"
                   << "->"
                   << "NEW";
    Debug{&out[1]} << "index" << 7 << "for size" << std::size_t{2};
    for(std::size_t i = 0; i != 2; ++i)
        EXPECT_EQ(out[i].str(), expected[i].GetString());
}

TEST(Debug, redirection) {
    Containers::String error;
    std::ostringstream nested, warning;
    {
        Error redirectError{&error};
        Warning redirectWarning{&warning};

        Error{} << "first" << Other::Value{3};
        {
            Error redirectNested{&nested};
            Error{} << "nested";
        }
        {
            Error silence{nullptr};
            Error{} << "not seen";
        }
        Error{};
        Warning{} << "other";
        Error{} << "second";
    }

    EXPECT_EQ(error, "first Value(3)\nsecond\n"_s);
    EXPECT_EQ(nested.str(), "nested\n");
    EXPECT_EQ(warning.str(), "other\n");
}

TEST(Assert, message) {
    const auto check = [](int index) {
        CORRADE_ASSERT(index < 2,
            "Some::operator[](): index" << index << "out of range", );
    };
    check(1);

    /* A redirection doesn't hide it */
    Error silence{nullptr};
    EXPECT_DEATH(
        check(7), "^Some::operator\\[\\]\\(\\): index 7 out of range\n$");
    EXPECT_DEATH(CORRADE_INTERNAL_ASSERT(1 + 1 == 3),
        "^Assertion 1 \\+ 1 == 3 failed at .*DebugTest.cpp:[0-9]+\n$");
}

}
