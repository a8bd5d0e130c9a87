#include <utility>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "editor/EditorSceneData.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "shared/RecordPath.h"

namespace OrrelinEngine { namespace LocalizationTools {

namespace {

using namespace Containers::Literals;

typedef Data::JavaScriptManager<unsigned short> ScriptTypes;

constexpr unsigned short NoType = 0xffff;

unsigned short findType(const ScriptTypes& types, Containers::StringView name) {
    for(std::uint32_t i = 0; i < *types.typeCount; ++i)
        if(types.typeNames.get(i) == name)
            return static_cast<unsigned short>(i);
    return NoType;
}

void record(OrrelinEditor& editor, TermMap& strings, Containers::String&& key,
    Containers::String&& path) {
    editor.localization->terms.emplace(key, path);
    strings.emplace(std::move(path), std::move(key));
}

/* The key that the user chose, or what the function generates */
template<class Generate>
Containers::String termKey(const ValueAccess& chosen, Generate&& generate) {
    return chosen.hasValue() ? Containers::String{chosen.asString()}
                             : generate();
}

}

void gatherComponentStrings(OrrelinEditor& editor,
    Containers::ArrayView<const Containers::StringView> pathParts,
    TermMap& strings) {
    if(pathParts.size() < 5)
        return;
    /* Most members that are looked for aren't there */
    const EditScope scope{editor.project};
    const Containers::StringView object = pathParts[2];
    const Containers::StringView index = pathParts[4];

    const ValueAccess component = editor.project["/"_s.join(pathParts)];
    const Containers::StringView type = component["type"].asString();
    if(type == "text") {
        record(editor, strings,
            termKey(component["text/text_term"],
                [&] { return Utility::format("{}-text-{}", object, index); }),
            std::move(component["text/text"].path));
        return;
    }

    const ScriptTypes& types = editor.sceneData->main().javaScriptManager;
    const unsigned short typeIndex = findType(types, type);
    if(typeIndex >= types.paramRangeCount)
        return;
    const ValueAccess values = component[RecordPath::segment(type)];
    const Data::ParamRange range = types.paramRanges[typeIndex];
    const StringArrayView names = types.paramNames(typeIndex);
    for(std::size_t i = 0; i != range.count; ++i) {
        if(types.paramTypes[range.first + i] != Data::StringParamType)
            continue;
        const Containers::StringView name = names.get(i);
        const Containers::String segment = RecordPath::segment(name);
        record(editor, strings,
            termKey(values[segment + "_term"],
                [&] {
                    return Utility::format("{}-js-{}-{}", object, index, name);
                }),
            std::move(values[segment].path));
    }
}

void gatherObjectStrings(
    OrrelinEditor& editor, Containers::StringView objectId, TermMap& strings) {
    const ValueAccess components =
        editor.project["objects"][objectId]["components"];
    if(!components.readValue().IsArray())
        return;
    for(std::size_t i = 0; i < components.size(); ++i) {
        const ValueAccess component = components[static_cast<unsigned int>(i)];
        gatherComponentStrings(
            editor, Containers::StringView{component.path}.split('/'), strings);
    }
}

void gatherStrings(OrrelinEditor& editor, TermMap& strings) {
    editor.localization->terms.clear();
    strings.clear();

    const ValueAccess project = editor.project["settings"]["project"];
    ValueAccess name = project["name"];
    if(name.hasValue())
        record(editor, strings,
            termKey(project["name_term"],
                [] { return Containers::String{"projectName"}; }),
            std::move(name.path));

    for(const Containers::StringView id: editor.objectsSection.keys())
        gatherObjectStrings(editor, id, strings);
}

}}
