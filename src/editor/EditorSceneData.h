#ifndef Orrelin_editor_EditorSceneData_h
#define Orrelin_editor_EditorSceneData_h

/** @file
 * @brief Class @ref OrrelinEngine::EditorSceneData, struct @ref OrrelinEngine::Scene
 */

#include "editor/JavaScriptManager.h"

namespace OrrelinEngine {

/** @brief A scene of the project */
struct Scene {
    /** @brief The script component types that the scene can use */
    Data::JavaScriptManager<unsigned short> javaScriptManager;
};

/** @brief Scenes of the open project */
class EditorSceneData {
public:
    /** @brief The main scene; it exists while a project is open */
    Scene& main() { return _main; }

private:
    Scene _main;
};

}

#endif
