/* Pushes of the editor's common types of values. Each makes a JSON value that
   lives for the call only, as the push copies it, and passes it on. */

#include <initializer_list>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Magnum/Math/Vector3.h>

#include "ChangeManager.h"
#include "Implementation/decompose.h"
#include "Implementation/deepCopy.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine {

namespace {

/* A JSON array of numbers on the call stack. In the document's memory pool,
   each push of a drag would leave one behind. */
class NumberArray {
public:
    explicit NumberArray(const Magnum::Math::Vector3<float>& v):
        NumberArray{{v.x(), v.y(), v.z()}} {}

    /* The scalar last */
    explicit NumberArray(const Magnum::Math::Quaternion<float>& q):
        NumberArray{
            {q.vector().x(), q.vector().y(), q.vector().z(), q.scalar()}} {}

    const JsonValue& value() const { return _array; }

private:
    explicit NumberArray(std::initializer_list<float> numbers):
        _allocator{_memory, sizeof(_memory)}, _array{rapidjson::kArrayType} {
        _array.Reserve(rapidjson::SizeType(numbers.size()), _allocator);
        for(const float number: numbers)
            _array.PushBack(JsonValue{double(number)}, _allocator);
    }

    /* Fits four numbers and the allocator's own header */
    alignas(std::max_align_t) char _memory[256];
    JsonAllocator _allocator;
    JsonValue _array;
};

/* A JSON string that refers to the text without a copy */
JsonValue reference(Containers::StringView string) {
    CORRADE_ASSERT(string.size() < ~rapidjson::SizeType{},
        "ChangeManager: a text of" << string.size()
                                   << "bytes doesn't fit a JSON value",
        JsonValue{});
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
    pushChange(path, NumberArray{value}.value(), continuous);
}

void ChangeManager::pushChange(Containers::StringView path,
    const Magnum::Math::Quaternion<float>& value, bool continuous) {
    pushChange(path, NumberArray{value}.value(), continuous);
}

void ChangeManager::pushTransformChange(Containers::StringView path,
    const Magnum::Math::Matrix4<float>& value, bool continuous) {
    const Transformation parts = decompose(value);
    /* All three before the first push: the path may be a view of a value that
       the push moves */
    const Containers::String translation = path + "/translation";
    const Containers::String rotation = path + "/rotation";
    const Containers::String scaling = path + "/scaling";
    push(translation, &NumberArray{parts.translation}.value(), continuous);
    push(rotation, &NumberArray{parts.rotation}.value(), continuous);
    push(scaling, &NumberArray{parts.scaling}.value(), continuous);
    rethrow();
}

void ChangeManager::pushAppend(
    Containers::StringView path, Containers::StringView value) {
    CORRADE_INTERNAL_ASSERT(_projectFile);
    /* By an accessor, so that an array which only the defaults have counts */
    const ValueAccess current = (*_projectFile)[path];
    JsonValue array = deepCopy(current.readValue(), allocator());
    if(!array.IsArray())
        array.SetArray();
    array.PushBack(reference(value), allocator());
    pushChange(path, array, false);
}

}
