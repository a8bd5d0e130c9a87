#include "ExchangeTable.h"

#include <algorithm>
#include <string_view>
#include <Corrade/Utility/Format.h>

#include "shared/Implementation/utf8.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

namespace {

constexpr std::size_t MarkSize = 8;

struct Mark {
    char letters[MarkSize];
};

/* The multiplications, with two large primes, make each letter depend on all of
   the three */
Mark markOf(std::uint64_t key, Containers::StringView code,
    Containers::StringView text) {
    std::uint64_t hash = (key ^ StrHash{}(code)) * 0x9e3779b97f4a7c15ull;
    hash ^= hash >> 32;
    hash = (hash + StrHash{}(text)) * 0xc2b2ae3d27d4eb4full;
    Mark out;
    for(char& letter: out.letters) {
        letter = char('a' + (hash >> 60));
        hash <<= 4;
    }
    return out;
}

}

Marks::Marks(Containers::StringView key): _key{StrHash{}(key)} {}

void Marks::append(std::string& out, Containers::StringView code,
    Containers::StringView text) const {
    out.append(markOf(_key, code, text).letters, MarkSize);
}

bool Marks::areIn(Containers::StringView list, Containers::StringView code,
    Containers::StringView text) const {
    const std::string_view all{list.data(), list.size()};
    const Mark mark = markOf(_key, code, text);
    return all.find({mark.letters, MarkSize}) != all.npos;
}

void appendNote(std::string& out, const ExchangeTarget& target) {
    if(target.state != TargetState::NeedsReview)
        return;
    out += "The translation was made from ";
    if(target.before.isEmpty())
        out += "another text";
    else
        (out += '"').append(target.before.data(), target.before.size()) += '"';
}

std::size_t LineCounter::lineOf(std::size_t offset) {
    const char* const begin = _content.begin();
    if(offset < _offset) {
        _offset = 0;
        _line = 1;
    }
    _line += std::size_t(std::count(begin + _offset, begin + offset, '\n'));
    _offset = offset;
    return _line;
}

Containers::String textFault(Containers::StringView content) {
    const std::size_t size = utf8Size(content);
    if(size != content.size())
        return Utility::format("text that isn't UTF-8 at line {}",
            LineCounter{content}.lineOf(size));
    const std::size_t zero = std::size_t(
        std::find(content.begin(), content.end(), '\0') - content.begin());
    return zero == content.size() ? Containers::String{}
                                  : Utility::format("a zero byte at line {}",
                                        LineCounter{content}.lineOf(zero));
}

Containers::StringView withoutByteOrderMark(Containers::StringView content) {
    const Containers::StringView mark = "\xef\xbb\xbf";
    return content.hasPrefix(mark) ? content.exceptPrefix(mark.size())
                                   : content;
}

}}
