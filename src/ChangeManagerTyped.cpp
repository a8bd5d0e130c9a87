/* Pushes of the editor's common types of values, each on top of the push of a
   JSON value */

#include <initializer_list>
#include <Magnum/Math/Vector3.h>

#include "ChangeManager.h"
#include "decompose.h"
#include "deepCopy.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine {

namespace {

/* A JSON array of numbers, outside of the document's memory pool as the push
   copies it */
class NumberArray {
public:
    explicit NumberArray(std::initializer_list<float> numbers):
        _allocator{_memory, sizeof(_memory)}, _array{rapidjson::kArrayType} {
        _array.Reserve(rapidjson::SizeType(numbers.size()), _allocator);
        for(const float number: numbers)
            _array.PushBack(JsonValue{double(number)}, _allocator);
    }

    const JsonValue& value() const { return _array; }

private:
    alignas(std::max_align_t) char _memory[256];
    JsonAllocator _allocator;
    JsonValue _array;
};

JsonValue reference(Containers::StringView string) {
    return JsonValue{rapidjson::StringRef(
        string.data() ? string.data() : "", string.size())};
}

}

void ChangeManager::pushChange(Containers::StringView path,
    Containers::StringView value, bool continuous) {
    pushChange(path, reference(value), continuous);
}

void ChangeManager::pushChange(Containers::StringView path,
    const Magnum::Math::Vector3<float>& value, bool continuous) {
    pushChange(path, NumberArray{{value.x(), value.y(), value.z()}}.value(),
        continuous);
}

void ChangeManager::pushChange(Containers::StringView path,
    const Magnum::Math::Quaternion<float>& value, bool continuous) {
    const Magnum::Math::Vector3<float> v = value.vector();
    pushChange(path, NumberArray{{v.x(), v.y(), v.z(), value.scalar()}}.value(),
        continuous);
}

void ChangeManager::pushTransformChange(Containers::StringView path,
    const Magnum::Math::Matrix4<float>& value, bool continuous) {
    const Transformation parts = decompose(value);
    pushChange(path + "/translation", parts.translation, continuous);
    pushChange(path + "/rotation", parts.rotation, continuous);
    pushChange(path + "/scaling", parts.scaling, continuous);
}

void ChangeManager::pushAppend(
    Containers::StringView path, Containers::StringView value) {
    const ValueAccess current = (*_projectFile)[path];
    JsonValue array = deepCopy(current.readValue(), allocator());
    if(!array.IsArray())
        array.SetArray();
    array.PushBack(reference(value), allocator());
    pushChange(path, array, false);
}

}
