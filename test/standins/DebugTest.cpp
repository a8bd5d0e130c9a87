#include <sstream>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>

#include "vectors.h"

namespace OrrelinEngine { namespace {

using Utility::Debug;
using Utility::Error;
using Utility::Warning;

TEST(DebugTest, vectors) {
    std::ostringstream out[2];
    Debug{&out[0]} << "Change" << Containers::String{"/a/b"} << Debug::nospace
                   << ":"
                   << "OLD"
                   << "->"
                   << "NEW";
    Debug{&out[1]} << "index" << 7 << "for size" << std::size_t{2};
    for(unsigned i = 0; i != 2; ++i)
        EXPECT_EQ(out[i].str(), vectors("debug")[i].GetString());
}

TEST(DebugTest, redirection) {
    Containers::String error;
    std::ostringstream nested, warning;
    {
        Error redirectError{&error};
        Warning redirectWarning{&warning};
        Error{} << "first";
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
    EXPECT_EQ(error, Containers::StringView{"first\nsecond\n"});
    EXPECT_EQ(nested.str(), "nested\n");
    EXPECT_EQ(warning.str(), "other\n");
}

}}
