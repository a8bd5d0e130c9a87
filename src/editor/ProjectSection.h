#ifndef Orrelin_editor_ProjectSection_h
#define Orrelin_editor_ProjectSection_h

/** @file
 * @brief Class @ref OrrelinEngine::ProjectSection
 */

#include "editor/RecordAccess.h"

namespace OrrelinEngine {

/**
@brief A top-level section of the project document

An object of records: "objects", "languages" and the like.
*/
class ProjectSection: public RecordAccess {
public:
    /** @brief Accessor of the section @p name of @p file */
    explicit ProjectSection(ProjectFile& file, Containers::StringView name);

    /**
     * @brief Accessor of the record @p name
     *
     * The name is escaped as @ref RecordPath says. The record doesn't have to
     * exist; what is looked up below the accessor is resolved against the
     * document at that time.
     */
    ValueAccess operator[](Containers::StringView name) const;

    /**
     * @brief Create the record @p name
     *
     * An empty object; a record that is there already is left as it is. A
     * direct write: no change is recorded, nothing to undo.
     */
    ValueAccess addResource(Containers::StringView name);
};

}

#endif
