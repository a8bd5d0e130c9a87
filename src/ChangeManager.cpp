#include "ChangeManager.h"

#include <utility>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>

#include "Implementation/DocumentEdits.h"
#include "Implementation/MergeIndex.h"
#include "Implementation/deepCopy.h"
#include "editor/ProjectFile.h"
#include "editor/RapidJsonDebug.h"

namespace OrrelinEngine {

namespace {

constexpr std::size_t ReservedChanges = 64;

Containers::Pointer<JsonValue> copyOf(
    const JsonValue* value, JsonAllocator& allocator) {
    return value ? Containers::Pointer<JsonValue>{Corrade::InPlaceInit,
                       deepCopy(*value, allocator)}
                 : nullptr;
}

}

Change::Change() = default;

Change::Change(Change&& other) noexcept = default;

Change::~Change() = default;

Change& Change::operator=(Change&& other) noexcept {
    using std::swap;
    path = std::move(other.path);
    swap(oldValue, other.oldValue);
    swap(newValue, other.newValue);
    group = other.group;
    return *this;
}

Utility::Debug& operator<<(Utility::Debug& debug, const Change& change) {
    if(change.oldValue)
        debug << (change.newValue ? "Change" : "Remove") << change.path
              << Utility::Debug::nospace << ":" << *change.oldValue;
    else
        debug << "Create" << change.path << Utility::Debug::nospace << ": ()";
    debug << "->";
    return change.newValue ? debug << *change.newValue : debug << "()";
}

ChangeHandler::~ChangeHandler() = default;

FunctionChangeHandler::FunctionChangeHandler(
    Callback&& function, void* userData):
    _function{std::move(function)},
    _userData{userData} {}

void FunctionChangeHandler::handle(
    const Change& change, Containers::ArrayView<Containers::StringView> path) {
    _function(change, path, _userData);
}

FunctionChangeHandler::~FunctionChangeHandler() = default;

ChangeManager::ChangeManager():
    _edits{Corrade::InPlaceInit}, _mergeIndex{Corrade::InPlaceInit} {
    arrayReserve(_changes, ReservedChanges);
}

ChangeManager::ChangeManager(ProjectFile& project): ChangeManager{} {
    _projectFile = &project;
    _edits->attach(project);
}

ChangeManager::~ChangeManager() {
    expectNotInHandler("~ChangeManager(): Can't destroy the manager");
}

void ChangeManager::reset(ProjectFile& project) {
    expectNotInHandler("reset(): Can't reset");
    _projectFile = &project;
    _edits->attach(project);
    _mergeIndex->forget(0);
    arrayResize(_changes, 0);
    _lastChange = -1;
    _handlers.clear();
}

JsonAllocator& ChangeManager::allocator() {
    return _projectFile->allocator();
}

Change& ChangeManager::last() {
    CORRADE_INTERNAL_ASSERT(
        _lastChange >= 0 && std::size_t(_lastChange) < _changes.size());
    return _changes[std::size_t(_lastChange)];
}

Change& ChangeManager::lastChange() {
    Change& change = last();
    /* The caller may write to it */
    _mergeIndex->forget(_lastChange);
    return change;
}

std::int32_t ChangeManager::mergeTarget(
    Containers::StringView path, const DocumentPlace& place) {
    if(_lastChange < 1 || last().group != _currentGroup)
        return -1;
    const std::int32_t target = last().path == path
        ? _lastChange
        : _mergeIndex->find(_changes, _lastChange, path);
    if(target == -1 || _forceNewChange)
        return -1;
    /* In an array, the element that was removed isn't the one that's there
       now */
    const Change& change = _changes[std::size_t(target)];
    const bool anew = !change.newValue &&
        DocumentEdits::isElement(place, path) &&
        (change.oldValue || place.value);
    return anew ? -1 : target;
}

void ChangeManager::recordChange(Containers::String&& path,
    const JsonValue* oldValue, const JsonValue* value) {
    /* Before what could be redone is destroyed, as it may be a value there */
    Containers::Pointer<JsonValue> newValue = copyOf(value, allocator());

    ++_lastChange;
    _mergeIndex->forget(_lastChange);
    arrayRemoveSuffix(_changes, _changes.size() - std::size_t(_lastChange));
    Change& change = arrayAppend(_changes, Corrade::InPlaceInit);
    if(_savedChange == _lastChange)
        _savedChange = -1;

    change.path = std::move(path);
    change.oldValue = copyOf(oldValue, allocator());
    change.newValue = std::move(newValue);
    change.group = _currentGroup;
}

void ChangeManager::updateChange(std::int32_t target, const JsonValue* value) {
    if(target != _lastChange) {
        _mergeIndex->exchange(target, _lastChange);
        std::swap(_changes[std::size_t(target)], last());
    }
    Change& change = last();
    if(change.newValue && value)
        deepAssign(*change.newValue, *value, allocator());
    else
        change.newValue = copyOf(value, allocator());
}

void ChangeManager::push(
    Containers::StringView path, const JsonValue* value, bool continuous) {
    expectNotInHandler("pushChange(): Can't push changes");
    CORRADE_INTERNAL_ASSERT(_projectFile);
    const DocumentPromise promise{_edits->index()};

    const DocumentPlace place = _edits->locate(path);
    const std::int32_t target = continuous ? mergeTarget(path, place) : -1;
    _forceNewChange = false;
    bool moved = false;
    if(target != -1)
        updateChange(target, value);
    else if(value && !place.value) {
        Containers::String address =
            DocumentEdits::addressablePath(path, place);
        moved = address != path;
        recordChange(std::move(address), nullptr, value);
    } else
        recordChange(path, place.value, value);

    /* The path itself may be a view of what's gone now. What's there is set,
       also if it's an earlier push of the step that created it: creating an
       element once more would insert another. */
    const Change& change = last();
    if(change.newValue && place.value)
        deepAssign(*place.value, *change.newValue, allocator());
    else
        _edits->perform(change, moved ? _edits->locate(change.path) : place);
    notify(change);
}

void ChangeManager::pushChange(
    Containers::String&& path, const JsonValue* value, bool continuous) {
    push(path, value, continuous);
    rethrow();
}

void ChangeManager::pushChange(
    Containers::StringView path, const JsonValue& value, bool continuous) {
    push(path, &value, continuous);
    rethrow();
}

void ChangeManager::pushRemoval(Containers::StringView path) {
    push(path, nullptr, false);
    rethrow();
}

void ChangeManager::apply(const Change& change) {
    const DocumentPromise promise{_edits->index()};
    _edits->apply(change);
    notify(change);
}

void ChangeManager::applyChange(const Change& change) {
    expectNotInHandler("applyChange(): Can't apply changes");
    CORRADE_INTERNAL_ASSERT(_projectFile);
    apply(change);
    rethrow();
}

Change ChangeManager::reverse(const Change& change) {
    Change out;
    out.path = change.path;
    out.oldValue = copyOf(change.newValue.get(), allocator());
    out.newValue = copyOf(change.oldValue.get(), allocator());
    return out;
}

ExclusiveEdits::ExclusiveEdits(ChangeManager& manager): _manager(manager) {
    _manager._edits->index().beginPromise();
}

ExclusiveEdits::~ExclusiveEdits() {
    _manager._edits->index().endPromise();
}

}
