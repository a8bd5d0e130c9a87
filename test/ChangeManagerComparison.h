#ifndef Orrelin_test_ChangeManagerComparison_h
#define Orrelin_test_ChangeManagerComparison_h

#include "ChangeManagerReference.h"
#include "ChangeOperation.h"
#include "editor/ProjectFile.h"
#include "editor/RapidJsonUtils.h"

namespace OrrelinEngine {

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
        if(name == "read")
            return read(path);
        if(name == "promise") {
            _promise = Containers::Pointer<ExclusiveEdits>{
                _promise ? nullptr : new ExclusiveEdits{_manager}};
            return {};
        }
        if(name == "write")
            _promise = nullptr;
        if(name == "reset")
            reference.reset();
        else if(name == "handle")
            reference.handlers.emplace_back(path, value);
        else if(name == "write")
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
        else if(name == "write")
            _project[view(path)].writeValue().CopyFrom(
                jsonDocument(value), _project.allocator());
        else
            operation.perform(_manager);
        return difference();
    }

    /* A call with each of the two documents, which the change manager isn't
       told of */
    template<class Edit> std::string edit(const Edit& edit) {
        _promise = nullptr;
        edit(reference.document);
        edit(_project.document);
        return difference();
    }

    ChangeManagerReference reference;

private:
    /* Looked up anew, and where it was looked up the last time */
    std::string read(const std::string& path) {
        const bool found = finds(_accessor);
        _accessor = _project[view(path)];
        return found && finds(_accessor) ? std::string{}
                                         : "found another value";
    }

    /* What RapidJSON's own pointers find, which search from end to end */
    bool finds(const RecordAccess& accessor) {
        const JsonValue* const value =
            RapidJsonUtils::valueByPointer(_project.document, accessor.path);
        return accessor.readValueNoDefault() == value &&
            accessor.hasValue() == bool(value) &&
            accessor.asString() ==
            (value && value->IsString() ? value->GetString() : "");
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

    static std::string state(
        const std::vector<std::string>& notifications, bool isUnsaved) {
        std::string out;
        for(const std::string& notification: notifications)
            out += "\n    told " + notification;
        return out + (isUnsaved ? "\n    unsaved" : "\n    saved");
    }

    /* With members in the same order, as their texts are, but much faster */
    static bool isSame(const JsonValue& a, const JsonValue& b) {
        if(a.GetType() != b.GetType())
            return false;
        if(a.IsArray())
            return std::equal(a.Begin(), a.End(), b.Begin(), b.End(), isSame);
        if(a.IsObject())
            return std::equal(a.MemberBegin(), a.MemberEnd(), b.MemberBegin(),
                b.MemberEnd(), [](const auto& i, const auto& j) {
                    return i.name == j.name && isSame(i.value, j.value);
                });
        return a == b && a.IsDouble() == b.IsDouble();
    }

    /* What is the case after an operation */
    std::string difference() {
        std::string expected =
            state(reference.notifications, reference.hasUnsavedChanges());
        std::string actual =
            state(_notifications, _manager.hasUnsavedChanges());
        if(reference.last != -1) {
            const auto& last = reference.history[std::size_t(reference.last)];
            expected += ", group " + std::to_string(last.group) + ", last " +
                last.text();
            const Change& change = _manager.lastChange();
            actual += ", group " + std::to_string(change.group) + ", last " +
                textOf(change);
        }
        return expected == actual &&
                isSame(reference.document, _project.document)
            ? std::string{}
            : "expected\n  " + jsonText(reference.document) + expected +
                "\nactual\n  " + jsonText(_project.document) + actual;
    }

    ProjectFile _project;
    ChangeManager _manager;
    /* Kept, as no direct edit is made while there is one */
    Containers::Pointer<ExclusiveEdits> _promise;
    ValueAccess _accessor{_project, {}};
    std::vector<std::string> _notifications;
};

}

#endif
