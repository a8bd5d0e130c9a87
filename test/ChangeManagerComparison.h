#ifndef Orrelin_test_ChangeManagerComparison_h
#define Orrelin_test_ChangeManagerComparison_h

#include <rapidjson/pointer.h>

#include "ChangeManagerReference.h"
#include "ChangeOperation.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace Test {

/* Performs operations on both, says what differs */
class Comparison {
public:
    explicit Comparison(const std::string& document): _manager{_project} {
        _project.document.Parse(document.data(), document.size());
        reference.document = Tree{_project.document};
    }

    std::string perform(const ChangeOperation& operation) {
        reference.notifications.clear();
        _notifications.clear();
        performReference(operation);
        if(reference.violated)
            return {};
        performManager(operation);
        return difference();
    }

    std::string undoAndRedoAll(const std::string& first) {
        std::string out;
        if(reference.group != -1)
            out = perform(ChangeOperation{"commit"});
        if(out.empty())
            out = redoAll();
        const std::string end = jsonText(_project.document);
        while(out.empty() && reference.last != -1)
            out = perform(ChangeOperation{"undo"});
        if(out.empty() && _project.document != jsonDocument(first))
            out = "undoing everything gave " + jsonText(_project.document);
        if(out.empty())
            out = redoAll();
        if(out.empty() && _project.document != jsonDocument(end))
            out = "redoing everything gave " + jsonText(_project.document) +
                ", not " + end;
        return out;
    }

    ChangeManagerReference reference;

private:
    std::string redoAll() {
        std::string out;
        while(
            out.empty() && reference.last + 1 != int(reference.history.size()))
            out = perform(ChangeOperation{"redo"});
        return out;
    }

    void performReference(const ChangeOperation& operation) {
        const std::string& name = operation.name;
        const std::string& path = operation.path;
        const Tree value{jsonDocument(operation.value)};
        if(name == "push" || name == "drag")
            reference.push(path, value, name == "drag");
        else if(name == "remove" || name == "dragRemove")
            reference.push(path, {}, name == "dragRemove");
        else if(name == "append")
            reference.append(path, value);
        else if(name == "beginGroup")
            reference.beginGroup();
        else if(name == "commit")
            reference.commit();
        else if(name == "undo")
            reference.undo();
        else if(name == "redo")
            reference.redo();
        else if(name == "markSave")
            reference.markSave();
        else if(name == "forceNew")
            reference.forceNew();
        else if(name == "reset")
            reference.reset();
        else if(name == "handle")
            reference.handlers.emplace_back(path, operation.value);
        else if(name == "editDirectly")
            create(reference.document, path) = value;
    }

    void performManager(const ChangeOperation& operation) {
        const Containers::StringView path = view(operation.path);
        if(operation.name == "reset")
            _manager.reset(_project);
        else if(operation.name == "handle")
            addHandler(path, operation.value);
        else if(operation.name == "editDirectly")
            rapidjson::GenericPointer<JsonValue>{path.data(), path.size()}
                .Create(_project.document)
                .CopyFrom(jsonDocument(operation.value),
                    _project.document.GetAllocator());
        else
            operation.perform(_manager);
    }

    void addHandler(Containers::StringView segment, const std::string& name) {
        _manager.addChangeHandler(
            segment,
            [this, name](const Change& change,
                Containers::ArrayView<Containers::StringView>, void*) {
                _notifications.push_back(name + ' ' + textOf(change));
            },
            nullptr);
    }

    /* As it's printed, but with values of any length */
    static std::string textOf(const Change& change) {
        const auto value = [](const JsonValue* json) {
            return json ? jsonText(*json) : std::string{"()"};
        };
        const char* const kind = !change.oldValue ? "Create "
            : change.newValue                     ? "Change "
                                                  : "Remove ";
        return kind + std::string{change.path.data(), change.path.size()} +
            ": " + value(change.oldValue.get()) + " -> " +
            value(change.newValue.get());
    }

    std::string difference() {
        const auto differing = [](const std::string& what,
                                   const std::string& expected,
                                   const std::string& actual) {
            return expected == actual
                ? std::string{}
                : what + "\n  expected " + expected + "\n  actual   " + actual;
        };
        const auto joined = [](const std::vector<std::string>& lines) {
            std::string out;
            for(const std::string& line: lines)
                out += line + "; ";
            return out;
        };

        std::string out = differing(
            "document", reference.document.text(), jsonText(_project.document));
        if(out.empty())
            out = differing("notifications", joined(reference.notifications),
                joined(_notifications));
        if(out.empty())
            out = differing("unsaved",
                std::to_string(reference.hasUnsavedChanges()),
                std::to_string(_manager.hasUnsavedChanges()));
        if(out.empty() && reference.last != -1) {
            const auto& expected =
                reference.history[std::size_t(reference.last)];
            const Change& actual = _manager.lastChange();
            out = differing("last change",
                expected.text() + ' ' + std::to_string(expected.group),
                textOf(actual) + ' ' + std::to_string(actual.group));
        }
        return out;
    }

    ProjectFile _project;
    ChangeManager _manager;
    std::vector<std::string> _notifications;
};

}}

#endif
