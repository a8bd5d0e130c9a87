#include "Corrade/Utility/Format.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <string>

#include "Corrade/Utility/Implementation/floatText.h"

namespace Corrade { namespace Utility { namespace Implementation {

class FormatOutput {
public:
    explicit FormatOutput(const char* format,
        Containers::ArrayView<const FormatArgument> arguments):
        _rest{format},
        _arguments{arguments} {
        while(_rest) {
            if(_rest.hasPrefix("{{") || _rest.hasPrefix("}}")) {
                _text.push_back(_rest.front());
                _rest = _rest.exceptPrefix(2);
            } else if(_rest.hasPrefix('{'))
                placeholder();
            else {
                CORRADE_ASSERT(!_rest.hasPrefix('}'),
                    "Utility::format(): a } with no { before", );
                const char* const brace = std::find_if(_rest.begin(),
                    _rest.end(), [](char c) { return c == '{' || c == '}'; });
                append(_rest.prefix(brace));
                _rest = _rest.suffix(brace);
            }
        }
    }

    Containers::StringView text() const { return {_text.data(), _text.size()}; }

private:
    void placeholder() {
        const Containers::StringView begin = _rest;
        _rest = _rest.exceptPrefix(1);

        const int index = number();
        int precision = -1;
        char type = '\0';
        if(consume(':')) {
            if(consume('.')) {
                precision = number();
                CORRADE_ASSERT(precision != -1,
                    "Utility::format(): a precision without a number", );
            }
            if(_rest && !_rest.hasPrefix('}')) {
                type = _rest.front();
                _rest = _rest.exceptPrefix(1);
            }
        }
        CORRADE_ASSERT(_rest, "Utility::format(): a placeholder with no end", );
        CORRADE_ASSERT(consume('}'),
            "Utility::format(): can't understand a placeholder from here on:"
                << _rest, );

        if(index != -1)
            _next = index;
        if(_next < _arguments.size())
            write(_arguments[_next], precision, type);
        else
            append(begin.prefix(_rest.begin()));
        ++_next;
    }

    bool consume(const char c) {
        if(!_rest.hasPrefix(c))
            return false;
        _rest = _rest.exceptPrefix(1);
        return true;
    }

    int number() {
        int out = -1;
        const char* const end =
            std::from_chars(_rest.begin(), _rest.end(), out).ptr;
        _rest = _rest.suffix(end);
        return out;
    }

    void append(const Containers::StringView text) {
        _text.append(text.data(), text.size());
    }

    void write(
        const FormatArgument& argument, const int precision, const char type) {
        switch(argument._type) {
        case FormatArgument::Type::Signed:
        case FormatArgument::Type::Unsigned:
            return writeInteger(argument, precision, type);
        case FormatArgument::Type::Float:
            return writeFloat(argument._float,
                precision == -1 ? std::numeric_limits<float>::digits10
                                : precision,
                type);
        case FormatArgument::Type::Double:
            return writeFloat(argument._float,
                precision == -1 ? std::numeric_limits<double>::digits10
                                : precision,
                type);
        case FormatArgument::Type::String:
            CORRADE_ASSERT(!type,
                "Utility::format(): a string can't be formatted as"
                    << Containers::StringView(&type, 1), );
            return append(argument._string.prefix(
                std::min(argument._string.size(), std::size_t(precision))));
        }
    }

    void writeInteger(
        const FormatArgument& argument, const int precision, const char type) {
        const int base = type == 'x' || type == 'X' ? 16 : type == 'o' ? 8 : 10;
        CORRADE_ASSERT(base != 10 || !type || type == 'd',
            "Utility::format(): an integer can't be formatted as"
                << Containers::StringView(&type, 1), );

        /* Other bases than decimal show the bits of the original type */
        unsigned long long value = argument._integer;
        const bool negative = base == 10 &&
            argument._type == FormatArgument::Type::Signed &&
            static_cast<long long>(value) < 0;
        if(negative)
            value = 0 - value;
        else
            value &= ~0ull >> (64 - 8 * argument._size);

        char digits[64];
        char* const end =
            std::to_chars(digits, digits + sizeof(digits), value, base).ptr;
        if(type == 'X')
            std::transform(digits, end, digits,
                [](unsigned char c) { return char(std::toupper(c)); });
        if(negative)
            _text.push_back('-');
        if(precision > end - digits)
            _text.append(precision - (end - digits), '0');
        _text.append(digits, end);
    }

    void writeFloat(const double value, const int precision, const char type) {
        CORRADE_ASSERT(!type || type == 'g' || type == 'e' || type == 'f',
            "Utility::format(): a float can't be formatted as"
                << Containers::StringView(&type, 1), );
        append(FloatText{value, std::min(precision, 100),
            type == 'e'       ? std::chars_format::scientific
                : type == 'f' ? std::chars_format::fixed
                              : std::chars_format::general}
                   .view());
    }

    Containers::StringView _rest;
    Containers::ArrayView<const FormatArgument> _arguments;
    std::size_t _next = 0;
    std::string _text;
};

Containers::String format(const char* const format,
    const Containers::ArrayView<const FormatArgument> arguments) {
    return FormatOutput{format, arguments}.text();
}

std::size_t formatInto(const Containers::MutableStringView buffer,
    const char* const format,
    const Containers::ArrayView<const FormatArgument> arguments) {
    const FormatOutput output{format, arguments};
    const Containers::StringView text = output.text();
    if(buffer.data()) {
        CORRADE_ASSERT(text.size() <= buffer.size(),
            "Utility::formatInto(): the text of"
                << text.size() << "bytes doesn't fit into a buffer of"
                << buffer.size(),
            {});
        std::copy(text.begin(), text.end(), buffer.begin());
    }
    return text.size();
}

void formatInto(std::FILE* const file, const char* const format,
    const Containers::ArrayView<const FormatArgument> arguments) {
    const FormatOutput output{format, arguments};
    std::fwrite(output.text().data(), 1, output.text().size(), file);
}

}}}
