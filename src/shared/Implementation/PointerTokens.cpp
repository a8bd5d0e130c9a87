#include "shared/Implementation/PointerTokens.h"

namespace OrrelinEngine {

bool PointerTokens::isValid(Containers::StringView pointer) {
    /* Without escapes, any text behind the first slash is valid */
    if(!pointer.contains('~'))
        return pointer.isEmpty() || pointer[0] == '/';
    PointerTokens tokens{pointer};
    while(tokens.next()) {
    }
    return tokens.reachedEnd();
}

bool PointerTokens::unescape() {
    _unescaped = Containers::String{Corrade::NoInit, _name.size()};
    std::size_t size = 0;
    for(std::size_t i = 0; i != _name.size(); ++i) {
        char c = _name[i];
        if(c == '~') {
            ++i;
            if(i == _name.size() || (_name[i] != '0' && _name[i] != '1')) {
                _invalid = true;
                return false;
            }
            c = _name[i] == '0' ? '~' : '/';
        }
        _unescaped[size++] = c;
    }
    _name = Containers::StringView{_unescaped}.prefix(size);
    return true;
}

std::uint32_t PointerTokens::index() const {
    if(_name.isEmpty() || _name.size() > 10 ||
        (_name.size() > 1 && _name[0] == '0'))
        return NoIndex;
    /* Ten digits can't overflow 64 bits, so the limit is checked at the end */
    std::uint64_t out = 0;
    for(const char c: _name) {
        if(c < '0' || c > '9')
            return NoIndex;
        out = out * 10 + std::uint64_t(c - '0');
    }
    return out < NoIndex ? std::uint32_t(out) : NoIndex;
}

}
