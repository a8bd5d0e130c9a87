#ifndef Orrelin_session_EditorSession_h
#define Orrelin_session_EditorSession_h

/** @file
 * @brief Class @ref OrrelinEngine::EditorSession
 */

#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/Pointer.h>
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
     * Its folder becomes the project root. If the file can't be read, isn't
     * JSON, nests more than @ref MaxDepth levels or has a root that is no
     * object, prints one line that tells what is wrong where, returns
     * @cpp false @ce and keeps the project that is open.
     */
    bool open(Containers::StringView file);

    /**
     * @brief Open a project from text
     *
     * Like @ref open(), but keeps the project root.
     */
    bool parse(Containers::StringView json);

    /**
     * @brief Save the project
     *
     * Writes the document as indented JSON and marks it as saved in the
     * @ref changeManager(). The file is replaced as a whole at the end: on a
     * failure, and at any moment that the process is stopped, it is either the
     * old or the new one. A failure is printed and returned as
     * @cpp false @ce. Through a symbolic link, what it points to is replaced.
     *
     * Fails without touching the file if the document couldn't be opened
     * again: if it nests more than @ref MaxDepth levels or its root is no
     * object.
     *
     * A number that isn't finite can't be told in JSON; it is written as null,
     * with a warning.
     */
    bool save(Containers::StringView file);

    /** @brief What the tools are given */
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
    bool load(Containers::StringView json, Containers::StringView name);

    struct State;
    Containers::Pointer<State> _state;
};

}

#endif
