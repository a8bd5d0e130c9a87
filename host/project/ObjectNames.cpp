#include "ObjectNames.h"

#include <Corrade/Containers/StaticArray.h>
#include <rapidjson/document.h>

#include "Tools/Implementation/StoredMembers.h"
#include "editor/OrrelinEditor.h"
#include "shared/Implementation/stringOf.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace Host {

using namespace Containers::Literals;

namespace {

constexpr Containers::StringView Objects = "/objects/"_s;

}

Containers::StringView objectPath(Containers::StringView path) {
    if(!path.hasPrefix(Objects))
        return {};
    return path.prefix(
        path.exceptPrefix(Objects.size()).partition('/')[0].end());
}

ObjectNames::ObjectNames(Project& project) {
    const JsonValue* const objects =
        project.editor().project["objects"].readValueNoDefault();
    if(!objects || !objects->IsObject())
        return;
    for(const auto& object: objects->GetObject()) {
        const JsonValue* const name =
            LocalizationTools::storedMember(&object.value, "name");
        if(name && name->IsString())
            _names.emplace(stringOf(object.name), stringOf(*name));
    }
}

Containers::StringView ObjectNames::find(Containers::StringView path) {
    const Containers::StringView object = objectPath(path);
    if(object.isEmpty())
        return {};
    if(object != _lastPath) {
        const auto found =
            _names.find(RecordPath::name(object.exceptPrefix(Objects.size())));
        _lastPath = object;
        _lastName =
            found != _names.end() ? found->second : Containers::StringView{};
    }
    return _lastName;
}

}}
