#ifndef Orrelin_editor_RecordAccessKeys_h
#define Orrelin_editor_RecordAccessKeys_h

/** @file
 * @brief Class @ref OrrelinEngine::RecordAccessKeys, @ref OrrelinEngine::KeyIterator
 */

#include <cstdint>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/** @brief Iterator over the member names of a record */
class KeyIterator {
public:
    /** @brief Iterator over the members of @p record, at @p position */
    explicit KeyIterator(const JsonValue& record, std::uint32_t position):
        _record{&record}, _position{position} {}

    /** @brief Advance to the next name */
    KeyIterator& operator++() {
        ++_position;
        _escaped = Containers::String{};
        return *this;
    }

    /** @brief Whether both stand at the same position of the same record */
    bool operator==(const KeyIterator& other) const {
        return _record == other._record && _position == other._position;
    }

    /** @brief Whether the two differ */
    bool operator!=(const KeyIterator& other) const {
        return !operator==(other);
    }

    /**
     * @brief The name, as a segment of a record path
     *
     * Valid until the document next changes, and until this iterator is
     * advanced, assigned to or destroyed: the iterator holds the segment if it
     * differs from the name in the document.
     */
    Containers::StringView operator*() const;

private:
    const JsonValue* _record;
    std::uint32_t _position;
    /* The segment, if it was read and differs from the name */
    mutable Containers::String _escaped;
};

/**
@brief Member names of a record

Refers to the record in the document. This and its iterators are valid until the
document next changes. The iterators don't need this instance.
*/
class RecordAccessKeys {
public:
    /** @brief Names of the members of @p record, none unless it's an object */
    explicit RecordAccessKeys(const JsonValue& record);

    /** @brief First name */
    KeyIterator begin() const { return KeyIterator{*_record, 0}; }

    /** @brief Past the last name */
    KeyIterator end() const { return KeyIterator{*_record, _count}; }

private:
    const JsonValue* _record;
    std::uint32_t _count;
};

}

#endif
