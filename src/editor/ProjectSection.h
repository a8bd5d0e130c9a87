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
     * The name has to be escaped as @ref RecordPath says. The record doesn't
     * have to exist: the accessor looks into the document only when it is read
     * or written.
     */
    ValueAccess operator[](Containers::StringView name) const;

    /**
     * @brief Create the record @p name
     *
     * As an empty object; a record that exists stays as it is. A direct write:
     * it records no change, so it can't be undone. The name has to be escaped
     * as @ref RecordPath says.
     */
    ValueAccess addResource(Containers::StringView name);
};

}

#endif
