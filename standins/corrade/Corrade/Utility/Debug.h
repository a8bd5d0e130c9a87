#ifndef Corrade_Utility_Debug_h
#define Corrade_Utility_Debug_h

/** @file
 * @brief Class @ref Corrade::Utility::Debug, @ref Corrade::Utility::Warning,
 *      @ref Corrade::Utility::Error
 */

#include <cstddef>
#include <iosfwd>
#include <string>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade { namespace Utility {

namespace Implementation {
/* Where to print. If both are null, output is discarded. */
struct DebugOutput {
    std::ostream* stream;
    Containers::String* string;
};
}

/**
@brief Debug output

Collects one line, with a space between values. The destructor prints it with
a newline, unless there were no values. An instance that is made with an output
redirects all those in the same thread that are made without one during its
lifetime. To print another type, give it an
@cpp operator<<(Debug&, const T&) @ce in its namespace.

Printing goes to the standard output; @ref Warning and @ref Error go to the
standard error output and each has a redirection of its own.
*/
class Debug {
public:
    /** @brief Output flag */
    enum class Flag : unsigned char {
        NoNewlineAtTheEnd = 1 << 0 /**< No newline at the end */
    };

    /** @brief Output flags */
    typedef Containers::EnumSet<Flag> Flags;

    /** @brief Function that changes the output */
    typedef void (*Modifier)(Debug&);

    /** @brief No space before the next value */
    static void nospace(Debug& debug) { debug._space = false; }

    /** @brief Print to the standard output, unless redirected */
    explicit Debug(Flags flags = {});

    /** @brief Redirect to a stream. A null one discards everything. */
    explicit Debug(std::ostream* output, Flags flags = {});

    Debug(const Debug&) = delete;
    Debug& operator=(const Debug&) = delete;

    /** @brief Ends the line and the redirection */
    ~Debug();

    /** @brief Change the output */
    Debug& operator<<(Modifier modifier) {
        modifier(*this);
        return *this;
    }

    /** @brief Print a value */
    Debug& operator<<(const char* value);
    Debug& operator<<(Containers::StringView value); /**< @overload */
    Debug& operator<<(const Containers::String& value); /**< @overload */
    Debug& operator<<(int value); /**< @overload */
    Debug& operator<<(unsigned value); /**< @overload */
    Debug& operator<<(unsigned long value); /**< @overload */

    /* A bool would be printed as a number */
    template<class T, std::enable_if_t<std::is_same_v<T, bool>, int> = 0>
    Debug& operator<<(T) = delete;

protected:
    /* The destructor restores the former value of `redirected` */
    explicit Debug(Implementation::DebugOutput& redirected,
        Implementation::DebugOutput output, Flags flags = {});

private:
    Implementation::DebugOutput& _redirected;
    Implementation::DebugOutput _previous, _output;
    Flags _flags;
    std::string _line;
    bool _space = false, _written = false;
};

/** @brief Print to a temporary output */
template<class T> Debug& operator<<(Debug&& debug, const T& value) {
    return debug << value;
}

/** @brief Warning output, see @ref Debug */
class Warning: public Debug {
public:
    /** @brief Print to the standard error output, unless redirected */
    explicit Warning();

    /** @brief Redirect to a stream */
    explicit Warning(std::ostream* output);

    /** @brief Discard everything */
    explicit Warning(std::nullptr_t);
};

/** @brief Error output, see @ref Debug */
class Error: public Debug {
public:
    /** @brief The standard error output */
    static std::ostream* defaultOutput();

    /** @brief Print to the standard error output, unless redirected */
    explicit Error();

    /** @brief Redirect to a stream */
    explicit Error(std::ostream* output);

    /** @brief Discard everything */
    explicit Error(std::nullptr_t);

    /** @brief Redirect to a string, which is appended to */
    explicit Error(Containers::String* output);
};

}}

#endif
