#ifndef Orrelin_OrrelinEditorData_PointerTokens_h
#define Orrelin_OrrelinEditorData_PointerTokens_h

#include <cstdint>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Walks the tokens of a JSON Pointer, with the rules of RapidJSON's pointers:
   an index has neither leading zeros nor more than 32 bits */
class PointerTokens {
public:
    static constexpr std::uint32_t NoIndex = ~std::uint32_t{};

    /* Whether the pointer is empty or begins with "/", and all of its "~"
       begin an escape */
    static bool isValid(Containers::StringView pointer);

    explicit PointerTokens(Containers::StringView pointer): _rest{pointer} {}

    /* Goes to the next token. False if there is none or it isn't valid. */
    bool next();

    /* Whether there is a token after the current one */
    bool hasNext() const { return !_rest.isEmpty(); }

    /* Whether the walk ended at the pointer's end */
    bool reachedEnd() const { return _rest.isEmpty() && !_invalid; }

    /* The current token with escapes resolved; valid until the next one */
    Containers::StringView name() const { return _name; }

    /* The current token as an index, NoIndex if it's none */
    std::uint32_t index() const;

private:
    Containers::StringView _rest;
    Containers::StringView _name;
    Containers::String _unescaped;
    bool _invalid = false;
};

}

#endif
