#ifndef Orrelin_ChangeManager_h
#define Orrelin_ChangeManager_h

/** @file
 * @brief Class @ref OrrelinEngine::ChangeManager, @ref OrrelinEngine::Change, @ref OrrelinEngine::ChangeHandler, @ref OrrelinEngine::FunctionChangeHandler
 */

#include <cstdint>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Utility.h>
#include <Magnum/Magnum.h>
#include <rapidjson/document.h>

#include "shared/Export.h"
#include "shared/Function.h"
#include "shared/StaticMap.h"

namespace OrrelinEngine {

/**
@brief One reversible edit of the project document

A creation if there is no @ref oldValue, a removal if there is an
@ref oldValue and no @ref newValue, a modification if there are both.

The contents of the values are in the memory pool of the project document, so a
change must not outlive it.
*/
class ORRELIN_LOCALIZATION_EXPORT Change {
public:
    /** @brief A change without path and values, outside any group */
    explicit Change();

    /** @brief Copying is not allowed */
    Change(const Change&) = delete;

    /** @brief Move constructor; leaves @p other without path and values */
    Change(Change&& other) noexcept;

    ~Change();

    /** @brief Copying is not allowed */
    Change& operator=(const Change&) = delete;

    /** @brief Move assignment; leaves @p other with the former values */
    Change& operator=(Change&& other) noexcept;

    /** @brief JSON Pointer of the changed value */
    Containers::String path;

    /** @brief Value before the change, null if there was none */
    Containers::Pointer<JsonValue> oldValue;

    /** @brief Value after the change, null if there is none */
    Containers::Pointer<JsonValue> newValue;

    /** @brief Group in which the change was made, -1 if in none */
    std::int32_t group = -1;
};

/**
@brief Debug output of a change

What it does, the path and both values, as in `Change /a/b: 1 -> 2`,
`Create /a/b: () -> 2`, `Remove /a/b: 1 -> ()`.
*/
ORRELIN_LOCALIZATION_EXPORT Utility::Debug& operator<<(
    Utility::Debug& debug, const Change& change);

/** @brief Is told of changes */
class ORRELIN_LOCALIZATION_EXPORT ChangeHandler {
public:
    /**
     * @brief Called after a change was made
     * @param change    The change. On undo, the reverse of the recorded one.
     * @param path      Segments of its path, split at each "/" with empty
     *      ones kept, valid only during the call
     *
     * A handler may register further handlers, which are called from the next
     * notification on. It must not edit the document, directly or by calling
     * the manager: the manager prints what it can't do and aborts.
     */
    virtual void handle(const Change& change,
        Containers::ArrayView<Containers::StringView> path) = 0;

    virtual ~ChangeHandler();
};

/** @brief Change handler that calls a function */
class ORRELIN_LOCALIZATION_EXPORT FunctionChangeHandler: public ChangeHandler {
public:
    /** @brief What is called, with the user pointer as the last argument */
    typedef Function<void(
        const Change&, Containers::ArrayView<Containers::StringView>, void*)>
        Callback;

    /**
     * @brief Constructor
     * @param function  Called for each change
     * @param userData  Passed on to it; not owned
     */
    explicit FunctionChangeHandler(Callback&& function, void* userData);

    void handle(const Change& change,
        Containers::ArrayView<Containers::StringView> path) override;

    ~FunctionChangeHandler() override;

private:
    Callback _function;
    void* _userData;
};

/**
@brief Undo and redo of all edits of the project document

Every edit is made through @ref pushChange() and its relatives, which record
the value at a JSON Pointer before and after, perform the edit at once and tell
the handlers registered for a segment of the path.

@section ChangeManager-steps Undo steps

A change pushed on its own is one undo step. Changes pushed between
@ref beginGroup() and @ref commit() are one step together; their handlers are
called on commit. Groups don't nest: beginning one while one is open makes the
changes that follow a step of their own, and commit tells of the last only.

A *continuous* push updates the newest change of the same path, if there is one
among those of the open group or, with none open, among those since the last
group, instead of adding another --- for a value that is dragged. The very first
change of the history is never updated so. The updated change becomes the last
one. After saving, @ref forceNewContinuousChange() keeps
a drag that goes on from being merged into what was saved.

@section ChangeManager-paths Paths and arrays

Missing parents of a value are created and containers left empty by a removal
are removed, except for those at the top level of the document. Undoing a
creation is a removal, so it takes parents that were empty before with it.

A value pushed to an index that an array has replaces the element there. Undo
of a removal inserts the element where it was. A value pushed beyond the end of
an array fills it up with nulls, which stay on undo. An index that is negative
or doesn't fit 32 bits appends, like "-" does. Such a change, and one
whose index has leading zeros, is recorded under the index that the element
got, so that undo finds it. A continuous push to an element that the current
step created sets the element, and one to an index that the current step
removed an element from is a change of its own, as it's another element that
is there now.

@section ChangeManager-cost Cost

A push, undo or redo costs the same in a small and a large document and with
any length of history. What doesn't: erasing from a large object or array moves
what follows. The first members that are created in a large object search it to
be sure that they are new, until the index of its names is believed; again so
after @ref ProjectFile::document was edited directly in that object. See
@ref EditScope for the one kind of direct edit that has to be told.

Values are copied into the document's memory pool, which frees nothing before
the document is closed.
*/
class ORRELIN_LOCALIZATION_EXPORT ChangeManager {
public:
    /**
     * @brief Manager of no project
     *
     * @ref reset() has to attach one before anything is pushed.
     */
    explicit ChangeManager();

    /** @brief Manager of the document of @p project, which it refers to */
    explicit ChangeManager(ProjectFile& project);

    ChangeManager(const ChangeManager&) = delete;
    ChangeManager(ChangeManager&&) = delete;
    ~ChangeManager();
    ChangeManager& operator=(const ChangeManager&) = delete;
    ChangeManager& operator=(ChangeManager&&) = delete;

    /**
     * @brief Attach a project, forget the history and all handlers
     *
     * An open group stays open, and the save mark and a forced new change
     * stay as they are: call @ref markSave() for a project that was just
     * opened.
     */
    void reset(ProjectFile& project);

    /** @brief Memory pool of the project document */
    JsonAllocator& allocator();

    /** @brief Open a group; what is pushed from now on is one undo step */
    void beginGroup() {
        expectNotInHandler("beginGroup(): Can't begin a group");
        _currentGroup = ++_groupCounter;
    }

    /**
     * @brief Close the open group and tell the handlers of its changes
     *
     * Oldest first. With no group open, the changes on top of the history that
     * belong to no group are told again.
     */
    void commit();

    /** @brief Make the next push a change of its own, even a continuous one */
    void forceNewContinuousChange() { _forceNewChange = true; }

    /**
     * @brief Change a value
     * @param path          JSON Pointer of the value
     * @param value         The new value, copied; @cpp nullptr @ce removes
     * @param continuous    Whether to update an earlier change of the same
     *      path, see @ref ChangeManager-steps
     *
     * Drops what could be redone, unless an earlier change is updated. Expects
     * that @p path is a JSON Pointer, thus empty or with a "/" in front; prints
     * that it isn't and aborts when it would have to create a value there.
     */
    void pushChange(
        Containers::String&& path, const JsonValue* value, bool continuous);

    /** @overload */
    void pushChange(
        Containers::StringView path, const JsonValue& value, bool continuous);

    /** @brief Change a value to a string */
    void pushChange(Containers::StringView path, Containers::StringView value,
        bool continuous);

    /** @brief Change a value to an array of three numbers */
    void pushChange(Containers::StringView path,
        const Magnum::Math::Vector3<float>& value, bool continuous);

    /** @brief Change a value to an array of four numbers, the scalar last */
    void pushChange(Containers::StringView path,
        const Magnum::Math::Quaternion<float>& value, bool continuous);

    /**
     * @brief Change the translation, rotation and scaling of a record
     *
     * Decomposes the matrix and pushes its parts to "/translation",
     * "/rotation" and "/scaling" below @p path, in this order: three undo
     * steps, unless a group is open. A mirroring matrix has a negative x
     * scaling. A column of zero length has scaling 0 and doesn't count for
     * the rotation, which is valid in any case: identity if the matrix leaves
     * it open.
     */
    void pushTransformChange(Containers::StringView path,
        const Magnum::Math::Matrix4<float>& value, bool continuous);

    /**
     * @brief Append a string to an array
     *
     * Records the whole array. What is no array is replaced by an empty one.
     */
    void pushAppend(Containers::StringView path, Containers::StringView value);

    /** @brief Remove a value; one that isn't there is no error */
    void pushRemoval(Containers::StringView path);

    /** @brief The change made last; expects that there is one */
    Change& lastChange();

    /**
     * @brief Perform a change, recording nothing
     *
     * Tells the handlers at once or, if a group is open, never.
     */
    void applyChange(const Change& change);

    /** @brief The change that takes @p change back, outside any group */
    Change reverse(const Change& change);

    /**
     * @brief Apply the reverse of a change and step back in the history
     *
     * Expects that there is something to step back from.
     */
    void undo(const Change& change);

    /**
     * @brief Undo the last step
     *
     * Does nothing if there is none. Expects that no group is open.
     */
    void undoLast();

    /**
     * @brief Redo the step that was undone last
     *
     * Does nothing if there is none. Expects that no group is open.
     */
    void redoLastUndo();

    /** @brief Remember the current state as saved */
    void markSave();

    /** @brief Whether the current state isn't the saved one */
    bool hasUnsavedChanges() const;

    /**
     * @brief Register a handler
     * @param segment   Path segment; the handler is told of all changes with
     *      it in their path, once for each time it occurs there
     * @param handler   The handler, owned by the manager until @ref reset()
     */
    void addChangeHandler(Containers::StringView segment,
        Containers::Pointer<ChangeHandler>&& handler);

    /** @overload */
    void addChangeHandler(Containers::StringView segment,
        FunctionChangeHandler::Callback function, void* userData);

private:
    typedef Containers::Array<Containers::Pointer<ChangeHandler>> HandlerList;
    struct PendingHandler;

    /* What can't be done, after the name of the operation */
    void expectNotInHandler(const char* what) const;

    std::int32_t mergeTarget(Containers::StringView path);
    /* Both return what's at the path of the change, null if nothing is */
    JsonValue* beginChange(Containers::String&& path, const JsonValue* value);
    JsonValue* updateChange(std::int32_t target, const JsonValue* value);
    void perform(const Change& change, JsonValue* current);
    void removeValue(Containers::StringView path);
    void setValue(Containers::StringView path, const JsonValue& value);
    void createValue(Containers::StringView path, const JsonValue& value);
    void insertValue(Containers::StringView path, const JsonValue& value);
    void notify(const Change& change);
    void callHandlers(const Change& change);
    void registerHandler(Containers::StringView segment,
        Containers::Pointer<ChangeHandler>&& handler);

    std::int32_t _lastChange = -1;
    std::int32_t _savedChange = -1;
    std::int32_t _currentGroup = -1;
    std::int32_t _groupCounter = 0;
    bool _forceNewChange = false;
    ProjectFile* _projectFile = nullptr;
    Containers::Array<Change> _changes;
    StaticMap<HandlerList> _handlers;

    Containers::Pointer<MergeIndex> _mergeIndex;
    bool _inHandler = false;
    /* Registered from inside a handler */
    Containers::Array<PendingHandler> _pendingHandlers;
};

}

#endif
