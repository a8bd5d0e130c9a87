#ifndef Corrade_Containers_String_h
#define Corrade_Containers_String_h

/** @file
 * @brief Class @ref Corrade::Containers::String
 */

#include "Corrade/Tags.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Containers {

/**
@brief String

Owns its bytes, which always have a null terminator after. Up to 22 bytes are
stored right in the instance, anything longer is allocated; a moved-out
instance is empty. The contents don't refer to the instance itself, which makes
it safe to relocate as plain memory.

Operations that return a view are the same as in @ref BasicStringView, as a
@ref MutableStringView if the string is mutable.
*/
class String {
public:
    /** @brief Deleter type */
    typedef void (*Deleter)(char*, std::size_t);

    /**
     * @brief Null-terminated form of a view
     *
     * References the view if it's null-terminated, copies it otherwise.
     */
    static String nullTerminatedView(StringView view);

    /**
     * @brief Null-terminated form of a view that can be kept
     *
     * References the view if it's both null-terminated and global, copies
     * it otherwise.
     */
    static String nullTerminatedGlobalView(StringView view);

    /** @brief Empty string */
    /*implicit*/ String() noexcept: _small{{}, SmallBit} {}

    /** @brief Copy of a view */
    /*implicit*/ String(StringView view): String{view.data(), view.size()} {}

    /** @overload */
    /*implicit*/ String(MutableStringView view):
        String{view.data(), view.size()} {}

    /** @brief Copy of an array of characters */
    /*implicit*/ String(ArrayView<const char> view):
        String{view.data(), view.size()} {}

    /** @overload */
    /*implicit*/ String(ArrayView<char> view):
        String{view.data(), view.size()} {}

    /** @brief Copy of a null-terminated string */
    template<class T,
        std::enable_if_t<std::is_convertible_v<T, const char*> &&
                !std::is_convertible_v<T, std::size_t>,
            int> = 0>
    /*implicit*/ String(T data):
        String{StringView{static_cast<const char*>(data)}} {}

    /** @brief Copy of @p size bytes */
    /*implicit*/ String(const char* data, std::size_t size);

    /**
     * @brief Take over existing memory
     *
     * Expects a null byte after the @p size bytes. A null deleter means
     * @cpp delete[] @ce.
     */
    explicit String(char* data, std::size_t size, Deleter deleter) noexcept;

    /** @brief @p size null bytes */
    explicit String(ValueInitT, std::size_t size):
        String{DirectInit, size, '\0'} {}

    /** @brief @p size uninitialized bytes with a null terminator after */
    explicit String(NoInitT, std::size_t size);

    /** @brief @p size times @p c */
    explicit String(DirectInitT, std::size_t size, char c);

    /** @brief Copy of a string of the standard library */
    template<class T,
        class = decltype(Implementation::StlStringConverter<
            std::decay_t<T>>::view(std::declval<T&>()))>
    /*implicit*/ String(T&& other):
        String{
            Implementation::StlStringConverter<std::decay_t<T>>::view(other)} {}

    /** @brief Copy constructor */
    String(const String& other): String{StringView{other}} {}

    /** @brief Move constructor */
    String(String&& other) noexcept: String{} { swap(other); }

    ~String() {
        if(!isSmall())
            destroy();
    }

    /** @brief Copy assignment */
    String& operator=(const String& other) { return *this = String{other}; }

    /** @brief Move assignment, swaps the contents */
    String& operator=(String&& other) noexcept {
        swap(other);
        return *this;
    }

    /** @brief Convert to a string of the standard library */
    template<class T,
        class = decltype(Implementation::StlStringConverter<T>::view(
            std::declval<T&>()))>
    /*implicit*/ operator T() const {
        return T{data(), size()};
    }

    /** @brief Whether the string is non-empty */
    explicit operator bool() const { return size(); }

    /** @brief Whether the bytes are in the instance itself */
    bool isSmall() const { return _small.size & SmallBit; }

    /** @brief Data, null-terminated */
    char* data() { return isSmall() ? _small.data : _large.data; }

    /** @overload */
    const char* data() const { return isSmall() ? _small.data : _large.data; }

    /** @brief Size, without the null terminator */
    std::size_t size() const {
        return isSmall() ? _small.size & ~SmallBit : _large.size;
    }

    /** @brief Whether the size is zero */
    bool isEmpty() const { return !size(); }

    /** @brief Pointer to the first byte */
    char* begin() { return data(); }
    const char* begin() const { return data(); } /**< @overload */
    const char* cbegin() const { return data(); } /**< @overload */

    /** @brief Pointer to after the last byte */
    char* end() { return data() + size(); }
    const char* end() const { return data() + size(); } /**< @overload */
    const char* cend() const { return data() + size(); } /**< @overload */

    /** @brief First byte. Expects that there is one. */
    char& front() { return MutableStringView{*this}.front(); }
    char front() const { return StringView{*this}.front(); } /**< @overload */

    /** @brief Last byte. Expects that there is one. */
    char& back() { return MutableStringView{*this}.back(); }
    char back() const { return StringView{*this}.back(); } /**< @overload */

    /**
     * @brief Byte access
     *
     * Expects that @p i is in range, the null terminator included.
     */
    char& operator[](std::size_t i) { return MutableStringView{*this}[i]; }

    /** @overload */
    char operator[](std::size_t i) const { return StringView{*this}[i]; }

/* Each of these just forwards to the view, mutable or not */
#define _c(name, parameters, arguments)                                        \
    MutableStringView name parameters {                                        \
        return MutableStringView{*this}.name arguments;                        \
    }                                                                          \
    StringView name parameters const {                                         \
        return StringView{*this}.name arguments;                               \
    }
    _c(slice, (std::size_t begin, std::size_t end), (begin, end));
    _c(sliceSize, (std::size_t begin, std::size_t size), (begin, size));
    _c(prefix, (std::size_t size), (size));
    _c(exceptPrefix, (std::size_t size), (size));
    _c(exceptSuffix, (std::size_t size), (size));
    _c(exceptPrefix, (StringView prefix), (prefix));
    _c(exceptSuffix, (StringView suffix), (suffix));
    _c(trimmed, (StringView characters), (characters));
    _c(trimmed, (), ());
    _c(find, (StringView substring), (substring));
    _c(find, (char character), (character));
    _c(findLast, (StringView substring), (substring));
    _c(findLast, (char character), (character));
#undef _c

    template<class T, std::enable_if_t<std::is_same_v<T, char>, int> = 0>
    StringView exceptPrefix(T) const = delete;
    template<class T, std::enable_if_t<std::is_same_v<T, char>, int> = 0>
    StringView exceptSuffix(T) const = delete;

    /** @copydoc BasicStringView::split() */
    Array<MutableStringView> split(char delimiter);
    Array<StringView> split(char delimiter) const; /**< @overload */

    /** @copydoc BasicStringView::splitWithoutEmptyParts() */
    Array<MutableStringView> splitWithoutEmptyParts(char delimiter);

    /** @overload */
    Array<StringView> splitWithoutEmptyParts(char delimiter) const;

    /** @copydoc BasicStringView::partition() */
    Array3<MutableStringView> partition(char separator);
    Array3<StringView> partition(char separator) const; /**< @overload */

    /** @copydoc BasicStringView::partitionLast() */
    Array3<MutableStringView> partitionLast(char separator);
    Array3<StringView> partitionLast(char separator) const; /**< @overload */

    /** @copydoc BasicStringView::join() */
    String join(const StringIterable& strings) const {
        return StringView{*this}.join(strings);
    }

    /** @copydoc BasicStringView::joinWithoutEmptyParts() */
    String joinWithoutEmptyParts(const StringIterable& strings) const {
        return StringView{*this}.joinWithoutEmptyParts(strings);
    }

    /** @copydoc BasicStringView::hasPrefix() */
    bool hasPrefix(StringView prefix) const {
        return StringView{*this}.hasPrefix(prefix);
    }

    /** @overload */
    bool hasPrefix(char prefix) const {
        return StringView{*this}.hasPrefix(prefix);
    }

    /** @copydoc BasicStringView::hasSuffix() */
    bool hasSuffix(StringView suffix) const {
        return StringView{*this}.hasSuffix(suffix);
    }

    /** @overload */
    bool hasSuffix(char suffix) const {
        return StringView{*this}.hasSuffix(suffix);
    }

    /** @copydoc BasicStringView::contains() */
    bool contains(StringView substring) const {
        return StringView{*this}.contains(substring);
    }

    /** @overload */
    bool contains(char character) const {
        return StringView{*this}.contains(character);
    }

    /** @copydoc BasicStringView::count() */
    std::size_t count(char character) const {
        return StringView{*this}.count(character);
    }

private:
    static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
        "the last byte has to be the topmost one of the size");

    enum : std::size_t { SmallSize = sizeof(std::size_t) * 3 - 1 };
    enum : unsigned char { SmallBit = 0x40 };

    /* An allocated string can't be so big that it'd have the bit set */
    struct Small {
        char data[SmallSize];
        unsigned char size;
    };
    struct Large {
        char* data;
        Deleter deleter;
        std::size_t size;
    };

    void allocate(std::size_t size);
    void destroy();
    void swap(String& other) noexcept {
        const Large large = _large;
        _large = other._large;
        other._large = large;
    }

    union {
        Small _small;
        Large _large;
    };
};

}}

#endif
