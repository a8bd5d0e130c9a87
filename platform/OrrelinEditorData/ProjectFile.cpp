#include "editor/ProjectFile.h"

#include "DocumentIndex.h"

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

const JsonValue* ProjectFile::find(Containers::StringView pointer) const {
    return const_cast<ProjectFile&>(*this).find(pointer);
}

JsonValue& ProjectFile::create(Containers::StringView pointer) {
    return _index->create(document, pointer, document.GetAllocator());
}

bool ProjectFile::erase(Containers::StringView pointer) {
    return _index->erase(document, pointer);
}

void ProjectFile::distrustLookups() {
    _index->distrust();
}

EditScope::EditScope(const RecordAccess& place, bool continues):
    _index{*place._file->_index} {
    _index.beginScope(continues);
}

EditScope::~EditScope() {
    _index.endScope();
}

}
