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

A creation without an @ref oldValue, a removal with an @ref oldValue and without
a @ref newValue, a modification with both.

The contents of the values are in the memory pool of the project document, so
a change must not outlive it.
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

Prints its kind, the path and both values, as in `Change /a/b: 1 -> 2`,
`Create /a/b: () -> 2`, `Remove /a/b: 1 -> ()`.
*/
ORRELIN_LOCALIZATION_EXPORT Utility::Debug& operator<<(
    Utility::Debug& debug, const Change& change);

/** @brief Interface that the manager calls after each change */
class ORRELIN_LOCALIZATION_EXPORT ChangeHandler {
public:
    /**
     * @brief Called after a change was made
     * @param change    The change. On undo, the reverse of the recorded one.
     * @param path      Segments of its path, split at each "/" with empty
     *      ones kept, valid only during the call
     *
     * A handler may read the document and register further handlers, which are
     * called from the next change on. It must not edit the document, remove
     * handlers or destroy the manager. If it does so by calling the manager,
     * that prints a line which names the call and aborts.
     *
     * If a handler throws, the step is still performed to its end and all other
     * handlers are called. Then the call that made the step throws the first of
     * the exceptions.
     */
    virtual void handle(const Change& change,
        Containers::ArrayView<Containers::StringView> path) = 0;

    virtual ~ChangeHandler();
};

/** @brief Change handler that calls a function */
class ORRELIN_LOCALIZATION_EXPORT FunctionChangeHandler: public ChangeHandler {
public:
    /** @brief The function to call, with the user pointer as last argument */
    typedef Function<void(
        const Change&, Containers::ArrayView<Containers::StringView>, void*)>
        Callback;

    /**
     * @brief Constructor
     * @param function  Called for each change; not empty
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

@ref pushChange() and its relatives make every edit: they record the value at
a JSON Pointer before and after, perform the edit at once and call the handlers
registered for a segment of the path.

@section ChangeManager-steps Undo steps

A change pushed on its own is one undo step. Changes pushed between
@ref beginGroup() and @ref commit() are one step together, and commit calls
their handlers. Groups don't nest. Beginning one while another is open ends the
other: its changes stay a step of their own, but no commit calls their handlers.

A *continuous* push, for a value that is dragged, updates an earlier change
instead of adding one: the newest change of the same path in the open group or,
with none open, since the last group. If there is no such change, it adds one.
The updated change becomes the last one. The first change of the history is
never updated. After saving, @ref forceNewContinuousChange() keeps a drag that
goes on from being merged into a saved change.

@section ChangeManager-paths Paths and arrays

A push creates missing parents of its value. A removal also removes containers
that it leaves empty, except for those at the top level of the document. Undoing
a creation is a removal, so it also removes parents that were empty before.

A value pushed to an index that an array has replaces the element there. Undo
of a removal inserts the element where it was. A value pushed beyond the end of
an array fills it up with nulls, which stay on undo. An index that is negative
or doesn't fit a signed 32-bit integer appends, and so does "-". Such a change,
and one whose index has leading zeros, is recorded under the index that the
element got, so that undo finds it.

A continuous push to an element that the current step created sets that element.
A continuous push to an index from which the current step removed an element is
a change of its own, since the index now stands for another element.

A path or value may be a view into the document, the history or the memory pool.

@section ChangeManager-cost Cost

To find, change or remove a value costs the same in a document and a history of
any size, but erasing from an object or array also moves the members or elements
behind. To create a member costs a search of its object, to be sure that it's
new: about a quarter of a millisecond in 100,000 members. @ref ExclusiveEdits
spares that for all but the first few. Undo and redo of a step that creates many
members search each object a few times at most.

@ref ProjectFile::document may be edited directly between any two calls, in any
way, without telling the manager. Calls find the same as a search of each object
from its first member on, with one exception: of members with the same name,
which JSON allows, they may find another than the first if a direct edit put
that in front.

Values are copied into the document's memory pool, which frees nothing before
the document is closed.
*/
class ORRELIN_LOCALIZATION_EXPORT ChangeManager {
public:
    /**
     * @brief Manager of no project
     *
     * Attach one with @ref reset() before anything is pushed; pushes without
     * a project print the failed condition and abort.
     */
    explicit ChangeManager();

    /**
     * @brief Manager of the document of a project
     * @param project   The project, referenced; it has to stay for as long as
     *      the manager or until @ref reset()
     */
    explicit ChangeManager(ProjectFile& project);

    ChangeManager(const ChangeManager&) = delete;
    ChangeManager(ChangeManager&&) = delete;
    ~ChangeManager();
    ChangeManager& operator=(const ChangeManager&) = delete;
    ChangeManager& operator=(ChangeManager&&) = delete;

    /**
     * @brief Attach a project, forget the history and all handlers
     * @param project   The project, referenced
     *
     * An open group stays open. The save mark and a forced new change stay as
     * well, so call @ref markSave() for a project that was just opened. Prints
     * and aborts inside a handler.
     */
    void reset(ProjectFile& project);

    /** @brief Memory pool of the project document */
    JsonAllocator& allocator();

    /**
     * @brief Open a group
     *
     * All pushes up to @ref commit() are one undo step. Prints and aborts
     * inside a handler.
     */
    void beginGroup() {
        expectNotInHandler("beginGroup(): Can't begin a group");
        _currentGroup = ++_groupCounter;
    }

    /**
     * @brief Close the open group and call the handlers for its changes
     *
     * Oldest first. With no group open, calls them again for the changes on top
     * of the history that belong to no group. Prints and aborts inside a
     * handler.
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
     * Drops all steps that could be redone, unless an earlier change is
     * updated. Expects that @p path is a JSON Pointer, thus empty or with a "/"
     * in front. Prints and aborts if it isn't and a value would have to be
     * created there, if an element of something that is neither an array nor an
     * object would be, such as `/sign/0` with a text in `/sign`, and inside
     * a handler.
     *
     * For numbers and booleans, use @ref pushNumber() and @ref pushBool(). Here
     * they don't compile, and neither does @cpp {} @ce: 0 and @cpp {} @ce would
     * pass for a null pointer and remove the value.
     */
    void pushChange(
        Containers::String&& path, const JsonValue* value, bool continuous);

    /** @brief Remove a value; unlike @ref pushRemoval() it can merge */
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

    /** @brief Keeps @cpp {} @ce from passing for a null pointer */
    template<class Path>
    void pushChange(const Path& path, int value, bool continuous) = delete;

    /** @overload */
    void pushChange(
        Containers::StringView path, const JsonValue& value, bool continuous);

    /**
     * @brief Change a value to a string
     *
     * Expects that @p value has fewer than 4294967295 bytes, one less than
     * 4 GiB; prints its size and aborts otherwise.
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
     * steps, unless a group is open. Shear is lost. A mirroring matrix gives
     * a negative x scaling. A column of zero length has scaling 0 and doesn't
     * count for the rotation. The rotation is always valid: it's the identity
     * if the matrix doesn't determine one.
     */
    void pushTransformChange(Containers::StringView path,
        const Magnum::Math::Matrix4<float>& value, bool continuous);

    /**
     * @brief Append a string to an array
     *
     * Records the whole array before and after, so it costs the array's size.
     * A value of another kind is replaced by an array of this string. Expects
     * a string as small as the one above.
     */
    void pushAppend(Containers::StringView path, Containers::StringView value);

    /** @brief Remove a value; recorded even if it isn't there */
    void pushRemoval(Containers::StringView path);

    /**
     * @brief The change made last
     *
     * Valid until the next call that isn't @cpp const @ce. Until then it may be
     * written to: later pushes merge by the path, and undo applies the values,
     * that are there then. Expects that there is a change made; prints the
     * failed condition and aborts otherwise.
     */
    Change& lastChange();

    /**
     * @brief Perform a change without recording it
     *
     * Calls the handlers at once or, if a group is open, never.
     */
    void applyChange(const Change& change);

    /**
     * @brief The change that takes @p change back, outside any group
     *
     * Copies both values.
     */
    Change reverse(const Change& change);

    /**
     * @brief Apply the reverse of a change and step back by one change
     *
     * By just one, also in the midst of a group. Prints and aborts if no change
     * is made and not undone, and inside a handler.
     */
    void undo(const Change& change);

    /**
     * @brief Undo the last step
     *
     * Does nothing if there is none. Prints and aborts if a group is open and
     * inside a handler.
     */
    void undoLast();

    /**
     * @brief Redo the step that was undone last
     *
     * Does nothing if there is none. Prints and aborts if a group is open and
     * inside a handler.
     */
    void redoLastUndo();

    /**
     * @brief Whether there is a step to undo
     *
     * False while a group is open. Inside a handler, this and the queries below
     * describe the document as it is at that moment, maybe in the midst of
     * a step.
     */
    bool canUndo() const;

    /** @brief Whether there is a step to redo; false while a group is open */
    bool canRedo() const;

    /**
     * @brief Changes that the next undo takes back
     *
     * Those of one step, oldest first; none unless @ref canUndo(). The view is
     * valid until the next call that isn't @cpp const @ce. Linear in the size
     * of the step.
     */
    Containers::ArrayView<const Change> nextUndo() const;

    /** @brief Changes that the next redo makes again, like @ref nextUndo() */
    Containers::ArrayView<const Change> nextRedo() const;

    /**
     * @brief All steps of the history
     *
     * Oldest first, each with one change or more; steps that can be redone come
     * last. The changes of an open group count as a step already. The views are
     * valid until the next call that isn't @cpp const @ce. Linear in the size
     * of the history, as are @ref currentStep(), @ref savedStep() and
     * @ref goToStep().
     */
    Containers::Array<Containers::ArrayView<const Change>> steps() const;

    /** @brief How many of @ref steps() are made and not undone */
    std::int32_t currentStep() const;

    /**
     * @brief How many of @ref steps() are made in the saved state
     *
     * 0 if the state before all steps was saved. A new manager begins with that
     * and returns to it when a push takes the place of the change that led to
     * the saved state. -1 if the saved state isn't at the end of a step: it is
     * in the midst of one or, after undo and another push, beyond the last one.
     */
    std::int32_t savedStep() const;

    /**
     * @brief Undo or redo until the given number of steps is made
     *
     * Calls the handlers like as many calls of @ref undoLast() or
     * @ref redoLastUndo(). Prints and aborts if there are fewer steps, if a
     * group is open and inside a handler.
     */
    void goToStep(std::int32_t count);

    /** @brief Remember the current state as saved */
    void markSave();

    /**
     * @brief Whether the current state isn't the saved one
     *
     * Compares positions in the history, so a push that updates the change
     * which was last on saving doesn't count.
     */
    bool hasUnsavedChanges() const;

    /**
     * @brief Register a handler
     * @param segment   Path segment, not empty. The handler is called for all
     *      changes with it in their path, once for each time it occurs there.
     * @param handler   The handler, not null, owned by the manager until
     *      @ref reset() or @ref removeChangeHandler()
     *
     * Handlers of a segment are called in the order in which they were
     * registered. Inside a handler, the new one waits for the next change.
     */
    void addChangeHandler(Containers::StringView segment,
        Containers::Pointer<ChangeHandler>&& handler);

    /** @overload */
    void addChangeHandler(Containers::StringView segment,
        FunctionChangeHandler::Callback function, void* userData);

    /**
     * @brief Take a handler back
     * @param segment   Path segment that it was registered for
     * @param handler   The handler
     *
     * Returns the handler, which the caller owns from then on, or
     * @cpp nullptr @ce if it isn't registered for the segment. Prints and
     * aborts inside a handler.
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

    /* Aborts with "ChangeManager::<what> from a change handler." */
    void expectNotInHandler(const char* what) const;
    void expectCanStep(const char* operation) const;

    /* The change at _lastChange, which has to be there */
    Change& last();
    /* Record and perform. Handlers' exceptions wait for rethrow(). */
    void push(
        Containers::StringView path, const JsonValue* value, bool continuous);
    /* The change that a continuous push merges into, -1 for none */
    std::int32_t mergeTarget(
        Containers::StringView path, const DocumentPlace& place);
    void recordChange(Containers::String&& path, const JsonValue* oldValue,
        const JsonValue* value);
    void updateChange(std::int32_t target, const JsonValue* value);
    /* Perform and notify, without a record */
    void apply(const Change& change);

    void undoChange(const Change& change);
    std::int32_t position() const;
    /* Undo or redo until the given change is the last one; -1 for none */
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

    /* Position in _changes of the last one that is made, -1 if none is */
    std::int32_t _lastChange = -1;
    /* Where _lastChange was on saving */
    std::int32_t _savedChange = -1;
    /* The open group, -1 if there's none; groups count from 1 */
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
    /* Registered from inside a handler, for after the last one was called */
    Containers::Array<PendingHandler> _pendingHandlers;
    /* First exception of a handler, for the end of the call */
    std::exception_ptr _thrown;
};

/**
@brief Promise that the document is edited through one manager only

Makes creating thousands of members fast, as in

@code{.cpp}
const ExclusiveEdits promise{changes};
for(const Copy& copy: clipboard)
    changes.pushChange(copy.path, copy.record, false);
@endcode

While an instance exists, the document must not be edited directly, by accessors
or with another manager; reading it in any way is fine. After the first few
members of an object, each of which costs a search, creating one costs the same
in an object of any size. If the promise is broken, a member may be created that
is there already.

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
