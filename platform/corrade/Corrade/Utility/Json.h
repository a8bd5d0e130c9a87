#ifndef Corrade_Utility_Json_h
#define Corrade_Utility_Json_h

/** @file
 * @brief Class @ref Corrade::Utility::Json, @ref Corrade::Utility::JsonToken,
 *      @ref Corrade::Utility::JsonTokenData, @ref
 *      Corrade::Utility::JsonIterator, @ref Corrade::Utility::JsonObjectView,
 *      @ref Corrade::Utility::JsonObjectIterator, @ref
 *      Corrade::Utility::JsonObjectItem, @ref Corrade::Utility::JsonArrayView,
 *      @ref Corrade::Utility::JsonArrayIterator, @ref
 *      Corrade::Utility::JsonArrayItem
 */

#include <cstdint>

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Containers/Pointer.h"
#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Utility {

namespace Implementation {
struct JsonData;
}

/**
@brief JSON parser

Checks a whole document and makes a flat list of its tokens, each container
before its contents and each key before its value. Any nesting depth is fine,
nothing is recursive. Escape sequences are decoded, each half of a surrogate
pair on its own; whether texts are UTF-8 and what's in numbers isn't checked.
*/
class Json {
public:
    /** @brief What can be accessed */
    enum class Option {
        ParseLiterals = 1 << 0, /**< Null and bool values, objects and arrays */
        ParseStringKeys = 1 << 3, /**< Object keys */
        ParseStrings =
            ParseStringKeys | (1 << 4) /**< Object keys and string values */
    };

    /** @brief Options */
    typedef Containers::EnumSet<Option> Options;

    CORRADE_ENUMSET_FRIEND_OPERATORS(Options)

    /**
     * @brief Parse a string
     * @param string        The whole document, with no byte order mark
     * @param options       What will be accessed
     * @param filename      Name for error messages
     *
     * Makes a copy of the string, unless it's global. On error prints a
     * message with the line and column to @ref Error and returns an empty
     * optional. Duplicate keys aren't an error.
     */
    static Containers::Optional<Json> fromString(Containers::StringView string,
        Options options = {}, Containers::StringView filename = {});

    Json(const Json&) = delete;

    /** @brief Move constructor, tokens stay valid */
    Json(Json&&) noexcept;

    ~Json();

    Json& operator=(const Json&) = delete;

    /** @brief Move assignment, tokens stay valid */
    Json& operator=(Json&&) noexcept;

    /** @brief Root value */
    JsonToken root() const;

private:
    explicit Json(
        Containers::Pointer<Implementation::JsonData>&& data) noexcept;

    Containers::Pointer<Implementation::JsonData> _data;
};

/**
@brief One value or object key

Valid as long as the @ref Json instance it came from.
*/
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

    /** @brief The token as it's in the document */
    Containers::StringView data() const;

    /** @brief Type */
    Type type() const;

    /** @brief Whether the value can be accessed */
    bool isParsed() const;

    /**
     * @brief Count of all tokens inside, not just of the direct ones
     *
     * For a key it's the value and what's inside.
     */
    std::size_t childCount() const;

    /** @brief Object contents. Expects a parsed object. */
    JsonObjectView asObject() const;

    /** @brief Array contents. Expects a parsed array. */
    JsonArrayView asArray() const;

    /**
     * @brief Find an object value
     *
     * Goes through the keys one by one and stops at the first equal one.
     * Returns an invalid iterator if there's none. Expects a parsed object
     * with parsed keys.
     */
    JsonIterator find(Containers::StringView key) const;

    /** @brief Find an array value. Expects a parsed array. */
    JsonIterator find(std::size_t index) const;

    /** @brief Object value with given key. Expects that it's there. */
    JsonToken operator[](Containers::StringView key) const;

    /** @brief Array value at given index. Expects that it's there. */
    JsonToken operator[](std::size_t index) const;

    /** @brief Null value. Expects a parsed null. */
    std::nullptr_t asNull() const;

    /** @brief Bool value. Expects a parsed bool. */
    bool asBool() const;

    /**
     * @brief String or object key
     *
     * Expects that it's parsed. Not null-terminated.
     */
    Containers::StringView asString() const;

private:
    friend Json;
    friend JsonArrayIterator;
    friend JsonArrayView;
    friend JsonIterator;
    friend JsonObjectItem;
    friend JsonObjectIterator;
    friend JsonObjectView;

    explicit JsonToken(
        const Implementation::JsonData* data, std::size_t index) noexcept:
        _data{data},
        _index{index} {}

    const JsonTokenData& token() const;
    void expect(Type type, const char* function) const;

    const Implementation::JsonData* _data;
    std::size_t _index;
};

/** @brief Print a token type */
Debug& operator<<(Debug& debug, JsonToken::Type value);

/** @brief Iterator to a token, or an invalid one */
class JsonIterator {
public:
    /** @brief Invalid iterator */
    /*implicit*/ JsonIterator() noexcept: _token{nullptr, 0} {}

    /** @brief Iterator to a token */
    /*implicit*/ JsonIterator(JsonToken token) noexcept: _token{token} {}

    /** @brief Whether it's valid */
    explicit operator bool() const { return _token._data; }

    /** @brief The token. Expects that the iterator is valid. */
    JsonToken operator*() const { return *operator->(); }

    /** @overload */
    const JsonToken* operator->() const {
        CORRADE_DEBUG_ASSERT(_token._data,
            "Utility::JsonIterator: the iterator is invalid", &_token);
        return &_token;
    }

private:
    JsonToken _token;
};

/** @brief Key and value of an object */
class JsonObjectItem {
public:
    /** @brief Key. Expects that it's parsed. */
    Containers::StringView key() const { return _key.asString(); }

    /** @brief Value */
    JsonToken value() const { return JsonToken{_key._data, _key._index + 1}; }

private:
    friend JsonObjectIterator;

    explicit JsonObjectItem(JsonToken key) noexcept: _key{key} {}

    JsonToken _key;
};

/** @brief Iterator of an object */
class JsonObjectIterator {
public:
    /** @brief Equality */
    bool operator==(const JsonObjectIterator& other) const {
        return _token._index == other._token._index;
    }

    /** @brief Inequality */
    bool operator!=(const JsonObjectIterator& other) const {
        return !(*this == other);
    }

    /** @brief Advance to the next item */
    JsonObjectIterator& operator++() {
        _token._index += 1 + _token.childCount();
        return *this;
    }

    /** @brief The item */
    JsonObjectItem operator*() const { return JsonObjectItem{_token}; }

private:
    friend JsonObjectView;

    explicit JsonObjectIterator(JsonToken token) noexcept: _token{token} {}

    JsonToken _token;
};

/** @brief View on an object, in the order of the document */
class JsonObjectView {
public:
    /** @brief Iterator to the first item */
    JsonObjectIterator begin() const {
        return JsonObjectIterator{JsonToken{_object._data, _object._index + 1}};
    }

    /** @brief Iterator to after the last item */
    JsonObjectIterator end() const {
        return JsonObjectIterator{JsonToken{
            _object._data, _object._index + 1 + _object.childCount()}};
    }

    /** @copydoc JsonToken::find(Containers::StringView) const */
    JsonIterator find(Containers::StringView key) const {
        return _object.find(key);
    }

    /** @copydoc JsonToken::operator[](Containers::StringView) const */
    JsonToken operator[](Containers::StringView key) const {
        return _object[key];
    }

private:
    friend JsonToken;

    explicit JsonObjectView(JsonToken object) noexcept: _object{object} {}

    JsonToken _object;
};

/** @brief Index and value of an array */
class JsonArrayItem {
public:
    /** @brief Index */
    std::size_t index() const { return _index; }

    /** @brief Value */
    JsonToken value() const { return _value; }
    /*implicit*/ operator JsonToken() const { return _value; } /**< @overload */

private:
    friend JsonArrayIterator;

    explicit JsonArrayItem(std::size_t index, JsonToken value) noexcept:
        _index{index}, _value{value} {}

    std::size_t _index;
    JsonToken _value;
};

/** @brief Iterator of an array */
class JsonArrayIterator {
public:
    /** @brief Equality */
    bool operator==(const JsonArrayIterator& other) const {
        return _token._index == other._token._index;
    }

    /** @brief Inequality */
    bool operator!=(const JsonArrayIterator& other) const {
        return !(*this == other);
    }

    /** @brief Advance to the next item */
    JsonArrayIterator& operator++() {
        _token._index += 1 + _token.childCount();
        ++_index;
        return *this;
    }

    /** @brief The item */
    JsonArrayItem operator*() const { return JsonArrayItem{_index, _token}; }

private:
    friend JsonArrayView;

    explicit JsonArrayIterator(JsonToken token) noexcept:
        _index{}, _token{token} {}

    std::size_t _index;
    JsonToken _token;
};

/** @brief View on an array */
class JsonArrayView {
public:
    /** @brief Iterator to the first item */
    JsonArrayIterator begin() const {
        return JsonArrayIterator{JsonToken{_array._data, _array._index + 1}};
    }

    /** @brief Iterator to after the last item */
    JsonArrayIterator end() const {
        return JsonArrayIterator{
            JsonToken{_array._data, _array._index + 1 + _array.childCount()}};
    }

    /** @copydoc JsonToken::find(std::size_t) const */
    JsonIterator find(std::size_t index) const { return _array.find(index); }

    /** @copydoc JsonToken::operator[](std::size_t) const */
    JsonToken operator[](std::size_t index) const { return _array[index]; }

private:
    friend JsonToken;

    explicit JsonArrayView(JsonToken array) noexcept: _array{array} {}

    JsonToken _array;
};

}}

#endif
