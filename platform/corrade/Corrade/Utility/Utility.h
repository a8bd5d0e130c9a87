#ifndef Corrade_Utility_Utility_h
#define Corrade_Utility_Utility_h

/** @file
 * @brief Forward declarations for the @ref Corrade::Utility namespace
 */

#include "Corrade/Containers/Containers.h"

namespace Corrade { namespace Utility {

template<std::size_t> class HashDigest;

class Debug;
class Warning;
class Error;

class Json;
class JsonArrayItem;
class JsonArrayIterator;
class JsonArrayView;
class JsonIterator;
class JsonObjectItem;
class JsonObjectIterator;
class JsonObjectView;
class JsonToken;
class JsonTokenData;
class JsonWriter;

class MurmurHash2;

}}

#endif
