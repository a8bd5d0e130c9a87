#ifndef Corrade_Utility_JsonWriter_h
#define Corrade_Utility_JsonWriter_h

/** @file
 * @brief Class @ref Corrade::Utility::JsonWriter
 */

#include <cstdint>
#include <string>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Utility {

/**
@brief JSON writer

Keys and values of objects are written one after another, the writer adds
commas, line breaks and indentation. Control characters are escaped, bytes that
aren't UTF-8 stay as they are. That something is written where it can be isn't
checked.
*/
class JsonWriter {
public:
    /** @brief Option */
    enum class Option {
        Wrap = 1 << 0, /**< Each value on its own line */
        TypographicalSpace = 1 << 1 /**< A space after a colon */
    };

    /** @brief Options */
    typedef Containers::EnumSet<Option> Options;

    CORRADE_ENUMSET_FRIEND_OPERATORS(Options)

    /**
     * @brief Constructor
     * @param options               Options. Expects both.
     * @param indentation           Spaces for each nesting level
     * @param initialIndentation    Expects zero
     */
    explicit JsonWriter(Options options, std::uint32_t indentation,
        std::uint32_t initialIndentation = 0);

    /** @brief Begin an object */
    JsonWriter& beginObject();

    /** @brief End an object */
    JsonWriter& endObject();

    /** @brief Write an object key */
    JsonWriter& writeKey(Containers::StringView key);

    /** @brief Write a value */
    JsonWriter& write(std::nullptr_t);
    JsonWriter& write(Containers::StringView value); /**< @overload */

    /**
     * @brief The output, with a newline at the end
     *
     * Valid until the writer is destroyed or written to.
     */
    Containers::StringView toString() const {
        return {_out.data(), _out.size()};
    }

private:
    void newline();
    void quoted(Containers::StringView string);

    std::string _out;
    std::size_t _indentation, _level = 0;
    bool _isEmpty = true;
};

}}

#endif
