#include "session/EditorSession.h"

#include <cerrno>
#include <cstring>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <rapidjson/stringbuffer.h>

#include "ChangeManager.h"
#include "editor/EditorSceneData.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "OrrelinEditorUtils/replaceFile.h"
#include "session/projectJson.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine {

struct EditorSession::State {
    explicit State(Containers::StringView root):
        projectRoot{root}, changeManager{projectFile},
        editor{&projectRoot, &sceneData, &localization,
            RecordAccess{projectFile, {}},
            ProjectSection{projectFile, "objects"},
            ProjectSection{projectFile, "languages"}, &changeManager} {}

    Containers::String projectRoot;
    ProjectFile projectFile;
    EditorSceneData sceneData;
    LocalizationData localization;
    ChangeManager changeManager;
    OrrelinEditor editor;
};

EditorSession::EditorSession(Containers::StringView projectRoot):
    _state{Corrade::InPlaceInit, projectRoot} {}

EditorSession::~EditorSession() = default;

bool EditorSession::open(Containers::StringView file) {
    const Containers::Optional<Containers::Array<char>> content = [&] {
        /* Whatever it prints is told below, with the reason */
        Utility::Error silence{nullptr};
        errno = 0;
        return Utility::Path::read(file);
    }();
    if(!content) {
        /* A folder is opened without an error before reading it fails */
        const int error = errno;
        Utility::Error{} << "EditorSession::open(): can't read" << file
                         << Utility::Debug::nospace << ":"
                         << std::strerror(Utility::Path::isDirectory(file)
                                    ? EISDIR
                                    : error);
        return false;
    }
    if(!load({content->data(), content->size()}, file))
        return false;

    const Containers::StringView folder = Utility::Path::split(file).first();
    _state->projectRoot = folder.isEmpty() ? "." : folder;
    return true;
}

bool EditorSession::parse(Containers::StringView json) {
    return load(json, {});
}

bool EditorSession::load(
    Containers::StringView json, Containers::StringView name) {
    JsonDocument document;
    const Containers::String fault = parseProject(document, json, MaxDepth);
    if(!fault.isEmpty()) {
        Utility::Error out;
        if(name.isEmpty())
            out << "EditorSession::parse():";
        else
            out << "EditorSession::open(): can't open" << name
                << Utility::Debug::nospace << ":";
        out << fault;
        return false;
    }

    State& state = *_state;
    /* The history's values are in the old document's memory */
    state.changeManager.reset(state.projectFile);
    /* Closes a group that was open; there's nothing left to notify of */
    state.changeManager.commit();
    state.changeManager.markSave();
    state.localization = {};
    state.projectFile.document.Swap(document);
    return true;
}

bool EditorSession::save(Containers::StringView file) {
    rapidjson::StringBuffer out;
    std::size_t lost = 0;
    Containers::String fault =
        writeProject(_state->projectFile.document, out, lost, MaxDepth);
    if(!fault.isEmpty()) {
        Utility::Error{} << "EditorSession::save(): can't write" << file
                         << Utility::Debug::nospace << ":" << fault;
        return false;
    }
    if(lost)
        Utility::Warning{} << "EditorSession::save(): numbers in" << file
                           << "that aren't finite were written as null:"
                           << lost;
    fault = replaceFile(file, {out.GetString(), out.GetSize()});
    if(!fault.isEmpty()) {
        Utility::Error{} << "EditorSession::save():" << fault;
        return false;
    }
    _state->changeManager.markSave();
    return true;
}

OrrelinEditor& EditorSession::editor() {
    return _state->editor;
}

ProjectFile& EditorSession::projectFile() {
    return _state->projectFile;
}

ChangeManager& EditorSession::changeManager() {
    return _state->changeManager;
}

LocalizationData& EditorSession::localization() {
    return _state->localization;
}

bool EditorSession::addScriptType(Containers::StringView name,
    Containers::ArrayView<
        const Containers::Pair<Containers::StringView, unsigned short>>
        parameters) {
    if(_state->sceneData.main().javaScriptManager.addType(name, parameters))
        return true;
    Utility::Error{} << "EditorSession::addScriptType(): no room for" << name
                     << "with" << parameters.size() << "parameters";
    return false;
}

}
