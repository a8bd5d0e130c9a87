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

template<class T> Array<BasicStringView<T>> splitParts(
    const BasicStringView<T> view, const char delimiter, const bool withEmpty) {
    Array<BasicStringView<T>> out;
    for(BasicStringView<T> rest = view; rest.data() && !view.isEmpty();) {
        const BasicStringView<T> separator = rest.findOr(delimiter, rest.end());
        const BasicStringView<T> part = rest.prefix(separator.begin());
        if(withEmpty || part)
            arrayAppend(out, part);
        if(!separator)
            break;
        rest = rest.suffix(separator.end());
    }
    return out;
}

String joinParts(const StringView delimiter, const StringIterable& strings,
    const bool withEmpty) {
    std::size_t size = 0, count = 0;
    for(const StringView i: strings)
        if(withEmpty || i) {
            size += i.size();
            ++count;
        }
    if(count > 1)
        size += (count - 1) * delimiter.size();

    String out{NoInit, size};
    char* position = out.data();
    bool first = true;
    for(const StringView i: strings)
        if(withEmpty || i) {
            if(!first)
                position =
                    std::copy(delimiter.begin(), delimiter.end(), position);
            position = std::copy(i.begin(), i.end(), position);
            first = false;
        }
    return out;
}

}

template<class T> BasicStringView<T>::BasicStringView(String& string) noexcept:
    BasicStringView{
        string.data(), string.size(), StringViewFlag::NullTerminated} {}

template<class T> template<class U, std::enable_if_t<std::is_const_v<U>, int>>
BasicStringView<T>::BasicStringView(const String& string) noexcept:
    BasicStringView{
        string.data(), string.size(), StringViewFlag::NullTerminated} {}

template<class T> BasicStringView<T> BasicStringView<T>::exceptPrefix(
    const StringView prefix) const {
    CORRADE_ASSERT(hasPrefix(prefix),
        "Containers::StringView::exceptPrefix(): there is no prefix" << prefix,
        {});
    return exceptPrefix(prefix.size());
}

template<class T> BasicStringView<T> BasicStringView<T>::exceptSuffix(
    const StringView suffix) const {
    CORRADE_ASSERT(hasSuffix(suffix),
        "Containers::StringView::exceptSuffix(): there is no suffix" << suffix,
        {});
    return exceptSuffix(suffix.size());
}

template<class T> Array<BasicStringView<T>> BasicStringView<T>::split(
    const char delimiter) const {
    return splitParts(*this, delimiter, true);
}

template<class T>
Array<BasicStringView<T>> BasicStringView<T>::splitWithoutEmptyParts(
    const char delimiter) const {
    return splitParts(*this, delimiter, false);
}

template<class T> Array3<BasicStringView<T>> BasicStringView<T>::partition(
    const char separator) const {
    const BasicStringView<T> found = findOr(separator, end());
    return {InPlaceInit, prefix(found.begin()), found, suffix(found.end())};
}

template<class T> Array3<BasicStringView<T>> BasicStringView<T>::partitionLast(
    const char separator) const {
    const BasicStringView<T> found = findLastOr(separator, begin());
    return {InPlaceInit, prefix(found.begin()), found, suffix(found.end())};
}

template<class T>
String BasicStringView<T>::join(const StringIterable& strings) const {
    return joinParts(*this, strings, true);
}

template<class T> String BasicStringView<T>::joinWithoutEmptyParts(
    const StringIterable& strings) const {
    return joinParts(*this, strings, false);
}

template<class T>
bool BasicStringView<T>::hasPrefix(const StringView prefix) const {
    return size() >= prefix.size() && this->prefix(prefix.size()) == prefix;
}

template<class T> bool BasicStringView<T>::hasPrefix(const char prefix) const {
    return !isEmpty() && front() == prefix;
}

template<class T>
bool BasicStringView<T>::hasSuffix(const StringView suffix) const {
    return size() >= suffix.size() &&
        exceptPrefix(size() - suffix.size()) == suffix;
}

template<class T> bool BasicStringView<T>::hasSuffix(const char suffix) const {
    return !isEmpty() && back() == suffix;
}

template<class T> BasicStringView<T> BasicStringView<T>::trimmed(
    const StringView characters) const {
    BasicStringView<T> out = *this;
    while(out && characters.contains(out.front()))
        out = out.exceptPrefix(1);
    while(out && characters.contains(out.back()))
        out = out.exceptSuffix(1);
    return out;
}

template<class T> BasicStringView<T> BasicStringView<T>::trimmed() const {
    using namespace Literals;
    return trimmed(" \t\f\v\r\n"_s);
}

template<class T> BasicStringView<T> BasicStringView<T>::found(
    const std::size_t position, const std::size_t size, T* const fail) const {
    return position == std::string_view::npos ? BasicStringView<T>{fail, 0}
                                              : sliceSize(position, size);
}

template<class T> BasicStringView<T> BasicStringView<T>::findOr(
    const StringView substring, T* const fail) const {
    return found(stl(*this).find(stl(substring)), substring.size(), fail);
}

template<class T> BasicStringView<T> BasicStringView<T>::findOr(
    const char character, T* const fail) const {
    return found(stl(*this).find(character), 1, fail);
}

template<class T> BasicStringView<T> BasicStringView<T>::findLastOr(
    const StringView substring, T* const fail) const {
    return found(stl(*this).rfind(stl(substring)), substring.size(), fail);
}

template<class T> BasicStringView<T> BasicStringView<T>::findLastOr(
    const char character, T* const fail) const {
    return found(stl(*this).rfind(character), 1, fail);
}

template<class T>
bool BasicStringView<T>::contains(const StringView substring) const {
    return stl(*this).find(stl(substring)) != std::string_view::npos;
}

template<class T>
bool BasicStringView<T>::contains(const char character) const {
    return stl(*this).find(character) != std::string_view::npos;
}

template<class T>
std::size_t BasicStringView<T>::count(const char character) const {
    return std::count(begin(), end(), character);
}

template class BasicStringView<char>;
template class BasicStringView<const char>;
template BasicStringView<const char>::BasicStringView(const String&) noexcept;

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
bool operator<=(const StringView a, const StringView b) {
    return stl(a) <= stl(b);
}
bool operator>(const StringView a, const StringView b) {
    return stl(a) > stl(b);
}
bool operator>=(const StringView a, const StringView b) {
    return stl(a) >= stl(b);
}

String operator+(const StringView a, const StringView b) {
    using namespace Literals;
    return ""_s.join({a, b});
}

}}
