#ifndef Corrade_Utility_Json_h
#define Corrade_Utility_Json_h

/** @file
 * @brief Class @ref Corrade::Utility::Json, @ref Corrade::Utility::JsonToken,
 *      @ref Corrade::Utility::JsonIterator, @ref
 *      Corrade::Utility::JsonObjectView, @ref
 *      Corrade::Utility::JsonObjectIterator, @ref
 *      Corrade::Utility::JsonObjectItem
 */

#include <cstdint>

#include "Corrade/Containers/Array.h"
#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Utility {

namespace Implementation {
struct JsonTokenData;
}

/** @brief One value or object key, valid as long as its @ref Json */
class JsonToken {
public:
    /** @brief Type */
    enum class Type : std::uint8_t {
        Object, /**< Object */
        Array, /**< Array */
        Null, /**< Null */
        Bool, /**< Bool */
        Number, /**< Number */
        String /**< String or object key */
    };

    /** @brief Type */
    Type type() const;

    /** @brief Object contents. Expects an object. */
    JsonObjectView asObject() const;

    /**
     * @brief Find an object value
     *
     * Goes through the keys one by one and stops at the first equal one.
     * Returns an invalid iterator if there's none. Expects an object.
     */
    JsonIterator find(Containers::StringView key) const;

    /** @brief Object value with given key. Expects that it's there. */
    JsonToken operator[](Containers::StringView key) const;

    /** @brief String or object key. Expects one. Not null-terminated. */
    Containers::StringView asString() const;

private:
    friend Json;
    friend JsonIterator;
    friend JsonObjectItem;
    friend JsonObjectIterator;

    explicit JsonToken(const Implementation::JsonTokenData* data) noexcept:
        _data{data} {}

    const Implementation::JsonTokenData* _data;
};

/**
@brief JSON parser

Checks a whole document and makes a flat list of its tokens, each container
before its contents and each key before its value. Any nesting depth is fine,
nothing is recursive. Escape sequences are decoded, each half of a surrogate
pair on its own. Neither texts are checked to be UTF-8 nor numbers to be valid.
*/
class Json {
public:
    /** @brief Kinds of values that can be accessed */
    enum class Option {
        ParseLiterals = 1 << 0, /**< Null and bool values, objects and arrays */
        ParseStrings = 3 << 3 /**< Object keys and string values */
    };

    /** @brief Options */
    typedef Containers::EnumSet<Option> Options;

    CORRADE_ENUMSET_FRIEND_OPERATORS(Options)

    /**
     * @brief Parse a string
     * @param string        The whole document, with no byte order mark
     * @param options       Kinds of values to access. Expects all of them.
     *
     * Makes a copy of the string. On error prints a message with the place in
     * the document to @ref Error and returns an empty optional. Duplicate keys
     * aren't an error.
     */
    static Containers::Optional<Json> fromString(
        Containers::StringView string, Options options);

    ~Json();

    /** @brief Move constructor, tokens stay valid */
    Json(Json&&) noexcept;

    /** @brief Move assignment, tokens stay valid */
    Json& operator=(Json&&) noexcept;

    /** @brief Root value */
    JsonToken root() const { return JsonToken{_tokens.data()}; }

private:
    explicit Json(Containers::Array<char>&& text,
        Containers::Array<Implementation::JsonTokenData>&& tokens) noexcept;

    Containers::Array<char> _text;
    Containers::Array<Implementation::JsonTokenData> _tokens;
};

/** @brief Iterator to a token, or an invalid one */
class JsonIterator {
public:
    /** @brief Invalid iterator */
    /*implicit*/ JsonIterator() noexcept: _token{nullptr} {}

    /** @brief Iterator to a token */
    /*implicit*/ JsonIterator(JsonToken token) noexcept: _token{token} {}

    /** @brief Whether it's valid */
    explicit operator bool() const { return _token._data; }

    /** @brief The token. Expects that the iterator is valid. */
    JsonToken operator*() const { return *operator->(); }
    const JsonToken* operator->() const {
        CORRADE_INTERNAL_DEBUG_ASSERT(_token._data);
        return &_token;
    } /**< @overload */

private:
    JsonToken _token;
};

/** @brief Key and value of an object */
class JsonObjectItem {
public:
    /** @brief Key */
    Containers::StringView key() const { return _key.asString(); }

    /** @brief Value */
    JsonToken value() const;

private:
    friend JsonObjectIterator;

    explicit JsonObjectItem(JsonToken key) noexcept: _key{key} {}

    JsonToken _key;
};

/** @brief Iterator of an object */
class JsonObjectIterator {
public:
    /** @brief Inequality */
    bool operator!=(const JsonObjectIterator& other) const {
        return _token._data != other._token._data;
    }

    /** @brief Advance to the next item */
    JsonObjectIterator& operator++();

    /** @brief The item */
    JsonObjectItem operator*() const { return JsonObjectItem{_token}; }

private:
    friend JsonToken;

    explicit JsonObjectIterator(JsonToken token) noexcept: _token{token} {}

    JsonToken _token;
};

/** @brief View on an object, in the order of the document */
class JsonObjectView {
public:
    /** @brief Iterator to the first item */
    JsonObjectIterator begin() const { return _begin; }

    /** @brief Iterator to after the last item */
    JsonObjectIterator end() const { return _end; }

private:
    friend JsonToken;

    explicit JsonObjectView(
        JsonObjectIterator begin, JsonObjectIterator end) noexcept:
        _begin{begin},
        _end{end} {}

    JsonObjectIterator _begin, _end;
};

}}

#endif
