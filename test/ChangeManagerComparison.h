#ifndef Orrelin_test_ChangeManagerComparison_h
#define Orrelin_test_ChangeManagerComparison_h

#include "ChangeManagerReference.h"
#include "ChangeOperation.h"
#include "editor/ProjectFile.h"

namespace OrrelinEngine { namespace Test {

/* Performs operations on both, says what differs */
class Comparison {
public:
    explicit Comparison(const std::string& document): _manager{_project} {
        _project.document.Parse(document.data(), document.size());
        reference.document.CopyFrom(
            _project.document, reference.document.GetAllocator());
    }

    std::string perform(const ChangeOperation& operation) {
        reference.notifications.clear();
        _notifications.clear();
        const auto& [name, path, value] = operation;
        if(name == "reset")
            reference.reset();
        else if(name == "handle")
            reference.handlers.emplace_back(path, value);
        else if(name == "editDirectly")
            reference.create(path).CopyFrom(
                jsonDocument(value), reference.document.GetAllocator());
        else
            operation.perform(reference);
        if(reference.violated)
            return {};

        if(name == "reset")
            _manager.reset(_project);
        else if(name == "handle")
            addHandler(view(path), value);
        else if(name == "editDirectly")
            rapidjson::GenericPointer<JsonValue>{path.data(), path.size()}
                .Create(_project.document)
                .CopyFrom(jsonDocument(value), _project.allocator());
        else
            operation.perform(_manager);
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

    void addHandler(Containers::StringView segment, const std::string& name) {
        _manager.addChangeHandler(
            segment,
            [this, name](const Change& change,
                Containers::ArrayView<Containers::StringView>, void*) {
                _notifications.push_back(name + ' ' + textOf(change));
            },
            nullptr);
    }

    static std::string textOf(const Change& change) {
        const auto value = [](const JsonValue* json) {
            return json ? jsonText(*json) : std::string{};
        };
        /* Printed as the reference's, with values of any length */
        return ChangeManagerReference::Change{change.path,
            value(change.oldValue.get()), value(change.newValue.get())}
            .text();
    }

    static std::string state(const JsonValue& document,
        const std::vector<std::string>& notifications, bool isUnsaved) {
        std::string out = jsonText(document);
        for(const std::string& notification: notifications)
            out += "\n    told " + notification;
        return out + (isUnsaved ? "\n    unsaved" : "\n    saved");
    }

    /* What is the case after an operation */
    std::string difference() {
        std::string expected = state(reference.document,
            reference.notifications, reference.hasUnsavedChanges());
        std::string actual = state(
            _project.document, _notifications, _manager.hasUnsavedChanges());
        if(reference.last != -1) {
            const auto& last = reference.history[std::size_t(reference.last)];
            expected += ", group " + std::to_string(last.group) + ", last " +
                last.text();
            const Change& change = _manager.lastChange();
            actual += ", group " + std::to_string(change.group) + ", last " +
                textOf(change);
        }
        return expected == actual
            ? std::string{}
            : "expected\n  " + expected + "\nactual\n  " + actual;
    }

    ProjectFile _project;
    ChangeManager _manager;
    std::vector<std::string> _notifications;
};

}}

#endif
