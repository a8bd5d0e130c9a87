#include "editor/Path.h"

namespace OrrelinEngine { namespace Path {

bool isRelative(Containers::StringView path) {
    return path.isEmpty() || path[0] != '/';
}

}}
