#include "editor/StringArray.h"

#include <Corrade/Containers/GrowableArray.h>

namespace OrrelinEngine {

StringArray::StringArray(std::size_t capacity) {
    arrayReserve(_positions, capacity + 1);
    arrayAppend(_positions, std::size_t{0});
}

void StringArray::add(Containers::StringView string) {
    arrayAppend(_characters,
        Containers::ArrayView<const char>{string.data(), string.size()});
    arrayAppend(_characters, '\0');
    arrayAppend(_positions, _characters.size());
    _data = _characters.data();
}

}
