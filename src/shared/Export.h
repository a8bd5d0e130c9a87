#ifndef Orrelin_shared_Export_h
#define Orrelin_shared_Export_h

/** @file
 * @brief Macro @ref ORRELIN_LOCALIZATION_EXPORT
 */

#include <Corrade/Utility/VisibilityMacros.h>

/**
@brief Marks a class or function that the library exports

Everything without it is hidden.
*/
#ifdef OrrelinEditorToolsLocalization_EXPORTS
#define ORRELIN_LOCALIZATION_EXPORT CORRADE_VISIBILITY_EXPORT
#else
#define ORRELIN_LOCALIZATION_EXPORT CORRADE_VISIBILITY_IMPORT
#endif

#endif
