#ifndef Orrelin_shared_StaticMap_h
#define Orrelin_shared_StaticMap_h

/** @file
 * @brief Class @ref OrrelinEngine::StaticMap
 */

#include <algorithm>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Assert.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine {

/**
@brief Map from strings, filled first and searched later

A sorted array. Its capacity grows only by @ref grow(). After @ref put(),
@ref compile() makes it searchable again.
*/
template<class V> class StaticMap {
public:
    /** @brief An entry; ordered by key, byte-wise */
    struct Entry {
        Containers::String key; /**< @brief Key, empty if not used */
        V value; /**< @brief Value */
    };

    /** @brief An empty, compiled map of capacity 0 */
    explicit StaticMap() = default;

    /** @brief Number of entries in use */
    std::size_t size() const { return _size; }

    /** @brief Number of entries that there is room for */
    std::size_t capacity() const { return _entries.size(); }

    /**
     * @brief Value of @p key, @cpp nullptr @ce if there is none
     *
     * Expects that the map is compiled; prints that it isn't and aborts
     * otherwise. Logarithmic in the size. The pointer is valid until the next
     * @ref compile(), @ref grow() or @ref clear().
     */
    V* find(Containers::StringView key) {
        CORRADE_ASSERT(
            _compiled, "StaticMap::find(): Map needs to be compiled.", {});
        Entry* const end = _entries.begin() + _size;
        Entry* const found = std::lower_bound(_entries.begin(), end, key,
            [](const Entry& entry, Containers::StringView k) {
                return StrLess{}(entry.key, k);
            });
        return found != end && found->key == key ? &found->value : nullptr;
    }

    /**
     * @brief Add an entry
     *
     * Doesn't check whether @p key is there already. Leaves the map not
     * compiled. Expects a non-empty key and room for it; prints which one is
     * missing and aborts otherwise. The returned pointer is valid until
     * @ref compile(), @ref grow() or @ref clear().
     */
    V* put(Containers::StringView key, V&& value) {
        CORRADE_ASSERT(
            !key.isEmpty(), "StaticMap::put(): key cannot be nullptr.", {});
        CORRADE_ASSERT(_size < _entries.size(),
            "StaticMap::put(): capacity exhausted.", {});
        Entry& entry = _entries[_size++];
        entry = Entry{Containers::String{key}, std::move(value)};
        _compiled = false;
        return &entry.value;
    }

    /**
     * @brief Make the map searchable
     *
     * Sorts the entries that were put since the last time and merges them with
     * the others: linear in the size if they are few.
     */
    void compile() {
        const auto less = [](const Entry& a, const Entry& b) {
            return StrLess{}(a.key, b.key);
        };
        Entry* const end = _entries.begin() + _size;
        Entry* const added = std::is_sorted_until(_entries.begin(), end, less);
        std::sort(added, end, less);
        std::inplace_merge(_entries.begin(), added, end, less);
        _compiled = true;
    }

    /** @brief Make room for @p count more entries */
    void grow(std::size_t count) {
        Containers::Array<Entry> entries{
            Corrade::ValueInit, _entries.size() + count};
        std::move(_entries.begin(), _entries.end(), entries.begin());
        _entries = std::move(entries);
    }

    /** @brief Remove all entries; the capacity stays */
    void clear() {
        for(std::size_t i = 0; i != _size; ++i)
            _entries[i] = Entry{};
        _size = 0;
    }

private:
    bool _compiled = true;
    std::size_t _size = 0;
    Containers::Array<Entry> _entries;
};

}

#endif
