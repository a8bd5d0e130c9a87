#include "undescribedTypes.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "Tools/Implementation/StoredMembers.h"
#include "editor/EditorSceneData.h"
#include "session/ProjectLook.h"
#include "session/projectJson.h"
#include "shared/Implementation/stringOf.h"
#include "shared/RecordPath.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

typedef std::set<Containers::StringView, StrLess> Names;

Names describedTypes(OrrelinEditor& editor) {
    const auto& types = editor.sceneData->main().javaScriptManager;
    Names out{"text"};
    for(std::uint32_t i = 0; i != *types.typeCount; ++i)
        out.insert(types.typeNames.get(i));
    return out;
}

/* Beside a text may be its key, which isn't one to translate */
void addTexts(const JsonValue* parameters, Names& out) {
    if(!parameters || !parameters->IsObject())
        return;
    for(const auto& parameter: parameters->GetObject()) {
        const Containers::StringView name = stringOf(parameter.name);
        if(parameter.value.IsString())
            out.insert(
                name.hasSuffix("_term") ? name.exceptSuffix("_term") : name);
    }
}

/* Finds the types the way in which terms are gathered, so that both know the
   same components */
class Search {
public:
    explicit Search(Project& project):
        _editor(project.editor()), _described{describedTypes(_editor)} {}

    void addObject(const JsonValue* object, Containers::StringView id) {
        const JsonValue* components =
            LocalizationTools::storedMember(object, "components");
        if(!components)
            components =
                &_editor.project["objects"][id]["components"].readValue();
        if(components->IsArray())
            for(rapidjson::SizeType i = 0; i != components->Size(); ++i)
                addComponent((*components)[i], id, i);
    }

    UndescribedTypes result;

private:
    void addComponent(const JsonValue& component, Containers::StringView id,
        rapidjson::SizeType index) {
        const JsonValue* const stored =
            LocalizationTools::storedMember(&component, "type");
        const Containers::StringView type = stored && stored->IsString()
            ? stringOf(*stored)
            : _editor
                  .project[Utility::format(
                      "objects/{}/components/{}/type", id, index)]
                  .asString();
        if(type.isEmpty() || _described.count(type))
            return;
        UndescribedType& found = result[type];
        ++found.componentCount;
        addTexts(
            LocalizationTools::storedMember(&component, type), found.texts);
    }

    OrrelinEditor& _editor;
    Names _described;
};

/* "guide": {"hint": "string"} */
Containers::String description(
    Containers::StringView name, const UndescribedType& type) {
    JsonDocument document;
    const auto text = [](Containers::StringView view) {
        return JsonValue(
            rapidjson::StringRef(view.data(), unsigned(view.size())));
    };
    JsonValue parameters{rapidjson::kObjectType};
    for(const Containers::StringView parameter: type.texts)
        parameters.AddMember(
            text(parameter), text("string"), document.GetAllocator());
    document.SetObject().AddMember(
        text(name), parameters, document.GetAllocator());

    ProjectLook look;
    look.lineEnd = {};
    Containers::Array<char> out;
    std::size_t lost;
    writeValue(document, look, out, lost, 2);
    return Containers::StringView{out.data(), out.size()}
        .exceptPrefix(1)
        .exceptSuffix(1);
}

}

UndescribedTypes findUndescribedTypes(Project& project) {
    const ProjectSection& section = project.editor().objectsSection;
    LocalizationTools::StoredMembers objects{section.readValueNoDefault()};
    Search search{project};
    for(const Containers::StringView id: section.keys())
        search.addObject(objects.find(RecordPath::name(id)), id);
    return std::move(search.result);
}

std::vector<Containers::String> hints(
    const Project& project, const UndescribedTypes& types) {
    std::vector<Containers::String> out;
    for(const auto& type: types)
        out.push_back(Utility::format(
            "Texts of {} of type '{}' aren't counted, as {} doesn't describe "
            "the type. Add: {}",
            counted(type.second.componentCount, "component"), type.first,
            descriptionFile(project), description(type.first, type.second)));
    return out;
}

bool mayLoseUndescribed(
    Project& project, std::size_t lostCount, Containers::StringView example) {
    const UndescribedTypes types =
        lostCount ? findUndescribedTypes(project) : UndescribedTypes{};
    if(types.empty())
        return false;
    fail(Utility::format(
        "{} would be lost, such as {}; they may be of components that {} "
        "doesn't describe, such as those of type '{}'; 'status' prints what "
        "to add there",
        counted(lostCount, "text"), example, descriptionFile(project),
        types.begin()->first));
    return true;
}

Containers::StringView descriptionFile(const Project& project) {
    const Containers::String& named = project.options().components;
    return named.isEmpty() ? "components.json"_s
                           : Containers::StringView{named};
}

}}
