#include "editor/Zip.h"

#include <Corrade/Utility/Assert.h>

namespace OrrelinEngine {

Containers::StringView Result::error() const {
    CORRADE_ASSERT(
        !_success, "Result::error(): Accessed error of valid result", {});
    return _error;
}

}
