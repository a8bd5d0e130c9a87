#include <cstring>
#include <string>

#include <Corrade/Utility/MurmurHash2.h>

#include "vectors.h"

namespace {

using namespace Corrade;
using namespace Orrelin;

TEST(MurmurHash2, vectors) {
    for(const rapidjson::Value& i: vectors("murmurHash2").GetArray()) {
        const Containers::StringView bytes = stringView(i["bytes"]);
        SCOPED_TRACE(i["bytes"].GetString());

        std::uint64_t value;
        std::memcpy(&value,
            Utility::MurmurHash2{}(bytes.data(), bytes.size()).byteArray(),
            sizeof(value));
        EXPECT_EQ(value, std::stoull(i["value"].GetString(), nullptr, 16));
    }
}

}
