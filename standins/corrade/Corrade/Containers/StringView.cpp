#include "Corrade/Containers/StringView.h"

#include <algorithm>
#include <string_view>

#include "Corrade/Containers/GrowableArray.h"
#include "Corrade/Containers/StaticArray.h"
#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringIterable.h"

namespace Corrade { namespace Containers {

namespace {

std::string_view stl(const StringView view) {
    return {view.data(), view.size()};
}

}

StringView::StringView(const String& string) noexcept:
    StringView{string.data(), string.size(), StringViewFlag::NullTerminated} {}

StringView StringView::exceptPrefix(const StringView prefix) const {
    CORRADE_ASSERT(hasPrefix(prefix),
        "Containers::StringView::exceptPrefix(): there is no prefix" << prefix,
        {});
    return exceptPrefix(prefix.size());
}

StringView StringView::exceptSuffix(const StringView suffix) const {
    CORRADE_ASSERT(hasSuffix(suffix),
        "Containers::StringView::exceptSuffix(): there is no suffix" << suffix,
        {});
    return exceptSuffix(suffix.size());
}

Array<StringView> StringView::split(const char delimiter) const {
    Array<StringView> out;
    if(isEmpty())
        return out;
    const char* begin = _data;
    for(;;) {
        const char* const found = std::find(begin, end(), delimiter);
        arrayAppend(out, suffix(begin).prefix(found));
        if(found == end())
            return out;
        begin = found + 1;
    }
}

Array3<StringView> StringView::partition(const char separator) const {
    const StringView found = findOr(separator, end());
    return {InPlaceInit, prefix(found.begin()), found, suffix(found.end())};
}

String StringView::join(const StringIterable& strings) const {
    if(strings.isEmpty())
        return {};
    std::size_t size = (strings.size() - 1) * this->size();
    for(const StringView i: strings)
        size += i.size();

    String out{NoInit, size};
    char* position = out.data();
    for(const StringView i: strings) {
        position = std::copy(i.begin(), i.end(), position);
        if(position != out.end())
            position = std::copy(begin(), end(), position);
    }
    return out;
}

bool StringView::hasPrefix(const StringView prefix) const {
    return size() >= prefix.size() && this->prefix(prefix.size()) == prefix;
}

bool StringView::hasPrefix(const char prefix) const {
    return !isEmpty() && _data[0] == prefix;
}

bool StringView::hasSuffix(const StringView suffix) const {
    return size() >= suffix.size() &&
        exceptPrefix(size() - suffix.size()) == suffix;
}

bool StringView::hasSuffix(const char suffix) const {
    return !isEmpty() && _data[size() - 1] == suffix;
}

StringView StringView::trimmed() const {
    constexpr std::string_view whitespace = " \t\f\v\r\n";
    const std::size_t begin = stl(*this).find_first_not_of(whitespace);
    return begin == std::string_view::npos
        ? exceptPrefix(size())
        : slice(begin, stl(*this).find_last_not_of(whitespace) + 1);
}

StringView StringView::findOr(
    const char character, const char* const fail) const {
    const std::size_t found = stl(*this).find(character);
    return found == std::string_view::npos ? StringView{fail, 0}
                                           : slice(found, found + 1);
}

StringView StringView::findLastOr(
    const char character, const char* const fail) const {
    const std::size_t found = stl(*this).rfind(character);
    return found == std::string_view::npos ? StringView{fail, 0}
                                           : slice(found, found + 1);
}

bool StringView::contains(const char character) const {
    return stl(*this).find(character) != std::string_view::npos;
}

/* The standard library compares characters as unsigned bytes, too */
bool operator==(const StringView a, const StringView b) {
    return stl(a) == stl(b);
}
bool operator!=(const StringView a, const StringView b) {
    return stl(a) != stl(b);
}
bool operator<(const StringView a, const StringView b) {
    return stl(a) < stl(b);
}

String operator+(const StringView a, const StringView b) {
    return StringView{}.join({a, b});
}

}}
