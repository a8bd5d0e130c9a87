/* The history and the push, which alone writes to it.

   Entries 0 to _lastChange of _changes are performed, those behind were undone
   and wait for a redo. Neighbours with the same group make one step; a change
   outside any group (-1) is a step of its own.

   A push takes four turns, always in this order:

   1. Look the path up, once for all that follows.
   2. Write the history: either drop all redoable changes and append one, or
      merge into an earlier change of the same step.
   3. Edit the document.
   4. Call the handlers, or leave that to commit() if a group is open.

   History, document and callers never share a value; each has a deep copy. The
   path and the value given may still be views into any of them, so each is
   copied before the step that could move or destroy it. */

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
    /* The caller may write another path into it */
    _mergeIndex->forget(_lastChange);
    return change;
}

std::int32_t ChangeManager::mergeTarget(
    Containers::StringView path, const DocumentPlace& place) {
    /* The first change of the history is never merged into */
    if(_lastChange < 1 || last().group != _currentGroup)
        return -1;
    /* A drag of one value is decided here, without any index */
    const std::int32_t target = last().path == path
        ? _lastChange
        : _mergeIndex->find(_changes, _lastChange, path);
    if(target == -1 || _forceNewChange)
        return -1;
    /* A removal from an array: by now the index means another element, such as
       the one behind. Merged, the push would overwrite that one, and undo would
       bring back the removed one only. */
    const Change& change = _changes[std::size_t(target)];
    const bool anew = !change.newValue &&
        DocumentEdits::isElement(place, path) &&
        (change.oldValue || place.value);
    return anew ? -1 : target;
}

void ChangeManager::recordChange(Containers::String&& path,
    const JsonValue* oldValue, const JsonValue* value) {
    /* Copied first: it may belong to a redoable change, destroyed below */
    Containers::Pointer<JsonValue> newValue = copyOf(value, allocator());

    ++_lastChange;
    _mergeIndex->forget(_lastChange);
    arrayRemoveSuffix(_changes, _changes.size() - std::size_t(_lastChange));
    Change& change = arrayAppend(_changes, Corrade::InPlaceInit);
    /* This entry led to the saved state and now leads to another */
    if(_savedChange == _lastChange)
        _savedChange = -1;

    change.path = std::move(path);
    change.oldValue = copyOf(oldValue, allocator());
    change.newValue = std::move(newValue);
    change.group = _currentGroup;
}

void ChangeManager::updateChange(std::int32_t target, const JsonValue* value) {
    /* The edit made last has to be the last entry. An exchange leaves all
       other entries, and thus the positions in the merge index, in place. */
    if(target != _lastChange) {
        _mergeIndex->exchange(target, _lastChange);
        std::swap(_changes[std::size_t(target)], last());
    }
    Change& change = last();
    /* In place where possible, so that a drag takes no memory of the pool */
    if(change.newValue && value)
        deepAssign(*change.newValue, *value, allocator());
    else
        change.newValue = copyOf(value, allocator());
}

void ChangeManager::push(
    Containers::StringView path, const JsonValue* value, bool continuous) {
    expectNotInHandler("pushChange(): Can't push changes");
    CORRADE_INTERNAL_ASSERT(_projectFile);
    /* Holds to the end, as handlers may not edit */
    const DocumentPromise promise{_edits->index()};

    /* Stays valid while the history is written, as that leaves the document
       alone */
    const DocumentPlace place = _edits->locate(path);
    const std::int32_t target = continuous ? mergeTarget(path, place) : -1;
    _forceNewChange = false;
    bool moved = false;
    if(target != -1)
        updateChange(target, value);
    else if(value && !place.value) {
        /* "-" and the like are recorded as the index that they get. The place
           was looked up for another path then. */
        Containers::String address =
            DocumentEdits::addressablePath(path, place);
        moved = address != path;
        recordChange(std::move(address), nullptr, value);
    } else
        recordChange(path, place.value, value);

    /* From here on only the recorded path is used: the one given may be a view
       of a change that is gone. A value that's there is set even if the change
       is a creation, merged into an earlier one of this step: performing it
       again would insert a second element into an array. */
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
