#include "editor/ProjectFile.h"

#include "shared/Implementation/DocumentIndex.h"

namespace OrrelinEngine {

ProjectFile::ProjectFile():
    RecordAccess{*this, {}}, document{rapidjson::kObjectType},
    _index{Corrade::InPlaceInit} {}

ProjectFile::~ProjectFile() = default;

JsonAllocator& ProjectFile::allocator() const {
    return RecordAccess::allocator();
}

JsonValue* ProjectFile::find(Containers::StringView pointer) {
    return _index->find(document, pointer);
}

JsonValue& ProjectFile::create(Containers::StringView pointer) {
    return _index->create(_index->locate(document, pointer), document, pointer,
        document.GetAllocator());
}

}
