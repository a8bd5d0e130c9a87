#ifndef Corrade_Containers_StringView_h
#define Corrade_Containers_StringView_h

/** @file
 * @brief Class @ref Corrade::Containers::BasicStringView, typedef @ref
 *      Corrade::Containers::StringView, @ref
 *      Corrade::Containers::MutableStringView, enum @ref
 *      Corrade::Containers::StringViewFlag
 */

#include <cstring>
#include <utility>

#include "Corrade/Containers/ArrayView.h"
#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/Utility.h"
#include "Corrade/Utility/VisibilityMacros.h"

namespace Corrade { namespace Containers {

/** @brief Property of the memory that a string view points to */
enum class StringViewFlag : std::size_t {
    /** It exists and doesn't change for the whole program run */
    Global = std::size_t{1} << (sizeof(std::size_t) * 8 - 1),

    /** There's a null byte right after the view */
    NullTerminated = std::size_t{1} << (sizeof(std::size_t) * 8 - 2)
};

CORRADE_ENUMSET_OPERATORS(StringViewFlags)

namespace Implementation {
/* Conversion of strings of the standard library, specialized by headers
   that know those */
template<class> struct StlStringConverter;

template<> struct IsViewable<String>: std::true_type {};
template<class T> struct IsViewable<BasicStringView<T>>: std::true_type {};

/* Arrays, but not strings, as those know about null termination */
template<class U> struct IsCharacterArray: IsViewable<U> {};
template<class T> struct IsCharacterArray<BasicStringView<T>>: std::false_type {
};
template<> struct IsCharacterArray<String>: std::false_type {};
}

/**
@brief View on a string

A pointer and a size, with @ref StringViewFlags kept in the two topmost bits of
the size. Doesn't own what it points to. All operations work with bytes. The
element access is checked in debug builds only.
*/
template<class T> class BasicStringView {
public:
    /** @brief Null view */
    constexpr /*implicit*/ BasicStringView() noexcept:
        _data{}, _sizePlusFlags{std::size_t(StringViewFlag::Global)} {}

    /** @overload */
    template<class U,
        std::enable_if_t<std::is_same_v<U, std::nullptr_t>, int> = 0>
    constexpr /*implicit*/ BasicStringView(U) noexcept: BasicStringView{} {}

    /** @brief View on @p size bytes from @p data on */
    constexpr /*implicit*/ BasicStringView(
        T* data, std::size_t size, StringViewFlags flags = {}) noexcept:
        _data{data},
        _sizePlusFlags{size | std::size_t(flags)} {
        CORRADE_DEBUG_ASSERT(
            !(flags & StringViewFlag::NullTerminated) || (data && !data[size]),
            "Containers::StringView: data flagged as null-terminated aren't", );
    }

    /** @brief View on a null-terminated string */
    template<class U,
        std::enable_if_t<std::is_pointer_v<U> && std::is_convertible_v<U, T*>,
            int> = 0>
    /*implicit*/ BasicStringView(
        U data, StringViewFlags extraFlags = {}) noexcept:
        BasicStringView{data, data ? std::strlen(data) : 0,
            extraFlags |
                (data ? StringViewFlag::NullTerminated
                      : StringViewFlag::Global)} {}

    /** @brief View on an owning string */
    /*implicit*/ BasicStringView(String& string) noexcept;

    /** @overload */
    template<class U = T, std::enable_if_t<std::is_const_v<U>, int> = 0>
    /*implicit*/ BasicStringView(const String& string) noexcept;

    /** @brief Make a mutable view constant */
    template<class U, std::enable_if_t<std::is_same_v<const U, T>, int> = 0>
    constexpr /*implicit*/ BasicStringView(BasicStringView<U> other) noexcept:
        _data{other._data}, _sizePlusFlags{other._sizePlusFlags} {}

    /** @brief View on an array of characters */
    template<class U, class V = Implementation::ViewedType<U>,
        std::enable_if_t<
            Implementation::IsCharacterArray<std::decay_t<U>>::value &&
                std::is_convertible_v<V*, T*>,
            int> = 0>
    constexpr /*implicit*/ BasicStringView(
        U&& data, StringViewFlags flags = {}) noexcept:
        BasicStringView{data.data(), data.size(), flags} {}

    /** @brief View on a string of the standard library */
    template<class U,
        class = decltype(Implementation::StlStringConverter<
            std::decay_t<U>>::view(std::declval<U&>())),
        std::enable_if_t<std::is_const_v<T> && !std::is_void_v<U>, int> = 0>
    /*implicit*/ BasicStringView(U&& other) noexcept:
        BasicStringView{
            Implementation::StlStringConverter<std::decay_t<U>>::view(other)} {}

    /** @brief Convert to a string of the standard library */
    template<class U,
        class = decltype(Implementation::StlStringConverter<U>::view(
            std::declval<U&>()))>
    /*implicit*/ operator U() const {
        return U{_data, size()};
    }

    /** @brief Whether the view is non-empty */
    constexpr explicit operator bool() const { return _data && size(); }

    /** @brief Flags */
    constexpr StringViewFlags flags() const {
        return StringViewFlags(_sizePlusFlags & FlagMask);
    }

    /** @brief Data, null-terminated only if @ref flags() say so */
    constexpr T* data() const { return _data; }

    /** @brief Size, without a null terminator */
    constexpr std::size_t size() const { return _sizePlusFlags & ~FlagMask; }

    /** @brief Whether the size is zero */
    constexpr bool isEmpty() const { return !size(); }

    /** @brief Pointer to the first byte */
    constexpr T* begin() const { return _data; }
    constexpr T* cbegin() const { return _data; } /**< @overload */

    /** @brief Pointer to after the last byte */
    constexpr T* end() const { return _data + size(); }
    constexpr T* cend() const { return _data + size(); } /**< @overload */

    /** @brief First byte. Expects that there is one. */
    constexpr T& front() const {
        CORRADE_DEBUG_ASSERT(
            size(), "Containers::StringView::front(): view is empty", _data[0]);
        return _data[0];
    }

    /** @brief Last byte. Expects that there is one. */
    constexpr T& back() const {
        CORRADE_DEBUG_ASSERT(
            size(), "Containers::StringView::back(): view is empty", _data[0]);
        return _data[size() - 1];
    }

    /**
     * @brief Byte access
     *
     * Expects that @p i is in range, the null terminator included if there's
     * any.
     */
    constexpr T& operator[](std::size_t i) const {
        CORRADE_DEBUG_ASSERT(
            i < size() + (flags() & StringViewFlag::NullTerminated ? 1 : 0),
            "Containers::StringView::operator[](): index"
                << i << "out of range for" << size() << "bytes",
            _data[0]);
        return _data[i];
    }

    /**
     * @brief Bytes from @p begin to before @p end
     *
     * Expects that both are in range.
     */
    constexpr BasicStringView<T> slice(
        std::size_t begin, std::size_t end) const {
        CORRADE_DEBUG_ASSERT(begin <= end && end <= size(),
            "Containers::StringView::slice(): slice from"
                << begin << "to" << end << "out of range for" << size()
                << "bytes",
            {});
        /* The null terminator stays only after the whole suffix */
        return {_data + begin, end - begin,
            flags() &
                (end == size() ? ~StringViewFlags{}
                               : StringViewFlags{StringViewFlag::Global})};
    }

    /** @overload */
    constexpr BasicStringView<T> slice(T* begin, T* end) const {
        return slice(std::size_t(begin - _data), std::size_t(end - _data));
    }

    /** @brief @p size bytes from @p begin on */
    constexpr BasicStringView<T> sliceSize(
        std::size_t begin, std::size_t size) const {
        return slice(begin, begin + size);
    }

    /** @brief First @p size bytes */
    constexpr BasicStringView<T> prefix(std::size_t size) const {
        return slice(0, size);
    }

    /** @brief Bytes before @p end, a null view if it's null */
    template<class U,
        std::enable_if_t<std::is_convertible_v<U, T*> &&
                !std::is_convertible_v<U, std::size_t>,
            int> = 0>
    constexpr BasicStringView<T> prefix(U end) const {
        return end ? slice(_data, end) : BasicStringView<T>{};
    }

    /** @brief Bytes from @p begin on, a null view if it's null */
    constexpr BasicStringView<T> suffix(T* begin) const {
        return _data && !begin ? BasicStringView<T>{} : slice(begin, end());
    }

    /** @brief All but the first @p size bytes */
    constexpr BasicStringView<T> exceptPrefix(std::size_t size) const {
        return slice(size, this->size());
    }

    /** @brief All but the last @p size bytes */
    constexpr BasicStringView<T> exceptSuffix(std::size_t size) const {
        return slice(0, this->size() - size);
    }

    /** @brief All but given prefix. Expects that the view starts with it. */
    BasicStringView<T> exceptPrefix(StringView prefix) const;
    template<class U, std::enable_if_t<std::is_same_v<U, char>, int> = 0>
    BasicStringView<T> exceptPrefix(U) const = delete; /**< @overload */

    /** @brief All but given suffix. Expects that the view ends with it. */
    BasicStringView<T> exceptSuffix(StringView suffix) const;
    template<class U, std::enable_if_t<std::is_same_v<U, char>, int> = 0>
    BasicStringView<T> exceptSuffix(U) const = delete; /**< @overload */

    /** @brief Parts between delimiters. An empty view has none. */
    Array<BasicStringView<T>> split(char delimiter) const;

    /** @brief Non-empty parts between delimiters */
    Array<BasicStringView<T>> splitWithoutEmptyParts(char delimiter) const;

    /**
     * @brief What's before the first separator, the separator and what's after
     *
     * The latter two are empty if it's not there.
     */
    Array3<BasicStringView<T>> partition(char separator) const;

    /**
     * @brief What's before the last separator, the separator and what's after
     *
     * The former two are empty if it's not there.
     */
    Array3<BasicStringView<T>> partitionLast(char separator) const;

    /** @brief Join strings with this view as the delimiter */
    String join(const StringIterable& strings) const;

    /** @brief Join non-empty strings with this view as the delimiter */
    String joinWithoutEmptyParts(const StringIterable& strings) const;

    /** @brief Whether the view starts with given prefix */
    bool hasPrefix(StringView prefix) const;
    bool hasPrefix(char prefix) const; /**< @overload */

    /** @brief Whether the view ends with given suffix */
    bool hasSuffix(StringView suffix) const;
    bool hasSuffix(char suffix) const; /**< @overload */

    /** @brief Without given characters at the begin and at the end */
    BasicStringView<T> trimmed(StringView characters) const;

    /** @brief Without whitespace at the begin and at the end */
    BasicStringView<T> trimmed() const;

    /** @brief First occurrence, or a null view */
    BasicStringView<T> find(StringView substring) const {
        return findOr(substring, nullptr);
    }

    /** @overload */
    BasicStringView<T> find(char character) const {
        return findOr(character, nullptr);
    }

    /** @brief First occurrence, or an empty view at @p fail */
    BasicStringView<T> findOr(StringView substring, T* fail) const;
    BasicStringView<T> findOr(char character, T* fail) const; /**< @overload */

    /** @brief Last occurrence, or a null view */
    BasicStringView<T> findLast(StringView substring) const {
        return findLastOr(substring, nullptr);
    }

    /** @overload */
    BasicStringView<T> findLast(char character) const {
        return findLastOr(character, nullptr);
    }

    /** @brief Last occurrence, or an empty view at @p fail */
    BasicStringView<T> findLastOr(StringView substring, T* fail) const;

    /** @overload */
    BasicStringView<T> findLastOr(char character, T* fail) const;

    /** @brief Whether there is an occurrence */
    bool contains(StringView substring) const;
    bool contains(char character) const; /**< @overload */

    /** @brief How many times a character is there */
    std::size_t count(char character) const;

private:
    template<class> friend class BasicStringView;

    enum : std::size_t {
        FlagMask = std::size_t(StringViewFlag::Global) |
            std::size_t(StringViewFlag::NullTerminated)
    };

    BasicStringView<T> found(
        std::size_t position, std::size_t size, T* fail) const;

    T* _data;
    std::size_t _sizePlusFlags;
};

/** @brief Equality */
bool operator==(StringView a, StringView b);

/** @brief Inequality */
bool operator!=(StringView a, StringView b);

/**
 * @brief Whether the first is before the second, by unsigned bytes and then the
 *      size
 */
bool operator<(StringView a, StringView b);

/** @copybrief operator<(StringView, StringView) Or equal to it. */
bool operator<=(StringView a, StringView b);

/** @brief Whether the first is after the second */
bool operator>(StringView a, StringView b);

/** @copybrief operator>(StringView, StringView) Or equal to it. */
bool operator>=(StringView a, StringView b);

/** @brief Concatenate two strings */
String operator+(StringView a, StringView b);

extern template class BasicStringView<char>;
extern template class BasicStringView<const char>;

namespace Literals { inline namespace StringLiterals {

/** @brief Global null-terminated view on a string literal */
constexpr StringView operator"" _s(const char* data, std::size_t size) {
    return {
        data, size, StringViewFlag::Global | StringViewFlag::NullTerminated};
}

}}

}}

#endif
