#ifndef Orrelin_ChangeManager_h
#define Orrelin_ChangeManager_h

/** @file
 * @brief Class @ref OrrelinEngine::ChangeManager, @ref OrrelinEngine::Change, @ref OrrelinEngine::ChangeHandler, @ref OrrelinEngine::FunctionChangeHandler, @ref OrrelinEngine::ExclusiveEdits
 */

#include <cstddef>
#include <cstdint>
#include <exception>
#include <type_traits>
#include <utility>
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

struct DocumentPlace;

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
     * A handler may read the document and register further handlers, which are
     * called from the next notification on. It must not edit the document,
     * directly or by calling the manager, nor remove handlers or destroy the
     * manager: the manager prints what it can't do and aborts.
     *
     * If it throws, the call that notified it goes on to its end first: the
     * whole step is performed, and all other handlers are told. Then the first
     * exception comes out of that call.
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

A path or value may be a view into the document, the history or the memory pool.

@section ChangeManager-cost Cost

To change, find or remove a value that's there costs the same in a small and a
large document and with any length of history; erasing from a large object or
array also moves what follows. To create a member costs a search of its object,
to be sure that it's new: about a quarter of a millisecond in 100,000 members.
@ref ExclusiveEdits spares that for all but the first few. A step that creates many members, on undo or
redo, searches each object a few times at most.

@ref ProjectFile::document may be edited directly between any two calls, in any
way. Nothing has to be told: the result of a call is that of a search of every
object from its first member on. Just of members with the same name, which JSON
allows, it may be another than the first if a direct edit put that in front.

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
     *
     * For numbers and booleans there are @ref pushNumber() and @ref pushBool().
     * Given here they don't compile, nor does @cpp {} @ce, as a 0 and that
     * would pass for a null pointer and remove the value.
     */
    void pushChange(
        Containers::String&& path, const JsonValue* value, bool continuous);

    /** @brief Remove a value, like @ref pushRemoval() but continuously if wanted */
    void pushChange(
        Containers::String&& path, std::nullptr_t, bool continuous) {
        pushChange(std::move(path), static_cast<const JsonValue*>(nullptr),
            continuous);
    }

    /** @overload */
    template<class Path>
    void pushChange(const Path& path, std::nullptr_t, bool continuous) {
        pushChange(Containers::String{path}, nullptr, continuous);
    }

    /** @brief Numbers and booleans have pushes of their own */
    template<class Path, class T,
        class = typename std::enable_if<std::is_arithmetic<T>::value>::type>
    void pushChange(const Path& path, T value, bool continuous) = delete;

    /** @brief Keeps @cpp {} @ce from being taken for one of the others */
    template<class Path>
    void pushChange(const Path& path, int value, bool continuous) = delete;

    /** @overload */
    void pushChange(
        Containers::StringView path, const JsonValue& value, bool continuous);

    /**
     * @brief Change a value to a string
     *
     * Expects that it's shorter than 4 GiB.
     */
    void pushChange(Containers::StringView path, Containers::StringView value,
        bool continuous);

    /**
     * @brief Change a value to a number
     *
     * An integer stays one, @cpp float @ce becomes the @cpp double @ce of the
     * same value.
     */
    template<class T>
    void pushNumber(Containers::StringView path, T value, bool continuous) {
        static_assert(
            std::is_arithmetic<T>::value && !std::is_same<T, bool>::value,
            "not a number");
        typedef
            typename std::conditional<std::is_floating_point<T>::value, double,
                typename std::conditional<std::is_signed<T>::value,
                    std::int64_t, std::uint64_t>::type>::type Number;
        pushChange(path, JsonValue{Number(value)}, continuous);
    }

    /** @brief Change a value to a boolean */
    template<class T>
    void pushBool(Containers::StringView path, T value, bool continuous) {
        static_assert(std::is_same<T, bool>::value, "not a boolean");
        pushChange(path, JsonValue{value}, continuous);
    }

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

    /**
     * @brief The change made last
     *
     * Valid until the next call that isn't @cpp const @ce. It may be written to
     * until then: what a later push merges into, and what undo does, follows
     * what stands there. Expects that there is one.
     */
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

    /**
     * @brief Whether there is a step to undo
     *
     * Not while a group is open. Inside a handler this and all that follows
     * tells of the document as it is then, in the midst of a step maybe.
     */
    bool canUndo() const;

    /** @brief Whether there is a step to redo; not while a group is open */
    bool canRedo() const;

    /**
     * @brief What the next undo takes back
     *
     * The changes of one step, oldest first; none if it can't be undone now.
     * The view is valid until the next call that isn't @cpp const @ce. Linear
     * in the size of the step.
     */
    Containers::ArrayView<const Change> nextUndo() const;

    /** @brief What the next redo makes again, like @ref nextUndo() */
    Containers::ArrayView<const Change> nextRedo() const;

    /**
     * @brief All steps of the history
     *
     * Oldest first, each with its changes, of which there's at least one; those
     * that can be redone come last. A group that is open is a step as far as it
     * goes. The views are valid until the next call that isn't @cpp const @ce.
     * Linear in the size of the history, as are @ref currentStep(),
     * @ref savedStep() and @ref goToStep().
     */
    Containers::Array<Containers::ArrayView<const Change>> steps() const;

    /** @brief How many of @ref steps() are made and not undone */
    std::int32_t currentStep() const;

    /**
     * @brief How many of @ref steps() are made in the saved state
     *
     * 0 if that is the one before all of them, which is also what a manager
     * starts with and what it falls back to when the history of the saved state
     * is dropped; -1 if it is none of them: in the midst of a step, or beyond
     * the end after it was undone and something else was done.
     */
    std::int32_t savedStep() const;

    /**
     * @brief Undo or redo until given number of steps is made
     *
     * Handlers are told as by so many calls of @ref undoLast() or
     * @ref redoLastUndo(). Expects that there are so many steps and that no
     * group is open.
     */
    void goToStep(std::int32_t count);

    /** @brief Remember the current state as saved */
    void markSave();

    /** @brief Whether the current state isn't the saved one */
    bool hasUnsavedChanges() const;

    /**
     * @brief Register a handler
     * @param segment   Path segment; the handler is told of all changes with
     *      it in their path, once for each time it occurs there
     * @param handler   The handler, owned by the manager until @ref reset() or
     *      @ref removeChangeHandler()
     */
    void addChangeHandler(Containers::StringView segment,
        Containers::Pointer<ChangeHandler>&& handler);

    /** @overload */
    void addChangeHandler(Containers::StringView segment,
        FunctionChangeHandler::Callback function, void* userData);

    /**
     * @brief Take a handler back
     * @param segment   Path segment that it was registered for
     * @param handler   The handler; for other segments it stays registered
     *
     * Gives it to the caller, or @cpp nullptr @ce if there's no such one. Not
     * allowed inside a handler.
     */
    Containers::Pointer<ChangeHandler> removeChangeHandler(
        Containers::StringView segment, const ChangeHandler& handler);

private:
    friend class ExclusiveEdits;

    typedef Containers::Array<Containers::Pointer<ChangeHandler>> HandlerList;
    struct PendingHandler {
        Containers::String segment;
        Containers::Pointer<ChangeHandler> handler;
    };

    /* What can't be done, after the name of the operation */
    void expectNotInHandler(const char* what) const;
    void expectCanStep(const char* operation) const;

    Change& last();
    void push(
        Containers::StringView path, const JsonValue* value, bool continuous);
    std::int32_t mergeTarget(
        Containers::StringView path, const DocumentPlace& place);
    void recordChange(Containers::String&& path, const JsonValue* oldValue,
        const JsonValue* value);
    void updateChange(std::int32_t target, const JsonValue* value);
    void apply(const Change& change);

    void undoChange(const Change& change);
    std::int32_t position() const;
    /* Until the given change is the last one */
    void goTo(std::int32_t change);
    std::int32_t stepBegin(std::int32_t lastOfStep) const;
    std::int32_t stepEnd(std::int32_t firstOfStep) const;
    std::int32_t stepOf(std::int32_t change) const;
    Containers::ArrayView<const Change> changes(
        std::int32_t begin, std::int32_t end) const;

    void notify(const Change& change);
    void callHandler(ChangeHandler& handler, const Change& change,
        Containers::ArrayView<Containers::StringView> segments);
    void rethrow();
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

    Containers::Pointer<DocumentEdits> _edits;
    Containers::Pointer<MergeIndex> _mergeIndex;
    bool _inHandler = false;
    bool _undoing = false;
    /* Registered from inside a handler */
    Containers::Array<PendingHandler> _pendingHandlers;
    /* By a handler, to come out at the end of the call */
    std::exception_ptr _thrown;
};

/**
@brief Promise that the document is edited through one manager only

For who creates thousands of members, as in

@code{.cpp}
const ExclusiveEdits promise{changes};
for(const Copy& copy: clipboard)
    changes.pushChange(copy.path, copy.record, false);
@endcode

While an instance exists, the document must not be edited directly, by accessors
or with another manager; reading it in any way is fine. Creating a member then
costs the same in an object of any size, after a few that are searched for and an
index of its names. Breaking the promise can have a member created
that is there already.

Instances nest. The manager has to exist for as long as they do.
*/
class ORRELIN_LOCALIZATION_EXPORT ExclusiveEdits {
public:
    /** @brief Begin to promise */
    explicit ExclusiveEdits(ChangeManager& manager);

    ExclusiveEdits(const ExclusiveEdits&) = delete;
    ~ExclusiveEdits();
    ExclusiveEdits& operator=(const ExclusiveEdits&) = delete;

private:
    ChangeManager& _manager;
};

}

#endif
