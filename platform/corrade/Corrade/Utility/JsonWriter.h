#ifndef Corrade_Utility_JsonWriter_h
#define Corrade_Utility_JsonWriter_h

/** @file
 * @brief Class @ref Corrade::Utility::JsonWriter
 */

#include <cstdint>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Containers/Pointer.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade { namespace Utility {

/**
@brief JSON writer

Values are written one after another, the writer adds commas, line breaks and
indentation. Writing something that isn't expected at given place is asserted.
The output is always valid JSON: control characters are escaped and each
sequence that isn't valid UTF-8 gets replaced with U+FFFD.
*/
class JsonWriter {
public:
    /** @brief Option */
    enum class Option {
        /** Each value on its own line */
        Wrap = 1 << 0,

        /** A space after a colon, and after a comma inside of a line */
        TypographicalSpace = 1 << 1
    };

    /** @brief Options */
    typedef Containers::EnumSet<Option> Options;

    CORRADE_ENUMSET_FRIEND_OPERATORS(Options)

    /**
     * @brief Constructor
     * @param options               Options
     * @param indentation           Spaces for each nesting level if
     *      wrapping. Expects at most 8.
     * @param initialIndentation    Spaces at the begin of each line but
     *      the first
     *
     * There's a newline at the end if wrapping with no initial
     * indentation.
     */
    explicit JsonWriter(Options options, std::uint32_t indentation,
        std::uint32_t initialIndentation = 0);

    /** @brief Compact output */
    explicit JsonWriter(): JsonWriter{{}, 0, 0} {}

    JsonWriter(const JsonWriter&) = delete;

    /** @brief Move constructor */
    JsonWriter(JsonWriter&&) noexcept;

    ~JsonWriter();

    JsonWriter& operator=(const JsonWriter&) = delete;

    /** @brief Move assignment */
    JsonWriter& operator=(JsonWriter&&) noexcept;

    /** @brief Whether nothing was written yet */
    bool isEmpty() const;

    /** @brief Size of what was written so far */
    std::size_t size() const;

    /** @brief Begin an object. Expects that a value can be here. */
    JsonWriter& beginObject();

    /** @brief End an object. Expects that an object key can be here. */
    JsonWriter& endObject();

    /** @brief Begin an array. Expects that a value can be here. */
    JsonWriter& beginArray();

    /** @brief End an array. Expects that an array value can be here. */
    JsonWriter& endArray();

    /** @brief Write an object key. Expects that it can be here. */
    JsonWriter& writeKey(Containers::StringView key);

    /** @brief Write a value. Expects that it can be here. */
    JsonWriter& write(std::nullptr_t);

    /** @overload */
    template<class T, std::enable_if_t<std::is_same_v<T, bool>, int> = 0>
    JsonWriter& write(T value) {
        return writeBool(value);
    }
    JsonWriter& write(Containers::StringView value); /**< @overload */

    /**
     * @brief Write a number
     *
     * Expects that it can be here and that it's finite.
     */
    JsonWriter& write(float value);
    JsonWriter& write(double value); /**< @overload */

    /**
     * @brief Write an integer
     *
     * Expects that it can be here and that it's within 52 bits, so it doesn't
     * lose precision in other software.
     */
    JsonWriter& write(int value) {
        return write(static_cast<long long>(value));
    }

    /** @overload */
    JsonWriter& write(unsigned value) {
        return write(static_cast<unsigned long long>(value));
    }

    /** @overload */
    JsonWriter& write(long value) {
        return write(static_cast<long long>(value));
    }

    /** @overload */
    JsonWriter& write(unsigned long value) {
        return write(static_cast<unsigned long long>(value));
    }
    JsonWriter& write(long long value); /**< @overload */
    JsonWriter& write(unsigned long long value); /**< @overload */

    /**
     * @brief The output
     *
     * Null-terminated, valid until the writer is moved from or destroyed.
     * Expects that the root value is complete.
     */
    Containers::StringView toString() const;

    /**
     * @brief Write the output to a file
     *
     * Prints a message to @ref Error and returns @cpp false @ce if that
     * fails. Expects that the root value is complete.
     */
    bool toFile(Containers::StringView filename) const;

private:
    struct State;

    JsonWriter& writeBool(bool value);
    JsonWriter& writeLiteral(Containers::StringView literal);
    JsonWriter& begin(char brace, const char* function);
    JsonWriter& end(char brace, const char* function);

    Containers::Pointer<State> _state;
};

}}

#endif
