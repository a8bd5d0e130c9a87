#ifndef Corrade_Containers_StringIterable_h
#define Corrade_Containers_StringIterable_h

/** @file
 * @brief Class @ref Corrade::Containers::StringIterable
 */

#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Containers {

/**
@brief View on strings of any kind

Meant for function arguments that take a list of strings regardless of how it's
stored. Doesn't own anything; if made from an initializer list, it's valid only
until the full expression that has the list ends.
*/
class StringIterable {
public:
    /** @brief Empty view */
    /*implicit*/ StringIterable() noexcept:
        _data{}, _size{}, _stride{}, _accessor{} {}

    /** @brief View on an initializer list */
    /*implicit*/ StringIterable(std::initializer_list<StringView> list) noexcept
        :
        StringIterable{arrayView(list)} {}

    /**
     * @brief View on an array of anything that a @ref StringView can be made
     *      from
     */
    template<class Container,
        class T = typename decltype(arrayView(
            std::declval<Container&>()))::Type,
        std::enable_if_t<std::is_constructible_v<StringView, const T&>, int> =
            0>
    /*implicit*/ StringIterable(Container&& list) noexcept:
        StringIterable{arrayView(list), [](const void* string) {
                           return StringView{*static_cast<const T*>(string)};
                       }} {}

    /** @brief Count of strings */
    std::size_t size() const { return _size; }

    /** @brief Whether there are none */
    bool isEmpty() const { return !_size; }

    /** @brief Iterator of the strings */
    class Iterator {
    public:
        explicit Iterator(const StringIterable& iterable, std::size_t i):
            _iterable(iterable), _i{i} {}

        bool operator!=(const Iterator& other) const { return _i != other._i; }
        Iterator& operator++() {
            ++_i;
            return *this;
        }
        StringView operator*() const { return _iterable[_i]; }

    private:
        const StringIterable& _iterable;
        std::size_t _i;
    };

    /** @brief Iterator to the first string, valid as long as the view */
    Iterator begin() const { return Iterator{*this, 0}; }

    /** @brief Iterator to after the last string */
    Iterator end() const { return Iterator{*this, _size}; }

    /** @brief String at given position. Expects that it's in range. */
    StringView operator[](std::size_t i) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(i < _size);
        return _accessor(static_cast<const char*>(_data) + i * _stride);
    }

private:
    template<class T> explicit StringIterable(
        ArrayView<T> list, StringView (*accessor)(const void*)) noexcept:
        _data{list.data()},
        _size{list.size()}, _stride{sizeof(T)}, _accessor{accessor} {}

    const void* _data;
    std::size_t _size, _stride;
    StringView (*_accessor)(const void*);
};

}}

#endif
