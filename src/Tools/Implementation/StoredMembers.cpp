#include "Tools/Implementation/StoredMembers.h"

#include <Corrade/Containers/StringView.h>

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Below that, searching is as fast as an index */
constexpr std::uint32_t LargeObject = 32;

/* Nobody edits the object meanwhile, so the index may remember which names are
   absent */
constexpr std::uint64_t Promise = 1;

const JsonValue* memberAt(const JsonValue& object, std::uint32_t position) {
    return position == object.MemberCount()
        ? nullptr
        : &(object.MemberBegin() + std::ptrdiff_t(position))->value;
}

}

const JsonValue* storedMember(
    const JsonValue* object, Containers::StringView name) {
    return object && object->IsObject()
        ? memberAt(*object, searchMember(*object, name))
        : nullptr;
}

const JsonValue* StoredMembers::find(Containers::StringView name) {
    if(!_object || !_object->IsObject() ||
        _object->MemberCount() <= LargeObject)
        return storedMember(_object, name);
    return memberAt(*_object, _index.find(*_object, name, Promise));
}

}}
