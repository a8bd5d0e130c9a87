#ifndef Orrelin_OrrelinEngine_h
#define Orrelin_OrrelinEngine_h

/** @file
 * @brief Forward declarations and aliases of the namespace `OrrelinEngine`
 */

#include <Corrade/Containers/Containers.h>
#include <rapidjson/fwd.h>

namespace Corrade { namespace Utility {
}}

/** @brief The editor, its engine and its tools */
namespace OrrelinEngine {

namespace Containers = Corrade::Containers;
namespace Utility = Corrade::Utility;

/** @brief Memory pool in which the project document keeps its contents */
typedef rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator> JsonAllocator;
/** @brief A value of the project document */
typedef rapidjson::GenericValue<rapidjson::UTF8<char>, JsonAllocator> JsonValue;
/** @brief The project document */
typedef rapidjson::GenericDocument<rapidjson::UTF8<char>, JsonAllocator,
    rapidjson::CrtAllocator>
    JsonDocument;

class Change;
class ChangeHandler;
class ChangeManager;
class DocumentEdits;
class DocumentIndex;
class EditorSceneData;
class EditorSession;
class ExclusiveEdits;
class FunctionChangeHandler;
class JsonObject;
class MergeIndex;
class ProjectFile;
class ProjectSection;
class RecordAccess;
class RecordAccessKeys;
class Result;
class MutableStringArrayView;
class StringArray;
class StringArrayView;
class ValueAccess;
template<class> class Function;
template<class> class StaticMap;

struct Language;
struct LocalizationData;
struct OrrelinEditor;

}

#endif
