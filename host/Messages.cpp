#include "Messages.h"

#include <cstdio>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Utility/Format.h>

#include "Terminal.h"

namespace OrrelinEngine { namespace Host {

int fail(Containers::StringView message) {
    passOn(Utility::format("orrelin-localize: {}\n", oneLine(message)));
    return Failure;
}

int failWithoutName(Containers::StringView line) {
    return fail(line.partition(' ')[2].trimmed());
}

void passOn(Containers::StringView lines) {
    std::fflush(stdout);
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

}}
