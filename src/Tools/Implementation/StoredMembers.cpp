#include "Tools/Implementation/StoredMembers.h"

#include <algorithm>
#include <functional>
#include <rapidjson/document.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

/* Sorting takes about as long as that many searches */
constexpr std::uint32_t FewSearches = 16;

const JsonValue* search(const JsonValue& object, Containers::StringView name) {
    for(const auto& member: object.GetObject())
        if(stringOf(member.name) == name)
            return &member.value;
    return nullptr;
}

}

Containers::StringView stringOf(const JsonValue& value) {
    if(!value.IsString())
        return {};
    return {value.GetString(), value.GetStringLength()};
}

void StoredMembers::sort() {
    _sorted.reserve(_object->MemberCount());
    for(const auto& member: _object->GetObject())
        _sorted.push_back({stringOf(member.name), &member.value});
    /* Members that share a name stay in order */
    std::sort(
        _sorted.begin(), _sorted.end(), [](const Member& a, const Member& b) {
            return a.name == b.name
                ? std::less<const JsonValue*>{}(a.value, b.value)
                : StrLess{}(a.name, b.name);
        });
}

const JsonValue* StoredMembers::find(Containers::StringView name) {
    if(!_object || !_object->IsObject())
        return nullptr;
    if(_sorted.empty()) {
        if(_object->MemberCount() <= Few || _searches++ < FewSearches)
            return search(*_object, name);
        sort();
    }
    const auto found = std::lower_bound(_sorted.begin(), _sorted.end(), name,
        [](const Member& member, Containers::StringView n) {
            return StrLess{}(member.name, n);
        });
    return found != _sorted.end() && found->name == name ? found->value
                                                         : nullptr;
}

}}
