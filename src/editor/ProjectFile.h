#ifndef Orrelin_editor_ProjectFile_h
#define Orrelin_editor_ProjectFile_h

/** @file
 * @brief Class @ref OrrelinEngine::ProjectFile
 */

#include <Corrade/Containers/Pointer.h>
#include <rapidjson/document.h>

#include "editor/RecordAccess.h"

namespace OrrelinEngine {

/**
@brief The open project

Holds the project document and is the accessor of its root. The document may be
edited through accessors, through the @ref ChangeManager and directly, in any
order.

The members of an object should have different names. JSON allows equal ones:
the first of them counts, or either after a direct edit put another in front.
*/
class ProjectFile: public RecordAccess {
public:
    /** @brief A project with an empty document, an object of no sections */
    explicit ProjectFile();

    ProjectFile(const ProjectFile&) = delete;
    ProjectFile(ProjectFile&&) = delete;
    ~ProjectFile() override;
    ProjectFile& operator=(const ProjectFile&) = delete;
    ProjectFile& operator=(ProjectFile&&) = delete;

    /** @brief Memory pool of the document */
    JsonAllocator& allocator() const override;

    /**
     * @brief Supply defaults for values that the document doesn't store
     * @param defaults  A value with the structure of a project document,
     *      referenced, or @cpp nullptr @ce for none
     *
     * Accessors look there last, after the document and the schema of project
     * settings.
     */
    void setDefaults(const JsonValue* defaults) { _defaults = defaults; }

    /** @brief The project document */
    JsonDocument document;

private:
    friend RecordAccess;

    JsonValue* find(Containers::StringView pointer);
    JsonValue& create(Containers::StringView pointer);

    Containers::Pointer<DocumentIndex> _index;
    const JsonValue* _defaults = nullptr;
};

}

#endif
