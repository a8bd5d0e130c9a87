#include "editor/JavaScriptManager.h"

#include <Corrade/Containers/GrowableArray.h>

namespace OrrelinEngine { namespace Data {

namespace {

void append(Containers::Array<std::size_t>& positions,
    Containers::Array<char>& characters, Containers::StringView string) {
    arrayAppend(characters,
        Containers::ArrayView<const char>{string.data(), string.size()});
    arrayAppend(characters, '\0');
    arrayAppend(positions, characters.size());
}

}

struct JavaScriptManager<unsigned short>::State {
    std::uint32_t typeCount = 0;
    Containers::Array<std::size_t> typePositions{Corrade::ValueInit, 1};
    Containers::Array<char> typeCharacters;
    Containers::Array<ParamRange> ranges;
    Containers::Array<unsigned short> paramTypes;
    Containers::Array<std::size_t> paramPositions{Corrade::ValueInit, 1};
    Containers::Array<char> paramCharacters;
};

JavaScriptManager<unsigned short>::JavaScriptManager():
    _state{Corrade::InPlaceInit}, typeCount{&_state->typeCount}, paramRanges{},
    paramRangeCount{}, paramTypes{} {}

JavaScriptManager<unsigned short>::~JavaScriptManager() = default;

bool JavaScriptManager<unsigned short>::addType(Containers::StringView name,
    Containers::ArrayView<
        const Containers::Pair<Containers::StringView, unsigned short>>
        parameters) {
    State& state = *_state;
    const std::size_t first = state.paramTypes.size();
    if(state.typeCount == 0xffff || first + parameters.size() > 0xffff)
        return false;

    append(state.typePositions, state.typeCharacters, name);
    arrayAppend(state.ranges,
        ParamRange{static_cast<unsigned short>(first),
            static_cast<unsigned short>(parameters.size())});
    for(const auto& parameter: parameters) {
        append(state.paramPositions, state.paramCharacters, parameter.first());
        arrayAppend(state.paramTypes, parameter.second());
    }
    ++state.typeCount;

    /* The view refers to the table: with a copy for each addition, registering
       many types would be quadratic */
    typeNames = StringArrayView{
        Containers::Array<std::size_t>{state.typePositions.data(),
            state.typePositions.size(), [](std::size_t*, std::size_t) {}},
        state.typeCharacters.data()};
    paramRanges = state.ranges.data();
    paramRangeCount = state.ranges.size();
    paramTypes = state.paramTypes.data();
    return true;
}

StringArrayView JavaScriptManager<unsigned short>::paramNames(
    unsigned short type) const {
    CORRADE_ASSERT(type < paramRangeCount,
        "JavaScriptManager::paramNames(): invalid type"
            << type << "for" << paramRangeCount << "types",
        StringArrayView{});
    const ParamRange& range = paramRanges[type];
    return StringArrayView{Containers::Array<std::size_t>{Corrade::InPlaceInit,
                               _state->paramPositions.slice(
                                   range.first, range.first + range.count + 1)},
        _state->paramCharacters.data()};
}

}}
