#ifndef Corrade_Utility_Utility_h
#define Corrade_Utility_Utility_h

/** @file
 * @brief Forward declarations for the @ref Corrade::Utility namespace
 */

#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Utility {

class Debug;
class Warning;
class Error;

class Json;
class JsonIterator;
class JsonObjectItem;
class JsonObjectIterator;
class JsonObjectView;
class JsonToken;
class JsonWriter;

class MurmurHash2;

}}

#endif
