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
it safe to relocate as plain memory. Operations that are in @ref StringView as
well do the same.
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

    /** @brief Empty string */
    /*implicit*/ String() noexcept: _small{{}, SmallBit} {}

    /** @brief Copy of a view */
    /*implicit*/ String(StringView view): String{view.data(), view.size()} {}

    /** @brief Copy of an array of characters */
    /*implicit*/ String(ArrayView<const char> view):
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

    /** @brief @p size uninitialized bytes with a null terminator after */
    explicit String(NoInitT, std::size_t size);

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

    const char* data() const {
        return isSmall() ? _small.data : _large.data;
    } /**< @overload */

    /** @brief Size, without the null terminator */
    std::size_t size() const {
        return isSmall() ? _small.size & ~SmallBit : _large.size;
    }

    /** @brief Whether the size is zero */
    bool isEmpty() const { return !size(); }

    /** @brief Pointer to the first byte */
    char* begin() { return data(); }
    const char* begin() const { return data(); } /**< @overload */

    /** @brief Pointer to after the last byte */
    char* end() { return data() + size(); }
    const char* end() const { return data() + size(); } /**< @overload */

    /** @brief Byte access. Expects that @p i is in range. */
    char& operator[](std::size_t i) {
        CORRADE_INTERNAL_DEBUG_ASSERT(i < size());
        return data()[i];
    }
    char operator[](std::size_t i) const {
        return StringView{*this}[i];
    } /**< @overload */

    /** @copydoc StringView::prefix(std::size_t) const */
    StringView prefix(std::size_t size) const {
        return StringView{*this}.prefix(size);
    }

    /** @copydoc StringView::exceptPrefix(std::size_t) const */
    StringView exceptPrefix(std::size_t size) const {
        return StringView{*this}.exceptPrefix(size);
    }

    /** @copydoc StringView::hasSuffix() */
    bool hasSuffix(StringView suffix) const {
        return StringView{*this}.hasSuffix(suffix);
    }
    bool hasSuffix(char suffix) const {
        return StringView{*this}.hasSuffix(suffix);
    } /**< @overload */

    /** @copydoc StringView::contains() */
    bool contains(char character) const {
        return StringView{*this}.contains(character);
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
