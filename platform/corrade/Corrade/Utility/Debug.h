#ifndef Corrade_Utility_Debug_h
#define Corrade_Utility_Debug_h

/** @file
 * @brief Class @ref Corrade::Utility::Debug, @ref Corrade::Utility::Warning,
 *      @ref Corrade::Utility::Error
 */

#include <cstddef>
#include <iosfwd>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade { namespace Utility {

/**
@brief Debug output

Values are separated by a space, a newline follows when the instance is
destroyed, unless nothing was printed. An instance made with an output
redirects all others made during its lifetime that don't have any, in the same
thread. Printing of other types is added with an
@cpp operator<<(Debug&, const T&) @ce in their namespace.

Printing goes to the standard output; @ref Warning and @ref Error go to the
standard error output and each has a redirection of its own.
*/
class Debug {
public:
    /** @brief Output flag */
    enum class Flag : unsigned char {
        NoNewlineAtTheEnd = 1 << 0, /**< No newline at the end */
        NoSpace = 1 << 2 /**< No space between values */
    };

    /** @brief Output flags */
    typedef Containers::EnumSet<Flag> Flags;

    CORRADE_ENUMSET_FRIEND_OPERATORS(Flags)

    /** @brief Function that changes the output */
    typedef void (*Modifier)(Debug&);

    /** @brief No space before the next value */
    static void nospace(Debug& debug) {
        debug._immediateFlags |= Flag::NoSpace;
    }

    /** @brief A newline instead of a space before the next value */
    static void newline(Debug& debug);

    /** @brief A space even if there would be none */
    static void space(Debug& debug) { debug << nospace << " " << nospace; }

    /** @brief The standard output */
    static std::ostream* defaultOutput();

    /** @brief Where a new instance prints to */
    static std::ostream* output();

    /** @brief Print to the current output */
    explicit Debug(Flags flags = {}): Debug{output(), flags} {}

    /** @brief Redirect to a stream. A null one discards everything. */
    explicit Debug(std::ostream* output, Flags flags = {});

    /** @overload */
    explicit Debug(std::nullptr_t, Flags flags = {}):
        Debug{static_cast<std::ostream*>(nullptr), flags} {}

    /**
     * @brief Redirect to a string
     *
     * Appends to what's there, line by line.
     */
    explicit Debug(Containers::String* output, Flags flags = {});

    Debug(const Debug&) = delete;
    Debug& operator=(const Debug&) = delete;

    /** @brief Ends the line and the redirection */
    ~Debug();

    /** @brief Flags of all values */
    Flags flags() const { return _flags; }

    /** @brief Flags of the next value */
    Flags immediateFlags() const { return _flags | _immediateFlags; }

    /** @brief Change the output */
    Debug& operator<<(Modifier modifier) {
        modifier(*this);
        return *this;
    }

    /** @brief Print a value */
    Debug& operator<<(const char* value);

    /** @overload */
    Debug& operator<<(char* value) {
        return *this << static_cast<const char*>(value);
    }
    Debug& operator<<(Containers::StringView value); /**< @overload */
    Debug& operator<<(Containers::MutableStringView value); /**< @overload */
    Debug& operator<<(const Containers::String& value); /**< @overload */
    Debug& operator<<(const void* value); /**< @overload */
    Debug& operator<<(std::nullptr_t); /**< @overload */
    Debug& operator<<(bool value); /**< @overload */
    Debug& operator<<(int value); /**< @overload */
    Debug& operator<<(long value); /**< @overload */
    Debug& operator<<(long long value); /**< @overload */
    Debug& operator<<(unsigned value); /**< @overload */
    Debug& operator<<(unsigned long value); /**< @overload */
    Debug& operator<<(unsigned long long value); /**< @overload */

    /** @brief Print a character as a number */
    Debug& operator<<(char value) { return *this << int(value); }

    /** @overload */
    Debug& operator<<(unsigned char value) { return *this << int(value); }

    /** @brief Print a number with 6 significant digits at most */
    Debug& operator<<(float value);

    /** @brief Print a number with 15 significant digits at most */
    Debug& operator<<(double value);

protected:
    /* `redirected` is what to restore when the instance gets destroyed */
    explicit Debug(std::ostream*& redirected, std::ostream* output, bool owned,
        Flags flags);

    static std::ostream* stringOutput(Containers::String* output);

private:
    template<class T> Debug& print(const T& value);

    std::ostream* _output;
    std::ostream** _redirected;
    std::ostream* _previous;
    Flags _flags, _immediateFlags;
    bool _owned, _written;
};

/** @brief Print to a temporary output */
template<class T> Debug& operator<<(Debug&& debug, const T& value) {
    return debug << value;
}

/** @brief Warning output, see @ref Debug */
class Warning: public Debug {
public:
    /** @brief The standard error output */
    static std::ostream* defaultOutput();

    /** @brief Where a new instance prints to */
    static std::ostream* output();

    /** @brief Print to the current warning output */
    explicit Warning(Flags flags = {}): Warning{output(), flags} {}

    /** @brief Redirect to a stream. A null one discards everything. */
    explicit Warning(std::ostream* output, Flags flags = {});

    /** @overload */
    explicit Warning(std::nullptr_t, Flags flags = {}):
        Warning{static_cast<std::ostream*>(nullptr), flags} {}

    /** @brief Redirect to a string */
    explicit Warning(Containers::String* output, Flags flags = {});
};

/** @brief Error output, see @ref Debug */
class Error: public Debug {
public:
    /** @brief The standard error output */
    static std::ostream* defaultOutput();

    /** @brief Where a new instance prints to */
    static std::ostream* output();

    /** @brief Print to the current error output */
    explicit Error(Flags flags = {}): Error{output(), flags} {}

    /** @brief Redirect to a stream. A null one discards everything. */
    explicit Error(std::ostream* output, Flags flags = {});

    /** @overload */
    explicit Error(std::nullptr_t, Flags flags = {}):
        Error{static_cast<std::ostream*>(nullptr), flags} {}

    /** @brief Redirect to a string */
    explicit Error(Containers::String* output, Flags flags = {});
};

}}

#endif
