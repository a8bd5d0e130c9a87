#ifndef Orrelin_session_EditorSession_h
#define Orrelin_session_EditorSession_h

/** @file
 * @brief Class @ref OrrelinEngine::EditorSession
 */

#include <Corrade/Containers/Optional.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief A project, open without an editor around it

Owns all that the tools reach through @ref OrrelinEditor and wires it up.
Opening a project leaves a clean history without handlers, empty terms and
translations, and the script component types that were registered.
*/
class EditorSession {
public:
    /** @brief Levels of objects and arrays that a project may nest */
    static constexpr unsigned int MaxDepth = 1000;

    /**
     * @brief A session with an empty project
     * @param projectRoot   Root directory of the project
     */
    explicit EditorSession(Containers::StringView projectRoot = {});

    EditorSession(const EditorSession&) = delete;
    EditorSession(EditorSession&&) = delete;
    ~EditorSession();
    EditorSession& operator=(const EditorSession&) = delete;
    EditorSession& operator=(EditorSession&&) = delete;

    /**
     * @brief Open a project file
     *
     * Its folder becomes the project root. On a failure prints one line with
     * the fault and its place, returns @cpp false @ce and keeps the project
     * that is open. The file has to be
     *
     * -    a regular file of less than 4 GiB that doesn't change while it is
     *      read; nothing waits for a pipe,
     * -    JSON with an object as its root and at most @ref MaxDepth nested
     *      levels,
     * -    UTF-8, with or without a byte order mark and without half of an
     *      escaped surrogate pair,
     * -    without integers that don't fit 64 bits, signed or unsigned, and
     *      without numbers that are too large for a double.
     *
     * So no value changes: an integer is kept exactly, any other number as the
     * double next to it, and "-0" is a double as well.
     */
    bool open(Containers::StringView file);

    /**
     * @brief Open a project file that was read already
     * @param file      Its name, for messages and for the project root
     * @param content   Its bytes, copied unless they end with a null
     *      terminator as those of a @relativeref{Corrade,Containers::String} do
     */
    bool open(Containers::StringView file, Containers::StringView content);

    /**
     * @brief Open a new project from text
     *
     * Like @ref open(), but keeps the project root, and the project is saved
     * with the look of a new one: indented by four spaces.
     */
    bool parse(Containers::StringView json);

    /**
     * @brief Save the project
     *
     * Marks it as saved, see @ref markSaved(). The file is replaced as a whole
     * at the end: on a failure, and at any moment that the process is stopped,
     * it is either the old or the new one. It keeps its permissions and, as
     * far as the user may, its owner and group. If it has these bytes already,
     * it stays untouched. A symbolic link stays, and the file that it points to
     * is replaced. Prints a failure and returns @cpp false @ce, also for a file
     * that is read-only, as version control makes it to lock it.
     *
     * All that didn't change stays as it is in the file that was opened or
     * saved last, byte by byte: layout, spelling of numbers and escapes. The
     * file is read again for that, so it has to be there still. If it can't be
     * read or other programs changed it, fewer bytes stay, but the values are
     * those of the document in any case.
     *
     * New and changed values, or all without such a file, look as the file
     * did: a byte order mark, line ends and what is before and after the root
     * object, indentation or all in one line, spaces after colons, arrays of
     * plain values in one line or several, the form of empty objects and
     * arrays, and whether all but ASCII is escaped. The first place in the file
     * that shows one of these decides for the whole file, but what is added to
     * an object or array in one line stays there. Values don't change, but
     * their spelling may: 1.50 becomes 1.5, 1e3 becomes 1000.0, -0 becomes
     * -0.0, and characters that were escaped without need are written as they
     * are.
     *
     * Fails without touching the file if the document couldn't be opened
     * again: if it nests more than @ref MaxDepth levels, its root isn't an
     * object or a text isn't UTF-8.
     *
     * JSON has no numbers that aren't finite: they are written as null, with
     * a warning.
     */
    bool save(Containers::StringView file);

    /**
     * @brief The text that @ref save() would write
     *
     * For programs that write files in their own way and then call
     * @ref markSaved(). Fails and warns like @ref save().
     */
    Containers::Optional<Containers::String> write();

    /**
     * @brief Remember the current state as saved
     *
     * Sets the save mark of the @ref changeManager() and remembers the
     * languages for @ref hasUnsavedChanges(). The change manager alone doesn't
     * notice added languages.
     */
    void markSaved();

    /**
     * @brief Whether there is something to save
     *
     * Looks at the changes that the @ref changeManager() made, and at the
     * languages and the default language, which
     * @ref LocalizationTools::addLanguage() writes past it. Undoing back to the
     * saved state leaves nothing to save, unless a language was added since.
     * Doesn't notice other direct edits of the document.
     *
     * Takes as long as writing the language records, a few microseconds for
     * each ten.
     */
    bool hasUnsavedChanges() const;

    /** @brief The editor to pass to the tools */
    OrrelinEditor& editor();

    /** @brief The project */
    ProjectFile& projectFile();

    /** @brief History of the project's edits */
    ChangeManager& changeManager();

    /** @brief Terms and translations of the project */
    LocalizationData& localization();

    /**
     * @brief Register a script component type
     * @param name          Name of the type
     * @param parameters    Name and type code of each parameter;
     *      @ref Data::StringParamType is a translatable one
     *
     * If there are too many, prints a line, registers nothing and returns
     * @cpp false @ce.
     */
    bool addScriptType(Containers::StringView name,
        Containers::ArrayView<
            const Containers::Pair<Containers::StringView, unsigned short>>
            parameters);

private:
    Containers::String load(Containers::StringView json, bool keepsLook);

    struct State;
    Containers::Pointer<State> _state;
};

}

#endif
