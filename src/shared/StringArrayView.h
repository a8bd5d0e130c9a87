#ifndef Orrelin_shared_StringArrayView_h
#define Orrelin_shared_StringArrayView_h

/** @file
 * @brief Class @ref OrrelinEngine::StringArrayView
 */

#include <utility>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Assert.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/**
@brief Read-only view of a packed list of strings

The strings stand one after the other, each with a terminating zero. The view
owns the table of their positions, but not the characters: these have to stay
where they are for as long as the view is used.
*/
class StringArrayView {
public:
    /** @brief A view of no strings */
    explicit StringArrayView() = default;

    /**
     * @brief Constructor
     * @param positions Byte position of each string in @p data and, as last,
     *      the position just past the last string's terminating zero
     * @param data      Characters, not owned
     */
    explicit StringArrayView(
        Containers::Array<std::size_t>&& positions, const char* data):
        _positions{std::move(positions)},
        _data{data} {}

    /** @brief Copying is not allowed */
    StringArrayView(const StringArrayView&) = delete;

    /** @brief Move constructor */
    StringArrayView(StringArrayView&&) = default;

    /** @brief Frees the table of positions, never the characters */
    virtual ~StringArrayView() = default;

    /** @brief Copying is not allowed */
    StringArrayView& operator=(const StringArrayView&) = delete;

    /** @brief Move assignment */
    StringArrayView& operator=(StringArrayView&&) = default;

    /** @brief Number of strings */
    std::size_t size() const {
        return _positions.isEmpty() ? 0 : _positions.size() - 1;
    }

    /**
     * @brief String at @p index
     *
     * The view points to the characters given on construction and is
     * null-terminated. Expects that @p index is less than @ref size();
     * prints the two to the error output and aborts otherwise.
     */
    Containers::StringView get(std::size_t index) const {
        CORRADE_ASSERT(index < size(),
            "StringArrayView::get(): invalid index" << index << "for size"
                                                    << size(),
            {});
        return {_data + _positions[index],
            _positions[index + 1] - _positions[index] - 1,
            Containers::StringViewFlag::NullTerminated};
    }

protected:
    /* Filled by derived classes that own their strings */

    /** @brief Where each string begins and, as last, where the last one ends */
    Containers::Array<std::size_t> _positions;

    /** @brief Characters of all strings */
    const char* _data = nullptr;
};

}

#endif
