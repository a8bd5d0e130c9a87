#ifndef Corrade_Utility_Implementation_floatText_h
#define Corrade_Utility_Implementation_floatText_h

#include <charconv>
#include <limits>

#include "Corrade/Containers/StringView.h"

namespace Corrade { namespace Utility { namespace Implementation {

/* Enough for any double in a fixed notation with a reasonable precision */
class FloatText {
public:
    explicit FloatText(double value, int precision,
        std::chars_format format = std::chars_format::general):
        _size{std::size_t(std::to_chars(_data, _data + sizeof(_data), value,
                              format, precision)
                              .ptr -
            _data)} {}

    /* All digits that are surely the same after a round trip from text */
    explicit FloatText(double value):
        FloatText{value, std::numeric_limits<double>::digits10} {}
    explicit FloatText(float value):
        FloatText{double(value), std::numeric_limits<float>::digits10} {}

    Containers::StringView view() const { return {_data, _size}; }

private:
    char _data[512];
    std::size_t _size;
};

}}}

#endif
