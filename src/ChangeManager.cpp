#include "ChangeManager.h"

#include <cstdlib>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Assert.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Format.h>

#include "MergeIndex.h"
#include "deepCopy.h"
#include "editor/ProjectFile.h"
#include "editor/RapidJsonDebug.h"

namespace OrrelinEngine {

namespace {

constexpr std::size_t ReservedChanges = 64;
constexpr std::size_t HandlerCapacityStep = 16;

Containers::Pointer<JsonValue> copyOf(
    const JsonValue* value, JsonAllocator& allocator) {
    return value ? Containers::Pointer<JsonValue>{Corrade::InPlaceInit,
                       deepCopy(*value, allocator)}
                 : nullptr;
}

/* The path up to its last slash, empty if there is none */
Containers::StringView parentOf(Containers::StringView path) {
    std::size_t size = path.size();
    while(size && path[size - 1] != '/')
        --size;
    return path.prefix(size ? size - 1 : 0);
}

/* What follows the last slash, empty if there is none */
Containers::StringView lastSegment(Containers::StringView path) {
    return path.isEmpty() ? path : path.exceptPrefix(parentOf(path).size() + 1);
}

bool namesIndex(Containers::StringView segment) {
    if(segment.hasPrefix('-'))
        segment = segment.exceptPrefix(1);
    for(const char c: segment)
        if(c < '0' || c > '9')
            return false;
    return !segment.isEmpty();
}

/* Where in an array of given size an index means to insert: at its end if
   it's negative or too large */
std::uint32_t insertionIndex(
    Containers::StringView segment, std::uint32_t size) {
    const long long n =
        std::strtoll(Containers::String{segment}.data(), nullptr, 10);
    return n < 0 || n > 0x7fffffff ? size : std::uint32_t(n);
}

bool isEmptyContainer(const JsonValue& value) {
    return (value.IsArray() && value.Empty()) ||
        (value.IsObject() && value.ObjectEmpty());
}

bool isInArray(ProjectFile& project, Containers::StringView path) {
    const JsonValue* const parent = project.find(parentOf(path));
    return parent && parent->IsArray() && !path.isEmpty();
}

/* With each "-" that appends to an array replaced by the index that the
   element gets */
Containers::String withoutAppends(
    ProjectFile& project, Containers::StringView path) {
    if(path.isEmpty() || project.find(path))
        return path;
    const Containers::String parentPath =
        withoutAppends(project, parentOf(path));
    const Containers::StringView segment = lastSegment(path);
    const JsonValue* const parent =
        segment == "-" ? project.find(parentPath) : nullptr;
    return parent && parent->IsArray()
        ? Utility::format("{}/{}", parentPath, parent->Size())
        : Utility::format("{}/{}", parentPath, segment);
}

/* The path under which a value that's about to be created can be found
   again. An index as written may be no JSON Pointer to where it goes. */
Containers::String addressablePath(
    ProjectFile& project, Containers::String&& path) {
    if(!path.hasPrefix('/'))
        return std::move(path);
    if(path.contains("/-"))
        path = withoutAppends(project, path);
    const Containers::StringView segment = lastSegment(path);
    if(!namesIndex(segment))
        return std::move(path);
    const Containers::StringView parentPath = parentOf(path);
    const JsonValue* const parent = project.find(parentPath);
    if(parent && !parent->IsArray())
        return std::move(path);
    return Utility::format("{}/{}", parentPath,
        insertionIndex(segment, parent ? parent->Size() : 0));
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

struct ChangeManager::PendingHandler {
    Containers::String segment;
    Containers::Pointer<ChangeHandler> handler;
};

ChangeManager::ChangeManager(): _mergeIndex{Corrade::InPlaceInit} {
    arrayReserve(_changes, ReservedChanges);
}

ChangeManager::ChangeManager(ProjectFile& project): ChangeManager{} {
    _projectFile = &project;
}

ChangeManager::~ChangeManager() = default;

void ChangeManager::expectNotInHandler(const char* what) const {
    CORRADE_ASSERT(!_inHandler,
        "ChangeManager::" << Utility::Debug::nospace << what
                          << "from a change handler.", );
}

void ChangeManager::reset(ProjectFile& project) {
    expectNotInHandler("reset(): Can't reset");
    _projectFile = &project;
    _projectFile->distrustLookups();
    _mergeIndex->clear();
    arrayResize(_changes, 0);
    _lastChange = -1;
    _handlers.clear();
}

JsonAllocator& ChangeManager::allocator() {
    return _projectFile->allocator();
}

std::int32_t ChangeManager::mergeTarget(Containers::StringView path) {
    if(_lastChange < 1 || lastChange().group != _currentGroup)
        return -1;
    const std::int32_t target = _mergeIndex->find(_changes, _lastChange, path);
    if(target == -1 || _forceNewChange)
        return -1;
    /* In an array, the element that was removed isn't the one that's there
       now */
    const Change& change = _changes[std::size_t(target)];
    const bool anew = !change.newValue && isInArray(*_projectFile, path) &&
        (change.oldValue || _projectFile->find(path));
    return anew ? -1 : target;
}

JsonValue* ChangeManager::beginChange(
    Containers::String&& path, const JsonValue* value) {
    /* Before what could be redone is destroyed, as it may be a value there */
    Containers::Pointer<JsonValue> newValue = copyOf(value, allocator());

    _mergeIndex->shrink(_changes, std::size_t(_lastChange) + 1);
    ++_lastChange;
    arrayResize(_changes, std::size_t(_lastChange));
    arrayAppend(_changes, Corrade::InPlaceInit);
    if(_savedChange == _lastChange)
        _savedChange = -1;

    Change& change = lastChange();
    JsonValue* const current = _projectFile->find(path);
    change.oldValue = copyOf(current, allocator());
    change.path = current || !value
        ? std::move(path)
        : addressablePath(*_projectFile, std::move(path));
    change.newValue = std::move(newValue);
    change.group = _currentGroup;
    return current;
}

JsonValue* ChangeManager::updateChange(
    std::int32_t target, const JsonValue* value) {
    if(target != _lastChange) {
        _mergeIndex->exchange(_changes, target, _lastChange);
        std::swap(_changes[std::size_t(target)], lastChange());
    }
    Change& change = lastChange();
    if(change.newValue && value)
        deepAssign(*change.newValue, *value, allocator());
    else
        change.newValue = copyOf(value, allocator());
    return _projectFile->find(change.path);
}

void ChangeManager::pushChange(
    Containers::String&& path, const JsonValue* value, bool continuous) {
    expectNotInHandler("pushChange(): Can't push changes");
    CORRADE_INTERNAL_ASSERT(_projectFile);
    const EditScope scope = EditScope::continued(*_projectFile);

    const std::int32_t target = continuous ? mergeTarget(path) : -1;
    _forceNewChange = false;
    JsonValue* const current = target == -1
        ? beginChange(std::move(path), value)
        : updateChange(target, value);

    /* What's there is set, also if it's an earlier push of the step that
       created it: creating an element once more would insert another */
    perform(lastChange(), current);
    notify(lastChange());
}

void ChangeManager::pushChange(
    Containers::StringView path, const JsonValue& value, bool continuous) {
    pushChange(Containers::String{path}, &value, continuous);
}

void ChangeManager::pushRemoval(Containers::StringView path) {
    pushChange(Containers::String{path}, nullptr, false);
}

Change& ChangeManager::lastChange() {
    CORRADE_INTERNAL_ASSERT(
        _lastChange >= 0 && std::size_t(_lastChange) < _changes.size());
    return _changes[std::size_t(_lastChange)];
}

void ChangeManager::applyChange(const Change& change) {
    expectNotInHandler("applyChange(): Can't apply changes");
    perform(change,
        change.oldValue && change.newValue ? _projectFile->find(change.path)
                                           : nullptr);
    notify(change);
}

void ChangeManager::perform(const Change& change, JsonValue* current) {
    if(!change.newValue)
        removeValue(change.path);
    else if(current)
        deepAssign(*current, *change.newValue, allocator());
    else if(change.oldValue)
        setValue(change.path, *change.newValue);
    else
        createValue(change.path, *change.newValue);
}

void ChangeManager::removeValue(Containers::StringView path) {
    _projectFile->erase(path);

    for(Containers::StringView container = parentOf(path);
        !container.isEmpty();) {
        const JsonValue* const value = _projectFile->find(container);
        if(!value || !isEmptyContainer(*value))
            return;
        const Containers::StringView parent = parentOf(container);
        /* Top-level members stay */
        if(parent.isEmpty())
            return;
        _projectFile->erase(container);
        container = parent;
    }
}

void ChangeManager::setValue(
    Containers::StringView path, const JsonValue& value) {
    deepAssign(_projectFile->create(path), value, allocator());
}

void ChangeManager::createValue(
    Containers::StringView path, const JsonValue& value) {
    if(!namesIndex(lastSegment(path))) {
        setValue(path, value);
        return;
    }
    const JsonValue* const parent = _projectFile->find(parentOf(path));
    if(parent && parent->IsObject()) {
        setValue(path, value);
        return;
    }

    if(!parent) {
        const JsonValue* const stored =
            (*_projectFile)[path].readValueNoDefault();
        if(stored && !stored->IsObject() && !stored->IsArray()) {
            _projectFile->create(parentOf(path)).SetObject();
            setValue(path, value);
            return;
        }
    }
    insertValue(path, value);
}

void ChangeManager::insertValue(
    Containers::StringView path, const JsonValue& value) {
    const Containers::StringView parentPath = parentOf(path);
    JsonValue* parent = _projectFile->find(parentPath);
    if(!parent)
        parent = &_projectFile->create(parentPath).SetArray();
    CORRADE_INTERNAL_ASSERT(parent->IsArray());

    const std::uint32_t index =
        insertionIndex(lastSegment(path), parent->Size());
    /* Not the sixteen elements that RapidJSON begins with */
    if(parent->Empty())
        parent->Reserve(index + 1, allocator());
    while(parent->Size() < index)
        parent->PushBack(JsonValue{}, allocator());
    parent->PushBack(deepCopy(value, allocator()), allocator());
    for(std::uint32_t i = parent->Size() - 1; i > index; --i)
        (*parent)[i].Swap((*parent)[i - 1]);
}

Change ChangeManager::reverse(const Change& change) {
    Change out;
    out.path = change.path;
    out.oldValue = copyOf(change.newValue.get(), allocator());
    out.newValue = copyOf(change.oldValue.get(), allocator());
    return out;
}

void ChangeManager::undo(const Change& change) {
    expectNotInHandler("undo(): Can't undo/redo changes");
    CORRADE_INTERNAL_ASSERT(_lastChange >= 0);
    applyChange(reverse(change));
    --_lastChange;
}

void ChangeManager::undoLast() {
    expectNotInHandler("undoLast(): Can't undo/redo changes");
    CORRADE_ASSERT(_currentGroup < 0,
        "ChangeManager::undoLast(): Can't undo/redo changes in group. Forgot commit()?", );
    if(_lastChange == -1)
        return;

    const EditScope scope = EditScope::continued(*_projectFile);
    const std::int32_t group = lastChange().group;
    do
        undo(lastChange());
    while(_lastChange != -1 && group >= 0 && lastChange().group == group);
}

void ChangeManager::redoLastUndo() {
    expectNotInHandler("redoLastUndo(): Can't undo/redo changes");
    CORRADE_ASSERT(_currentGroup < 0,
        "ChangeManager::redoLastUndo(): Can't undo/redo changes in group. Forgot commit()?", );
    if(std::size_t(_lastChange + 1) == _changes.size())
        return;

    const EditScope scope = EditScope::continued(*_projectFile);
    const std::int32_t group = _changes[std::size_t(_lastChange + 1)].group;
    do {
        ++_lastChange;
        applyChange(lastChange());
    } while(std::size_t(_lastChange + 1) != _changes.size() && group >= 0 &&
        _changes[std::size_t(_lastChange + 1)].group == group);
}

void ChangeManager::commit() {
    expectNotInHandler("commit(): Can't commit a group");
    const std::int32_t group = _currentGroup;
    _currentGroup = -1;
    if(_lastChange < 0 || lastChange().group != group)
        return;

    std::int32_t first = _lastChange;
    while(first && _changes[std::size_t(first - 1)].group == group)
        --first;
    for(; first <= _lastChange; ++first)
        notify(_changes[std::size_t(first)]);
}

void ChangeManager::notify(const Change& change) {
    if(_currentGroup >= 0 || !_handlers.size())
        return;

    _inHandler = true;
    callHandlers(change);
    _inHandler = false;
    for(PendingHandler& pending: _pendingHandlers)
        registerHandler(pending.segment, std::move(pending.handler));
    arrayResize(_pendingHandlers, 0);
}

void ChangeManager::callHandlers(const Change& change) {
    Containers::Array<Containers::StringView> segments =
        Containers::StringView{change.path}.split('/');
    for(const Containers::StringView segment: segments)
        if(HandlerList* const handlers = _handlers.find(segment))
            for(Containers::Pointer<ChangeHandler>& handler: *handlers)
                handler->handle(change, segments);
}

void ChangeManager::markSave() {
    _savedChange = _lastChange;
}

bool ChangeManager::hasUnsavedChanges() const {
    return _savedChange != _lastChange;
}

void ChangeManager::addChangeHandler(Containers::StringView segment,
    Containers::Pointer<ChangeHandler>&& handler) {
    if(_inHandler)
        arrayAppend(_pendingHandlers,
            PendingHandler{Containers::String{segment}, std::move(handler)});
    else
        registerHandler(segment, std::move(handler));
}

void ChangeManager::addChangeHandler(Containers::StringView segment,
    FunctionChangeHandler::Callback function, void* userData) {
    addChangeHandler(segment,
        Containers::Pointer<ChangeHandler>{
            new FunctionChangeHandler{std::move(function), userData}});
}

void ChangeManager::registerHandler(Containers::StringView segment,
    Containers::Pointer<ChangeHandler>&& handler) {
    if(_handlers.size() == _handlers.capacity())
        _handlers.grow(HandlerCapacityStep);
    if(!_handlers.find(segment)) {
        _handlers.put(segment, HandlerList{});
        _handlers.compile();
    }
    arrayAppend(*_handlers.find(segment), std::move(handler));
}

}
