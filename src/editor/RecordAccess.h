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

A small value object that owns nothing of the document. It resolves its place
each time it is read or written, so it is never out of date, whichever way the
document was edited; an accessor of a place that doesn't exist yet starts to
have a value when something is stored there. It has to be gone before its
@ref ProjectFile is.

A value is looked for in the document, then in the editor's schema of project
settings, then in what the host supplied with @ref ProjectFile::setDefaults().

Resolving costs a look-up per path segment. Members that are there are found at
a cost that doesn't depend on the size of their object; to find out that one is
absent costs a search of it.
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
     * Created as null if the document stores none, together with the parents
     * it needs. The reference is valid until the document next changes.
     */
    JsonValue& writeValue() override;

    ValueAccess subValue(Containers::StringView key) const override;

    /**
     * @brief Accessor of a place below
     * @param key   One segment or several separated by "/", with or without a
     *      leading "/". Names are escaped as @ref RecordPath says; decimal
     *      digits address the element of an array.
     *
     * Never fails. The accessor's @ref path is this one's with "/" and the
     * segments appended.
     */
    ValueAccess operator[](Containers::StringView key) const;

    /** @brief Accessor of an array element */
    ValueAccess operator[](unsigned int index) const;

    /**
     * @brief Member names of the value, in document order
     *
     * Each as a segment of a record path. None if the value is no object.
     */
    RecordAccessKeys keys() const;

    /**
     * @brief The value that the document stores
     *
     * @cpp nullptr @ce if it stores none; no other source is asked.
     */
    const JsonValue* readValueNoDefault() const;

    /**
     * @brief Whether the document itself stores a value
     *
     * Unlike @ref exists(), a value of another source doesn't count.
     */
    bool hasValue() const;

private:
    /* Looks the place up anew, in the given number of sources at most */
    const JsonValue* resolve(unsigned int sources) const;

    ProjectFile* _file;
    /* As last resolved: in the document, in the schema of project settings,
       in the host's defaults */
    mutable const JsonValue* _stored = nullptr;
    mutable const JsonValue* _schema = nullptr;
    mutable const JsonValue* _default = nullptr;

public:
    /** @brief Record path of the place; empty for the root */
    Containers::String path;
};

/** @brief What every look-up returns */
class ValueAccess: public RecordAccess {
public:
    using RecordAccess::RecordAccess;
};

}

#endif
