/* Steps of the history: commit, undo, redo, jumps and the save mark.

   Steps aren't stored. They follow from the group ids: a maximal run of
   neighbours with the same id is one, and each change with -1 is one. Undo and
   redo never change the history. They only move _lastChange, one change at
   a time, backward with the reverse of each change and forward with the change
   as it's recorded. */

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>

#include "ChangeManager.h"
#include "Implementation/DocumentEdits.h"

namespace OrrelinEngine {

/* The first change of the step that ends with the given one */
std::int32_t ChangeManager::stepBegin(std::int32_t lastOfStep) const {
    std::int32_t first = lastOfStep;
    const std::int32_t group = _changes[std::size_t(first)].group;
    while(
        group >= 0 && first && _changes[std::size_t(first - 1)].group == group)
        --first;
    return first;
}

/* Past the last change of the step that begins with the given one */
std::int32_t ChangeManager::stepEnd(std::int32_t firstOfStep) const {
    const std::int32_t group = _changes[std::size_t(firstOfStep)].group;
    std::int32_t end = firstOfStep + 1;
    while(group >= 0 && std::size_t(end) != _changes.size() &&
        _changes[std::size_t(end)].group == group)
        ++end;
    return end;
}

void ChangeManager::commit() {
    expectNotInHandler("commit(): Can't commit a group");
    const std::int32_t group = _currentGroup;
    _currentGroup = -1;
    if(_lastChange < 0 || last().group != group)
        return;

    /* Not stepBegin(), which takes changes outside any group one by one. With
       no group open, this notifies again of all of those on top. */
    std::int32_t first = _lastChange;
    while(first && _changes[std::size_t(first - 1)].group == group)
        --first;
    for(; first <= _lastChange; ++first)
        notify(_changes[std::size_t(first)]);
    rethrow();
}

void ChangeManager::undoChange(const Change& change) {
    /* _lastChange steps back only after the handlers were called, position()
       before that. A copy is applied, as `change` is usually last(). */
    _undoing = true;
    apply(reverse(change));
    _undoing = false;
    --_lastChange;
}

/* The last change that the document contains. While the handlers of an undo
   are called, this is one less than _lastChange. */
std::int32_t ChangeManager::position() const {
    return _lastChange - (_undoing ? 1 : 0);
}

void ChangeManager::undo(const Change& change) {
    expectNotInHandler("undo(): Can't undo/redo changes");
    CORRADE_INTERNAL_ASSERT(_lastChange >= 0);
    undoChange(change);
    rethrow();
}

void ChangeManager::undoLast() {
    expectCanStep("undoLast");
    if(_lastChange != -1)
        goTo(stepBegin(_lastChange) - 1);
}

void ChangeManager::redoLastUndo() {
    expectCanStep("redoLastUndo");
    if(canRedo())
        goTo(stepEnd(_lastChange + 1) - 1);
}

void ChangeManager::goToStep(std::int32_t count) {
    expectCanStep("goToStep");
    const Containers::Array<Containers::ArrayView<const Change>> all = steps();
    CORRADE_ASSERT(count >= 0 && std::size_t(count) <= all.size(),
        "ChangeManager::goToStep(): step" << count << "out of range for"
                                          << all.size() << "steps", );
    goTo(count ? std::int32_t(
                     all[std::size_t(count - 1)].end() - _changes.begin()) -
                1
               : -1);
}

void ChangeManager::expectCanStep(const char* operation) const {
    CORRADE_ASSERT(!_inHandler,
        "ChangeManager::"
            << Utility::Debug::nospace << operation << Utility::Debug::nospace
            << "(): Can't undo/redo changes from a change handler.", );
    CORRADE_ASSERT(_currentGroup < 0,
        "ChangeManager::"
            << Utility::Debug::nospace << operation << Utility::Debug::nospace
            << "(): Can't undo/redo changes in group. Forgot commit()?", );
}

void ChangeManager::goTo(std::int32_t change) {
    /* One promise for all, so that a step which creates many members doesn't
       search their object for each */
    const DocumentPromise promise{_edits->index()};
    while(_lastChange > change)
        undoChange(last());
    while(_lastChange < change) {
        ++_lastChange;
        apply(last());
    }
    rethrow();
}

bool ChangeManager::canUndo() const {
    return _currentGroup < 0 && position() >= 0;
}

bool ChangeManager::canRedo() const {
    return _currentGroup < 0 && std::size_t(position() + 1) < _changes.size();
}

Containers::ArrayView<const Change> ChangeManager::nextUndo() const {
    return canUndo() ? changes(stepBegin(position()), position() + 1) : nullptr;
}

Containers::ArrayView<const Change> ChangeManager::nextRedo() const {
    return canRedo() ? changes(position() + 1, stepEnd(position() + 1))
                     : nullptr;
}

Containers::ArrayView<const Change> ChangeManager::changes(
    std::int32_t begin, std::int32_t end) const {
    return {_changes.begin() + begin, std::size_t(end - begin)};
}

Containers::Array<Containers::ArrayView<const Change>> ChangeManager::steps()
    const {
    Containers::Array<Containers::ArrayView<const Change>> out;
    for(std::int32_t i = 0, end; std::size_t(i) != _changes.size(); i = end) {
        end = stepEnd(i);
        /* undo() can take back a part of a step; it counts as two then */
        if(i <= position() && end > position() + 1)
            end = position() + 1;
        arrayAppend(out, changes(i, end));
    }
    return out;
}

/* How many steps end with the given change or before; -1 if it's in the midst
   of one or not in the history anymore */
std::int32_t ChangeManager::stepOf(std::int32_t change) const {
    std::int32_t count = 0;
    std::int32_t end = 0;
    for(const Containers::ArrayView<const Change>& step: steps()) {
        if(end > change)
            break;
        end += std::int32_t(step.size());
        ++count;
    }
    return end == change + 1 ? count : -1;
}

std::int32_t ChangeManager::currentStep() const {
    return stepOf(position());
}

std::int32_t ChangeManager::savedStep() const {
    return stepOf(_savedChange);
}

void ChangeManager::markSave() {
    _savedChange = position();
}

bool ChangeManager::hasUnsavedChanges() const {
    return _savedChange != position();
}

}
