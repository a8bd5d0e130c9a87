#include <utility>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "Tools/LocalizationTools.h"
#include "Tools/Implementation/StoredMembers.h"
#include "editor/EditorSceneData.h"
#include "editor/OrrelinEditor.h"
#include "shared/RecordPath.h"
#include "shared/Implementation/stringOf.h"

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

/* A component, with the parts of its path that generated keys need */
struct Component {
    /* Null if the document doesn't store it, as with a default of the editor */
    const JsonValue* stored;
    Containers::StringView path, object, index;
};

void gatherText(
    OrrelinEditor& editor, const Component& component, TermMap& strings) {
    const JsonValue* const chosen =
        storedMember(storedMember(component.stored, "text"), "text_term");
    record(editor, strings,
        chosen ? Containers::String{stringOf(*chosen)}
               : ""_s.join({component.object, "-text-", component.index}),
        component.path + "/text/text");
}

void gatherScript(OrrelinEditor& editor, const Component& component,
    Containers::StringView type, TermMap& strings) {
    const ScriptTypes& types = editor.sceneData->main().javaScriptManager;
    const unsigned short typeIndex = findType(types, type);
    if(typeIndex >= types.paramRangeCount)
        return;
    const Data::ParamRange range = types.paramRanges[typeIndex];
    const StringArrayView names = types.paramNames(typeIndex);
    const Containers::String typeSegment = RecordPath::segment(type);
    StoredMembers values{storedMember(component.stored, type)};
    for(std::size_t i = 0; i != range.count; ++i) {
        if(types.paramTypes[range.first + i] != Data::StringParamType)
            continue;
        const Containers::StringView name = names.get(i);
        const JsonValue* const chosen = values.find(name + "_term");
        record(editor, strings,
            chosen ? Containers::String{stringOf(*chosen)}
                   : ""_s.join({component.object, "-js-", component.index, "-",
                         name}),
            "/"_s.join(
                {component.path, typeSegment, RecordPath::segment(name)}));
    }
}

void gatherComponent(
    OrrelinEditor& editor, const Component& component, TermMap& strings) {
    /* Nearly all components store their type. The accessor, which also knows
       defaults, walks the whole path. */
    const JsonValue* const storedType = storedMember(component.stored, "type");
    const Containers::StringView type = storedType && storedType->IsString()
        ? stringOf(*storedType)
        : editor.project[component.path]["type"].asString();
    if(type == "text")
        gatherText(editor, component, strings);
    else
        gatherScript(editor, component, type, strings);
}

/* Gathers all components of one object. Pass false for stored if they are
   defaults: keys that the editor chose are only read from the document. */
void gatherComponents(OrrelinEditor& editor, const JsonValue& components,
    bool stored, Containers::StringView path, Containers::StringView object,
    TermMap& strings) {
    if(!components.IsArray())
        return;
    for(rapidjson::SizeType i = 0; i != components.Size(); ++i) {
        const Containers::String componentPath =
            Utility::format("{}/{}", path, i);
        gatherComponent(editor,
            {stored ? &components[i] : nullptr, componentPath, object,
                componentPath.exceptPrefix(path.size() + 1)},
            strings);
    }
}

}

void gatherComponentStrings(OrrelinEditor& editor,
    Containers::ArrayView<const Containers::StringView> pathParts,
    TermMap& strings) {
    if(pathParts.size() < 5)
        return;
    const ValueAccess component = editor.project["/"_s.join(pathParts)];
    gatherComponent(editor,
        {component.readValueNoDefault(), component.path, pathParts[2],
            pathParts[4]},
        strings);
}

void gatherObjectStrings(
    OrrelinEditor& editor, Containers::StringView objectId, TermMap& strings) {
    const ValueAccess components =
        editor.project["objects"][objectId]["components"];
    gatherComponents(editor, components.readValue(), components.hasValue(),
        components.path, objectId, strings);
}

void gatherStrings(OrrelinEditor& editor, TermMap& strings) {
    editor.localization->terms.clear();
    strings.clear();

    const ValueAccess project = editor.project["settings"]["project"];
    ValueAccess name = project["name"];
    if(name.hasValue()) {
        const ValueAccess chosen = project["name_term"];
        record(editor, strings,
            chosen.hasValue() ? Containers::String{chosen.asString()}
                              : Containers::String{"projectName"},
            std::move(name.path));
    }

    /* Walks the document itself, as an accessor of each object would cost about
       as much as its terms. Only objects whose components may be defaults take
       one. */
    StoredMembers objects{editor.objectsSection.readValueNoDefault()};
    for(const Containers::StringView id: editor.objectsSection.keys()) {
        const JsonValue* const components =
            storedMember(objects.find(RecordPath::name(id)), "components");
        if(components)
            gatherComponents(editor, *components, true,
                "/"_s.join({editor.objectsSection.path, id, "components"}), id,
                strings);
        else
            gatherObjectStrings(editor, id, strings);
    }
}

}}
