#ifndef Orrelin_editor_RecordAccessKeys_h
#define Orrelin_editor_RecordAccessKeys_h

/** @file
 * @brief Class @ref OrrelinEngine::RecordAccessKeys, @ref OrrelinEngine::KeyIterator
 */

#include <cstdint>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Iterator over the member names of a record */
class KeyIterator {
public:
    /** @brief Iterator over @p source, standing at @p position */
    explicit KeyIterator(
        const RecordAccessKeys& source, std::uint32_t position):
        _source{&source},
        _position{position} {}

    /** @brief Advance to the next name */
    KeyIterator& operator++() {
        ++_position;
        return *this;
    }

    /** @brief Whether both stand at the same position of the same source */
    bool operator==(const KeyIterator& other) const {
        return _source == other._source && _position == other._position;
    }

    /** @brief Whether the two differ */
    bool operator!=(const KeyIterator& other) const {
        return !operator==(other);
    }

    /** @brief The name, valid as long as the source and its record are */
    Containers::StringView operator*() const;

private:
    const RecordAccessKeys* _source;
    std::uint32_t _position;
};

/**
@brief Member names of a record

Refers to the record in the document: both iterating and the names are valid
only until the document next changes, and iterators only as long as this
instance.
*/
class RecordAccessKeys {
public:
    /** @brief Names of the members of @p record, none if it's no object */
    explicit RecordAccessKeys(const JsonValue& record);

    /** @brief First name */
    KeyIterator begin() const { return KeyIterator{*this, 0}; }

    /** @brief Past the last name */
    KeyIterator end() const { return KeyIterator{*this, _count}; }

private:
    friend KeyIterator;

    const JsonValue* _record;
    std::uint32_t _count;
    /* The rare names that read differently as path segments, by position */
    Containers::Array<Containers::Pair<std::uint32_t, Containers::String>>
        _escaped;
};

}

#endif
