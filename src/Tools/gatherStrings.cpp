#include <cstring>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
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

typedef Data::JavaScriptManager<unsigned short> Registry;

/* join() takes any list of strings, which costs more than the copying here */
Containers::String concatenated(
    std::initializer_list<Containers::StringView> parts) {
    std::size_t size = 0;
    for(const Containers::StringView part: parts)
        size += part.size();
    Containers::String out{Corrade::NoInit, size};
    char* o = out.data();
    for(const Containers::StringView part: parts) {
        if(part)
            std::memcpy(o, part.data(), part.size());
        o += part.size();
    }
    return out;
}

/* A string parameter of a script type */
struct TextParameter {
    /* Name of the member with the key that the editor chose */
    Containers::String chosen;
    /* How generated keys and the paths end */
    Containers::String keyEnd, pathEnd;
};

/* The string parameters of all script types, each type prepared once */
class ScriptTypes {
public:
    explicit ScriptTypes(const Registry& registry): _registry(registry) {
        /* Of several types with one name, the first counts */
        for(std::uint32_t i = 0; i != *registry.typeCount; ++i)
            _types.emplace(registry.typeNames.get(i), Type{i, false, {}});
    }

    /* None if no type has that name */
    const std::vector<TextParameter>& parameters(Containers::StringView name) {
        static const std::vector<TextParameter> none;
        const auto found = _types.find(name);
        if(found == _types.end())
            return none;
        Type& type = found->second;
        if(!std::exchange(type.isPrepared, true))
            prepare(name, type);
        return type.parameters;
    }

private:
    struct Type {
        std::uint32_t index;
        bool isPrepared;
        std::vector<TextParameter> parameters;
    };

    void prepare(Containers::StringView name, Type& type) {
        if(type.index >= _registry.paramRangeCount)
            return;
        const unsigned short index = static_cast<unsigned short>(type.index);
        const Data::ParamRange range = _registry.paramRanges[index];
        const StringArrayView names = _registry.paramNames(index);
        for(std::size_t i = 0; i != range.count; ++i)
            if(_registry.paramTypes[range.first + i] == Data::StringParamType)
                type.parameters.push_back(
                    {names.get(i) + "_term", "-" + names.get(i),
                        concatenated({"/", RecordPath::segment(name), "/",
                            RecordPath::segment(names.get(i))})});
    }

    const Registry& _registry;
    std::map<Containers::StringView, Type, StrLess> _types;
};

/* A component, with the parts of its path that generated keys need */
struct Component {
    /* Null if the document doesn't store it, as with a default of the editor */
    const JsonValue* stored;
    Containers::StringView path, object, index;
};

/* Puts terms into both tables. Most documents list the objects about as the
   order of their keys is, and each object's texts, and its scripts, by index.
   So a term is first tried right behind the last one of its kind. */
class Gathering {
public:
    explicit Gathering(OrrelinEditor& editor, TermMap& strings):
        _editor(editor), _terms(editor.localization->terms),
        _strings(strings), _types{editor.sceneData->main().javaScriptManager},
        _behindText{_terms.end()}, _behindScript{_terms.end()} {}

    void gatherName();
    void gatherObject(Containers::StringView id);
    void gatherStoredObject(
        Containers::StringView id, const JsonValue& components);
    void gatherComponent(const Component& component);

private:
    void gatherComponents(const JsonValue& components, bool stored,
        Containers::StringView path, Containers::StringView object);
    void gatherText(const Component& component);
    void gatherScript(const Component& component, Containers::StringView type);
    void record(Containers::String&& key, Containers::String&& path,
        TermPathMap::iterator& behindLast);

    OrrelinEditor& _editor;
    TermPathMap& _terms;
    TermMap& _strings;
    ScriptTypes _types;
    TermPathMap::iterator _behindText, _behindScript;
};

void Gathering::record(Containers::String&& key, Containers::String&& path,
    TermPathMap::iterator& behindLast) {
    behindLast = std::next(_terms.emplace_hint(behindLast, key, path));
    _strings.emplace(std::move(path), std::move(key));
}

void Gathering::gatherName() {
    const ValueAccess project = _editor.project["settings"]["project"];
    ValueAccess name = project["name"];
    if(!name.hasValue())
        return;
    const ValueAccess chosen = project["name_term"];
    record(chosen.hasValue() ? Containers::String{chosen.asString()}
                             : Containers::String{"projectName"},
        std::move(name.path), _behindText);
}

void Gathering::gatherText(const Component& component) {
    const JsonValue* const chosen =
        storedMember(storedMember(component.stored, "text"), "text_term");
    record(chosen ? Containers::String{stringOf(*chosen)}
                  : concatenated({component.object, "-text-", component.index}),
        concatenated({component.path, "/text/text"}), _behindText);
}

void Gathering::gatherScript(
    const Component& component, Containers::StringView type) {
    const std::vector<TextParameter>& parameters = _types.parameters(type);
    if(parameters.empty())
        return;
    StoredMembers values{storedMember(component.stored, type)};
    for(const TextParameter& parameter: parameters) {
        const JsonValue* const chosen = values.find(parameter.chosen);
        record(chosen ? Containers::String{stringOf(*chosen)}
                      : concatenated({component.object, "-js-", component.index,
                            parameter.keyEnd}),
            concatenated({component.path, parameter.pathEnd}), _behindScript);
    }
}

void Gathering::gatherComponent(const Component& component) {
    /* Nearly all components store their type. The accessor, which also knows
       defaults, walks the whole path. */
    const JsonValue* const storedType = storedMember(component.stored, "type");
    const Containers::StringView type = storedType && storedType->IsString()
        ? stringOf(*storedType)
        : _editor.project[component.path]["type"].asString();
    if(type == "text")
        gatherText(component);
    else
        gatherScript(component, type);
}

/* Gathers all components of one object. Pass false for stored if they are
   defaults: keys that the editor chose are only read from the document. */
void Gathering::gatherComponents(const JsonValue& components, bool stored,
    Containers::StringView path, Containers::StringView object) {
    if(!components.IsArray())
        return;
    std::string componentPath{path.data(), path.size()};
    componentPath += '/';
    const std::size_t indexBegin = componentPath.size();
    for(rapidjson::SizeType i = 0; i != components.Size(); ++i) {
        componentPath.resize(indexBegin);
        componentPath += std::to_string(i);
        const Containers::StringView view{
            componentPath.data(), componentPath.size()};
        gatherComponent({stored ? &components[i] : nullptr, view, object,
            view.exceptPrefix(indexBegin)});
    }
}

void Gathering::gatherObject(Containers::StringView id) {
    const ValueAccess components = _editor.project["objects"][id]["components"];
    gatherComponents(
        components.readValue(), components.hasValue(), components.path, id);
}

void Gathering::gatherStoredObject(
    Containers::StringView id, const JsonValue& components) {
    gatherComponents(components, true,
        concatenated({_editor.objectsSection.path, "/", id, "/components"}),
        id);
}

/* About as many as there will be terms, so that the table needs no growing */
std::size_t componentCount(const JsonValue* objects) {
    std::size_t out = 0;
    if(objects && objects->IsObject())
        for(const auto& object: objects->GetObject()) {
            const JsonValue* const components =
                storedMember(&object.value, "components");
            out += components && components->IsArray() ? components->Size() : 0;
        }
    return out;
}

}

void gatherComponentStrings(OrrelinEditor& editor,
    Containers::ArrayView<const Containers::StringView> pathParts,
    TermMap& strings) {
    if(pathParts.size() < 5)
        return;
    const ValueAccess component = editor.project["/"_s.join(pathParts)];
    Gathering{editor, strings}.gatherComponent({component.readValueNoDefault(),
        component.path, pathParts[2], pathParts[4]});
}

void gatherObjectStrings(
    OrrelinEditor& editor, Containers::StringView objectId, TermMap& strings) {
    Gathering{editor, strings}.gatherObject(objectId);
}

void gatherStrings(OrrelinEditor& editor, TermMap& strings) {
    const JsonValue* const stored = editor.objectsSection.readValueNoDefault();
    editor.localization->terms.clear();
    strings.clear();
    strings.reserve(componentCount(stored));

    Gathering gathering{editor, strings};
    gathering.gatherName();
    /* Walks the document itself, as an accessor of each object would cost about
       as much as its terms. Only objects whose components may be defaults take
       one. */
    StoredMembers objects{stored};
    for(const Containers::StringView id: editor.objectsSection.keys()) {
        const JsonValue* const components =
            storedMember(objects.find(RecordPath::name(id)), "components");
        if(components)
            gathering.gatherStoredObject(id, *components);
        else
            gathering.gatherObject(id);
    }
}

}}
