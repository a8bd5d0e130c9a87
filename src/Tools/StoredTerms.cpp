#include "Tools/StoredTerms.h"

#include <charconv>
#include <utility>
#include <rapidjson/document.h>

#include "editor/OrrelinEditor.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

using namespace Containers::Literals;

/* Searching so few members takes less than looking one up by its path */
constexpr rapidjson::SizeType FewMembers = 32;

Containers::StringView stringOf(const JsonValue& value) {
    return {value.GetString(), value.GetStringLength()};
}

bool isSmall(const JsonValue& value) {
    return value.IsObject() && value.MemberCount() <= FewMembers;
}

/* Null if there is none, or if it takes more than a glance to find it */
const JsonValue* child(const JsonValue& parent, Containers::StringView name) {
    if(parent.IsArray()) {
        rapidjson::SizeType index = 0;
        const auto parsed = std::from_chars(name.begin(), name.end(), index);
        const bool isIndex = parsed.ec == std::errc{} &&
            parsed.ptr == name.end() && (name.size() == 1 || name[0] != '0');
        return isIndex && index < parent.Size() ? &parent[index] : nullptr;
    }
    if(isSmall(parent))
        for(const auto& member: parent.GetObject())
            if(stringOf(member.name) == name)
                return &member.value;
    return nullptr;
}

/* Splits off what follows the last slash. Nothing is left if there is none. */
Containers::StringView splitLast(Containers::StringView& path) {
    const Containers::StringView slash = path.findLast('/');
    if(!slash)
        return std::exchange(path, {});
    const Containers::StringView out = path.suffix(slash.end());
    path = path.prefix(slash.begin());
    return out;
}

}

Containers::StringView StoredTerm::text() const {
    return value && value->IsString() ? stringOf(*value)
                                      : Containers::StringView{};
}

const JsonValue* StoredTerms::record(Containers::StringView path) {
    /* All but the project's name are at "<components>/<index>/<type>" */
    Containers::StringView componentsPath = path;
    const Containers::StringView type = splitLast(componentsPath);
    const Containers::StringView index = splitLast(componentsPath);
    if(componentsPath != _componentsPath) {
        _components = componentsPath.isEmpty()
            ? nullptr
            : _editor.project[componentsPath].readValueNoDefault();
        _componentsPath = componentsPath;
    }
    const JsonValue* const component =
        _components ? child(*_components, index) : nullptr;
    const JsonValue* const found =
        component ? child(*component, type) : nullptr;
    return found ? found : _editor.project[path].readValueNoDefault();
}

StoredTerm StoredTerms::find(Containers::StringView path) {
    Containers::StringView recordPath = path;
    const Containers::StringView name = splitLast(recordPath);

    StoredTerm out;
    const JsonValue* flag = nullptr;
    const JsonValue* const values = recordPath.isEmpty() || path.contains('~')
        ? nullptr
        : record(recordPath);
    if(values && isSmall(*values)) {
        for(const auto& member: values->GetObject()) {
            const Containers::StringView memberName = stringOf(member.name);
            if(!out.value && memberName == name)
                out.value = &member.value;
            else if(!flag && memberName.hasSuffix("_translate"_s) &&
                memberName.exceptSuffix("_translate"_s) == name)
                flag = &member.value;
        }
    } else {
        out.value = _editor.project[path].readValueNoDefault();
        flag = _editor.project[path + "_translate"].readValueNoDefault();
    }
    out.translated = !flag || flag->IsTrue();
    return out;
}

}}
