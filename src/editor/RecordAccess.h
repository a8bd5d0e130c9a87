#ifndef Orrelin_editor_RecordAccess_h
#define Orrelin_editor_RecordAccess_h

/** @file
 * @brief Class @ref OrrelinEngine::RecordAccess, @ref OrrelinEngine::ValueAccess
 */

#include <Corrade/Containers/String.h>

#include "editor/JsonObject.h"
#include "editor/RecordAccessKeys.h"

namespace OrrelinEngine {

/**
@brief Names a place in the project document

A small value that owns nothing of the document. It looks its place up each time
it is read or written, so it is never out of date, whichever way the document
was edited. The place doesn't have to exist; the accessor has a value as soon as
one is stored there. It must not outlive its @ref ProjectFile.

Reading looks for a value in the document, then in the editor's schema of
project settings, then in the defaults that the host supplied with
@ref ProjectFile::setDefaults().

This costs a look-up per path segment. To find a member costs the same in an
object of any size; to find out that it's absent costs a search of the object.
*/
class RecordAccess: public JsonObject {
public:
    /**
     * @brief Accessor of a place
     * @param file  Project of the document, referenced
     * @param place Record path; empty for the root
     */
    explicit RecordAccess(ProjectFile& file, Containers::String&& place);

    /** @brief An accessor of the same place */
    RecordAccess(const RecordAccess&) = default;

    /** @brief Move constructor */
    RecordAccess(RecordAccess&&) = default;

    ~RecordAccess() override;

    /** @brief Make this an accessor of the same place */
    RecordAccess& operator=(const RecordAccess&) = default;

    /** @brief Move assignment */
    RecordAccess& operator=(RecordAccess&&) = default;

    bool exists() const override;

    ValueAccess subValue(Containers::StringView key) override;

    JsonAllocator& allocator() const override;

    const JsonValue& readValue() const override;

    /**
     * @brief The stored value for writing
     *
     * If the document stores none, creates it as null, with its parents. The
     * reference is valid until the document next changes. Prints and aborts if
     * the value isn't there and @ref path isn't a JSON Pointer.
     */
    JsonValue& writeValue() override;

    ValueAccess subValue(Containers::StringView key) const override;

    /**
     * @brief Accessor of a place below
     * @param key   One segment or several separated by "/", with or without a
     *      leading "/". Names are escaped as @ref RecordPath says; decimal
     *      digits address the element of an array.
     *
     * Never fails, even if there's no such place. The @ref path of the result
     * is this one with "/" and the segments appended.
     */
    ValueAccess operator[](Containers::StringView key) const;

    /** @brief Accessor of an array element */
    ValueAccess operator[](unsigned int index) const;

    /**
     * @brief Member names of the value, in document order
     *
     * Each as a segment of a record path. None if the value isn't an object.
     */
    RecordAccessKeys keys() const;

    /**
     * @brief The value that the document stores
     *
     * @cpp nullptr @ce if it stores none; schema and defaults don't count.
     */
    const JsonValue* readValueNoDefault() const;

    /**
     * @brief Whether the document itself stores a value
     *
     * Unlike for @ref exists(), a value of the schema or the defaults doesn't
     * count.
     */
    bool hasValue() const;

private:
    /* Looks the place up, in the document only if `sources` is 1 and in all
       three sources otherwise */
    const JsonValue* resolve(unsigned int sources) const;

    ProjectFile* _file;
    /* The result of the last look-up in the document, in the schema of project
       settings and in the host's defaults */
    mutable const JsonValue* _stored = nullptr;
    mutable const JsonValue* _schema = nullptr;
    mutable const JsonValue* _default = nullptr;

public:
    /** @brief Record path of the place; empty for the root */
    Containers::String path;
};

/** @brief Accessor that every look-up returns */
class ValueAccess: public RecordAccess {
public:
    using RecordAccess::RecordAccess;
};

}

#endif
