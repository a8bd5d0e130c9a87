#ifndef Orrelin_shared_Implementation_PointerTokens
#define Orrelin_shared_Implementation_PointerTokens

#include <cstdint>
#include <cstring>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Walks the tokens of a JSON Pointer, which has to stay for as long. The rules
   are those of RapidJSON's pointers: an index has no leading zeros and is less
   than 2^32 - 1. */
class PointerTokens {
public:
    static constexpr std::uint32_t NoIndex = ~std::uint32_t{};

    /* Whether the pointer is empty or begins with "/", and all of its "~"
       begin an escape */
    static bool isValid(Containers::StringView pointer);

    explicit PointerTokens(Containers::StringView pointer):
        _begin{pointer.data()}, _at{_begin}, _end{_begin + pointer.size()},
        _hasEscapes{
            !pointer.isEmpty() && std::memchr(_begin, '~', pointer.size())} {}

    /* Goes to the next token. False if there is none or it isn't valid;
       reachedEnd() tells which. Inline, as every look-up calls it. */
    bool next() {
        if(_at == _end || _invalid)
            return false;
        if(*_at != '/') {
            _invalid = true;
            return false;
        }
        const char* const begin = ++_at;
        while(_at != _end && *_at != '/')
            ++_at;
        _name = {begin, std::size_t(_at - begin)};
        return !_hasEscapes || unescape();
    }

    /* Where in the pointer the next token begins, with its slash */
    std::size_t offset() const { return std::size_t(_at - _begin); }

    /* Whether the walk came to the end of the pointer, all of it valid */
    bool reachedEnd() const { return _at == _end && !_invalid; }

    /* The current token with escapes resolved; valid until the next one */
    Containers::StringView name() const { return _name; }

    /* The current token as an index, NoIndex if it isn't one */
    std::uint32_t index() const;

private:
    /* Resolves the escapes of the current token; false if one isn't valid */
    bool unescape();

    const char* _begin;
    const char* _at;
    const char* _end;
    bool _hasEscapes;
    bool _invalid = false;
    Containers::StringView _name;
    Containers::String _unescaped;
};

}

#endif
