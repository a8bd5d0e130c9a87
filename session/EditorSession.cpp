#include "session/EditorSession.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Optional.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>

#include "ChangeManager.h"
#include "editor/EditorSceneData.h"
#include "editor/OrrelinEditor.h"
#include "editor/ProjectFile.h"
#include "OrrelinEditorUtils/replaceFile.h"
#include "session/ProjectLook.h"
#include "session/projectJson.h"
#include "session/readFile.h"
#include "shared/LocalizationData.h"

namespace OrrelinEngine {

namespace {

/* The values that addLanguage() writes past the change manager, as text. They
   are sorted, as undoing a removal appends the record. */
typedef std::vector<std::string> LanguageRecords;

void appendText(
    LanguageRecords& out, Containers::StringView name, const JsonValue& value) {
    Containers::Array<char> text;
    std::size_t lost;
    /* If a value can't be written, the text ends there. Comparing it is enough,
       as addLanguage() writes no such value, and the change manager notices
       what was pushed to it. */
    writeValue(value, {}, text, lost, EditorSession::MaxDepth);
    out.push_back(std::string{name.data(), name.size()} + '\0' +
        std::string{text.data(), text.size()});
}

LanguageRecords languageRecords(const OrrelinEditor& editor) {
    LanguageRecords out;
    const JsonValue* const languages =
        editor.languagesSection.readValueNoDefault();
    if(languages && languages->IsObject())
        for(const auto& i: languages->GetObject())
            appendText(
                out, {i.name.GetString(), i.name.GetStringLength()}, i.value);
    std::sort(out.begin(), out.end());

    const ValueAccess defaultLanguage =
        editor.project["settings/localization/defaultLanguage"];
    if(const JsonValue* const stored = defaultLanguage.readValueNoDefault())
        appendText(out, {}, *stored);
    return out;
}

/* The file isn't kept in memory for this, as only few who open a project save
   it */
bool updateFile(Containers::StringView file, const JsonValue& document,
    const ProjectLook& look, Containers::Array<char>& out, std::size_t& lost) {
    Containers::String text;
    return !file.isEmpty() && readFile(file, text).isEmpty() &&
        updateProject(text, document, look, out, lost, EditorSession::MaxDepth);
}

/* Writes the document, as it is in the file where it's the same. On a failure
   prints that the operation can't write it, and why. */
bool writeDocument(const JsonValue& document, const ProjectLook& look,
    Containers::StringView file, Containers::Array<char>& out,
    Containers::StringView operation, Containers::StringView what) {
    std::size_t lost = 0;
    Containers::String fault;
    if(!updateFile(file, document, look, out, lost)) {
        out = {};
        fault =
            writeProject(document, look, out, lost, EditorSession::MaxDepth);
    }
    if(!fault.isEmpty()) {
        Utility::Error{} << operation << "can't write" << what
                         << Utility::Debug::nospace << ":" << fault;
        return false;
    }
    if(lost)
        Utility::Warning{} << operation << "numbers in" << what
                           << "that aren't finite were written as null:"
                           << lost;
    return true;
}

}

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
    ProjectLook look;
    /* That was opened or saved last, if any */
    Containers::String file;
    LanguageRecords savedLanguages;
};

EditorSession::EditorSession(Containers::StringView projectRoot):
    _state{Corrade::InPlaceInit, projectRoot} {}

EditorSession::~EditorSession() = default;

bool EditorSession::open(Containers::StringView file) {
    Containers::String content;
    if(const Containers::StringView fault = readFile(file, content)) {
        Utility::Error{} << "EditorSession::open(): can't read" << file
                         << Utility::Debug::nospace << ":" << fault;
        return false;
    }
    return open(file, content);
}

bool EditorSession::open(
    Containers::StringView file, Containers::StringView content) {
    const Containers::String fault = load(content, true);
    if(!fault.isEmpty()) {
        Utility::Error{} << "EditorSession::open(): can't open" << file
                         << Utility::Debug::nospace << ":" << fault;
        return false;
    }

    _state->file = file;
    const Containers::StringView folder = Utility::Path::split(file).first();
    _state->projectRoot = folder.isEmpty() ? "." : folder;
    return true;
}

bool EditorSession::parse(Containers::StringView json) {
    const Containers::String fault = load(json, false);
    if(fault.isEmpty()) {
        _state->file = {};
        return true;
    }
    Utility::Error{} << "EditorSession::parse():" << fault;
    return false;
}

Containers::String EditorSession::load(
    Containers::StringView json, bool keepsLook) {
    JsonDocument document;
    Containers::String fault = parseProject(document, json, MaxDepth);
    if(!fault.isEmpty())
        return fault;

    State& state = *_state;
    state.look = keepsLook ? lookOf(json) : ProjectLook{};
    /* The history's values are in the old document's memory */
    state.changeManager.reset(state.projectFile);
    /* Closes a group that was open; there's nothing left to notify of */
    state.changeManager.commit();
    state.localization = {};
    state.projectFile.document.Swap(document);
    markSaved();
    return {};
}

Containers::Optional<Containers::String> EditorSession::write() {
    Containers::Array<char> out;
    if(!writeDocument(_state->projectFile.document, _state->look, _state->file,
           out, "EditorSession::write():", "the project"))
        return {};
    /* A large one isn't copied. The string has a zero behind it. */
    arrayAppend(out, '\0');
    const std::size_t size = out.size() - 1;
    const auto free = out.deleter();
    return Containers::String{out.release(), size, free};
}

bool EditorSession::save(Containers::StringView file) {
    Containers::Array<char> out;
    if(!writeDocument(_state->projectFile.document, _state->look, _state->file,
           out, "EditorSession::save():", file))
        return false;
    const Containers::String fault =
        replaceFile(file, {out.data(), out.size()});
    if(!fault.isEmpty()) {
        Utility::Error{} << "EditorSession::save():" << fault;
        return false;
    }
    _state->file = file;
    markSaved();
    return true;
}

void EditorSession::markSaved() {
    _state->changeManager.markSave();
    _state->savedLanguages = languageRecords(_state->editor);
}

bool EditorSession::hasUnsavedChanges() const {
    return _state->changeManager.hasUnsavedChanges() ||
        _state->savedLanguages != languageRecords(_state->editor);
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
