#include "PointerTokens.h"

namespace OrrelinEngine {

namespace {

/* Empty if an escape is neither ~0 nor ~1; the token holds at least one */
Containers::String unescape(Containers::StringView token) {
    Containers::String out{Corrade::NoInit, token.size()};
    std::size_t size = 0;
    for(std::size_t i = 0; i != token.size(); ++i) {
        char c = token[i];
        if(c == '~') {
            ++i;
            if(i == token.size() || (token[i] != '0' && token[i] != '1'))
                return {};
            c = token[i] == '0' ? '~' : '/';
        }
        out[size++] = c;
    }
    return Containers::String{out.prefix(size)};
}

}

bool PointerTokens::isValid(Containers::StringView pointer) {
    if(!pointer.contains('~'))
        return pointer.isEmpty() || pointer[0] == '/';
    PointerTokens tokens{pointer};
    while(tokens.next()) {
    }
    return tokens.reachedEnd();
}

bool PointerTokens::next() {
    if(_rest.isEmpty() || _invalid)
        return false;
    if(_rest[0] != '/') {
        _invalid = true;
        return false;
    }

    const char* const begin = _rest.data() + 1;
    const char* const end = _rest.end();
    const char* at = begin;
    bool escaped = false;
    for(; at != end && *at != '/'; ++at)
        escaped = escaped || *at == '~';
    _name = {begin, std::size_t(at - begin)};
    _rest = {at, std::size_t(end - at)};

    if(escaped) {
        _unescaped = unescape(_name);
        _name = _unescaped;
        _invalid = _unescaped.isEmpty();
    }
    return !_invalid;
}

std::uint32_t PointerTokens::index() const {
    if(_name.isEmpty() || _name.size() > 10 ||
        (_name.size() > 1 && _name[0] == '0'))
        return NoIndex;
    std::uint64_t out = 0;
    for(const char c: _name) {
        if(c < '0' || c > '9')
            return NoIndex;
        out = out * 10 + std::uint64_t(c - '0');
    }
    return out < NoIndex ? std::uint32_t(out) : NoIndex;
}

}
