#ifndef Orrelin_editor_OrrelinEditor_h
#define Orrelin_editor_OrrelinEditor_h

/** @file
 * @brief Struct @ref OrrelinEngine::OrrelinEditor
 */

#include "editor/ProjectSection.h"

namespace OrrelinEngine {

/**
@brief The editor as its tools see it

Refers to objects that the editor owns. Tools use them during a call only.
*/
struct OrrelinEditor {
    /** @brief Root directory of the project */
    Containers::String* projectRoot;

    /** @brief Scenes of the project */
    EditorSceneData* sceneData;

    /** @brief Terms and translations */
    LocalizationData* localization;

    /** @brief Root of the project document */
    RecordAccess project;

    /** @brief The section "objects", keyed by object id */
    ProjectSection objectsSection;

    /** @brief The section "languages", keyed by language code */
    ProjectSection languagesSection;

    /** @brief History of all undoable edits */
    ChangeManager* changeManager;
};

}

#endif
