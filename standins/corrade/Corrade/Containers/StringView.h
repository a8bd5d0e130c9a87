#ifndef Corrade_Containers_StringView_h
#define Corrade_Containers_StringView_h

/** @file
 * @brief Class @ref Corrade::Containers::StringView, enum @ref
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
template<> struct IsViewable<StringView>: std::true_type {};

/* Arrays, but not strings, as those know about null termination */
template<class T> struct IsCharacterArray: IsViewable<T> {};
template<> struct IsCharacterArray<StringView>: std::false_type {};
template<> struct IsCharacterArray<String>: std::false_type {};
}

/**
@brief View on a string

A pointer and a size, with @ref StringViewFlags kept in the two topmost bits of
the size. Doesn't own what it points to. All operations work with bytes. The
element access is checked in debug builds only.
*/
class StringView {
public:
    /** @brief Null view */
    constexpr /*implicit*/ StringView(std::nullptr_t = nullptr) noexcept:
        _data{}, _sizePlusFlags{std::size_t(StringViewFlag::Global)} {}

    /** @brief View on @p size bytes from @p data on */
    constexpr /*implicit*/ StringView(const char* data, std::size_t size,
        StringViewFlags flags = {}) noexcept:
        _data{data},
        _sizePlusFlags{size | std::size_t(flags)} {
        CORRADE_INTERNAL_DEBUG_ASSERT(
            !(flags & StringViewFlag::NullTerminated) || (data && !data[size]));
    }

    /** @brief View on a null-terminated string */
    template<class T,
        std::enable_if_t<std::is_pointer_v<T> &&
                std::is_convertible_v<T, const char*>,
            int> = 0>
    /*implicit*/ StringView(T data) noexcept:
        StringView{data, data ? std::strlen(data) : 0,
            data ? StringViewFlag::NullTerminated : StringViewFlag::Global} {}

    /** @brief View on an owning string */
    /*implicit*/ StringView(const String& string) noexcept;

    /** @brief View on an array of characters */
    template<class T, class U = Implementation::ViewedType<T>,
        std::enable_if_t<
            Implementation::IsCharacterArray<std::decay_t<T>>::value &&
                std::is_convertible_v<U*, const char*>,
            int> = 0>
    constexpr /*implicit*/ StringView(T&& data) noexcept:
        StringView{data.data(), data.size()} {}

    /** @brief View on a string of the standard library */
    template<class T,
        class = decltype(Implementation::StlStringConverter<
            std::decay_t<T>>::view(std::declval<T&>()))>
    /*implicit*/ StringView(T&& other) noexcept:
        StringView{
            Implementation::StlStringConverter<std::decay_t<T>>::view(other)} {}

    /** @brief Convert to a string of the standard library */
    template<class T,
        class = decltype(Implementation::StlStringConverter<T>::view(
            std::declval<T&>()))>
    /*implicit*/ operator T() const {
        return T{_data, size()};
    }

    /** @brief Whether the view is non-empty */
    constexpr explicit operator bool() const { return _data && size(); }

    /** @brief Flags */
    constexpr StringViewFlags flags() const {
        return StringViewFlags(_sizePlusFlags & FlagMask);
    }

    /** @brief Data, null-terminated only if @ref flags() say so */
    constexpr const char* data() const { return _data; }

    /** @brief Size, without a null terminator */
    constexpr std::size_t size() const { return _sizePlusFlags & ~FlagMask; }

    /** @brief Whether the size is zero */
    constexpr bool isEmpty() const { return !size(); }

    /** @brief Pointer to the first byte */
    constexpr const char* begin() const { return _data; }

    /** @brief Pointer to after the last byte */
    constexpr const char* end() const { return _data + size(); }

    /** @brief Byte access. Expects that @p i is in range. */
    constexpr const char& operator[](std::size_t i) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(i < size());
        return _data[i];
    }

    /** @brief Bytes from @p begin to before @p end, both in range */
    constexpr StringView slice(std::size_t begin, std::size_t end) const {
        CORRADE_INTERNAL_DEBUG_ASSERT(begin <= end && end <= size());
        /* The null terminator stays only after the whole suffix */
        return {_data + begin, end - begin,
            end == size() ? flags() : flags() & StringViewFlag::Global};
    }

    /** @brief First @p size bytes */
    constexpr StringView prefix(std::size_t size) const {
        return slice(0, size);
    }

    /** @brief Bytes before @p end, a null view if it's null */
    template<class T, std::enable_if_t<std::is_pointer_v<T>, int> = 0>
    constexpr StringView prefix(T end) const {
        return end ? prefix(std::size_t(end - _data)) : StringView{};
    }

    /** @brief Bytes from @p begin on, a null view if it's null */
    constexpr StringView suffix(const char* begin) const {
        return _data && !begin ? StringView{}
                               : exceptPrefix(std::size_t(begin - _data));
    }

    /** @brief All but the first @p size bytes */
    constexpr StringView exceptPrefix(std::size_t size) const {
        return slice(size, this->size());
    }
    template<class T, std::enable_if_t<std::is_same_v<T, char>, int> = 0>
    StringView exceptPrefix(T) const = delete; /**< @overload */

    /** @brief All but the last @p size bytes */
    constexpr StringView exceptSuffix(std::size_t size) const {
        return slice(0, this->size() - size);
    }
    template<class T, std::enable_if_t<std::is_same_v<T, char>, int> = 0>
    StringView exceptSuffix(T) const = delete; /**< @overload */

    /** @brief All but given prefix. Expects that the view starts with it. */
    StringView exceptPrefix(StringView prefix) const;

    /** @brief All but given suffix. Expects that the view ends with it. */
    StringView exceptSuffix(StringView suffix) const;

    /** @brief Parts between delimiters. An empty view has none. */
    Array<StringView> split(char delimiter) const;

    /**
     * @brief Parts before and after the first separator, with it in between
     *
     * Without a separator, the first part is everything and the others are
     * empty.
     */
    Array3<StringView> partition(char separator) const;

    /** @brief Join strings with this view as the delimiter */
    String join(const StringIterable& strings) const;

    /** @brief Whether the view starts with given prefix */
    bool hasPrefix(StringView prefix) const;
    bool hasPrefix(char prefix) const; /**< @overload */

    /** @brief Whether the view ends with given suffix */
    bool hasSuffix(StringView suffix) const;
    bool hasSuffix(char suffix) const; /**< @overload */

    /** @brief Without whitespace at the begin and at the end */
    StringView trimmed() const;

    /** @brief First occurrence, or an empty view at @p fail */
    StringView findOr(char character, const char* fail) const;

    /** @brief Last occurrence, or an empty view at @p fail */
    StringView findLastOr(char character, const char* fail) const;

    /** @brief Whether there is an occurrence */
    bool contains(char character) const;

private:
    enum : std::size_t {
        FlagMask = std::size_t(StringViewFlag::Global) |
            std::size_t(StringViewFlag::NullTerminated)
    };

    const char* _data;
    std::size_t _sizePlusFlags;
};

/** @brief Equality */
bool operator==(StringView a, StringView b);
bool operator!=(StringView a, StringView b); /**< @overload */

/**
 * @brief Whether the first is before the second, by unsigned bytes and then the
 *      size
 */
bool operator<(StringView a, StringView b);

/** @brief Concatenate two strings */
String operator+(StringView a, StringView b);

namespace Literals { inline namespace StringLiterals {

/** @brief Global null-terminated view on a string literal */
constexpr StringView operator"" _s(const char* data, std::size_t size) {
    return {
        data, size, StringViewFlag::Global | StringViewFlag::NullTerminated};
}

}}

}}

#endif
