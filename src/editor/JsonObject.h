#ifndef Orrelin_editor_JsonObject_h
#define Orrelin_editor_JsonObject_h

/** @file
 * @brief Class @ref OrrelinEngine::JsonObject
 */

#include <cstddef>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief Typed reading and writing of a JSON value

A subclass finds the value, in the document or elsewhere.
*/
class JsonObject {
public:
    virtual ~JsonObject();

    /** @brief Whether there is a value from any source */
    virtual bool exists() const = 0;

    /** @brief Accessor of a place below, for writing */
    virtual ValueAccess subValue(Containers::StringView key) = 0;

    /** @brief Allocator of the values' contents */
    virtual JsonAllocator& allocator() const = 0;

    /** @brief The value, a null value if there is none */
    virtual const JsonValue& readValue() const = 0;

    /** @brief The value for writing, created if there is none */
    virtual JsonValue& writeValue() = 0;

    /** @brief Accessor of a place below, for reading */
    virtual ValueAccess subValue(Containers::StringView key) const = 0;

    /**
     * @brief The value as a string
     *
     * A view into the document, valid until that next changes. Empty if there
     * is no value or if it isn't a string.
     */
    Containers::StringView asString() const;

    /**
     * @brief The value as a boolean
     *
     * False if there is no value or if it isn't a boolean.
     */
    bool asBool() const;

    /**
     * @brief Store a string
     *
     * Copies @p string into the document and replaces the value there or
     * creates it. A direct write: it records no change, so it can't be undone.
     * Expects that @p string has fewer than 4294967295 bytes, one less than
     * 4 GiB; prints its size and aborts otherwise.
     */
    void setString(Containers::StringView string);

    /** @brief Number of elements of an array or members of an object, else 0 */
    std::size_t size() const;

protected:
    explicit JsonObject() = default;

    /** @brief Only subclasses are copied */
    JsonObject(const JsonObject&) = default;

    /** @brief Only subclasses are moved */
    JsonObject(JsonObject&&) = default;

    /** @brief Only subclasses are copied */
    JsonObject& operator=(const JsonObject&) = default;

    /** @brief Only subclasses are moved */
    JsonObject& operator=(JsonObject&&) = default;
};

}

#endif
