#ifndef Orrelin_editor_JavaScriptManager_h
#define Orrelin_editor_JavaScriptManager_h

/** @file
 * @brief Class @ref OrrelinEngine::Data::JavaScriptManager
 */

#include <cstdint>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/Pointer.h>

#include "editor/StringArray.h"

namespace OrrelinEngine {

/** @brief The engine's data of scenes */
namespace Data {

/** @brief Type code of a string-valued script parameter */
constexpr unsigned short StringParamType = 16;

/** @brief Parameters of one script component type, in a list of all */
struct ParamRange {
    unsigned short first; /**< @brief Index of the first parameter */
    unsigned short count; /**< @brief Number of parameters */
};

/** @brief Registry of script component types */
template<class> class JavaScriptManager;

/**
@brief Registry of script component types

Types have 16-bit indices. 0xFFFF is never the index of a type; it stands for
a type that isn't registered.
*/
template<> class JavaScriptManager<unsigned short> {
public:
    explicit JavaScriptManager();

    JavaScriptManager(const JavaScriptManager&) = delete;
    JavaScriptManager(JavaScriptManager&&) = delete;
    ~JavaScriptManager();
    JavaScriptManager& operator=(const JavaScriptManager&) = delete;
    JavaScriptManager& operator=(JavaScriptManager&&) = delete;

    /**
     * @brief Register a type
     * @param name          Name of the type
     * @param parameters    Name and type code of each parameter
     *
     * Doesn't replace an earlier type of the same name; a search by name finds
     * that one. Returns @cpp false @ce and registers nothing if indices would
     * run out: there can be at most 65535 types, with 65535 parameters
     * altogether.
     */
    bool addType(Containers::StringView name,
        Containers::ArrayView<
            const Containers::Pair<Containers::StringView, unsigned short>>
            parameters);

    /**
     * @brief Names of the parameters of a type
     *
     * In the same order as their codes in @ref paramTypes. The characters
     * belong to the registry and stay until a type is added. Expects that
     * @p type is less than @ref paramRangeCount; prints both and aborts
     * otherwise.
     */
    StringArrayView paramNames(unsigned short type) const;

private:
    struct State;
    /* Declared before the public members, which refer to it */
    Containers::Pointer<State> _state;

public:
    const std::uint32_t* typeCount; /**< @brief Number of types */
    StringArrayView typeNames; /**< @brief Name of each type */
    const ParamRange* paramRanges; /**< @brief Parameters of each type */
    std::size_t paramRangeCount; /**< @brief Size of @ref paramRanges */
    const unsigned short* paramTypes; /**< @brief Type codes of parameters */
};

}
}

#endif
