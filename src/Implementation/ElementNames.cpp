/* Each index is that of the element in its array right now. So whenever an
   array shifts its elements, the indices of all named ones behind follow. Few
   elements have a name, most documents none, so forEach() returns at once
   there. */

#include "Implementation/ElementNames.h"

namespace OrrelinEngine {

bool ElementNames::find(
    Containers::StringView path, std::uint32_t& index) const {
    const auto found = _indices.find(path);
    if(found == _indices.end())
        return false;
    index = found->second;
    return true;
}

void ElementNames::add(Containers::StringView path, std::uint32_t index) {
    _indices[Containers::String{path}] = index;
}

/* Calls the function with the index of each named element of the array. If it
   returns false, the name is dropped. */
template<class Function>
void ElementNames::forEach(Containers::StringView array, Function&& function) {
    if(_indices.empty())
        return;
    const Containers::String prefix = array + "/";
    for(auto i = _indices.lower_bound(prefix); i != _indices.end();) {
        const Containers::StringView path = i->first;
        if(!path.hasPrefix(prefix))
            return;
        /* Names further in have the same prefix and stay as they are */
        const bool isElement = !path.exceptPrefix(prefix.size()).contains('/');
        i = isElement && !function(i->second) ? _indices.erase(i)
                                              : std::next(i);
    }
}

void ElementNames::forget(Containers::StringView array) {
    forEach(array, [](std::uint32_t&) { return false; });
}

void ElementNames::inserted(Containers::StringView array, std::uint32_t index) {
    forEach(array, [&](std::uint32_t& i) {
        i += i >= index;
        return true;
    });
}

void ElementNames::erased(Containers::StringView path,
    Containers::StringView array, std::uint32_t index, std::uint32_t size) {
    /* Nothing is behind the last element, so nothing moves */
    const auto own = _indices.find(path);
    if(index + 1 == size && own != _indices.end() && own->second == index) {
        _indices.erase(own);
        return;
    }
    forEach(array, [&](std::uint32_t& i) {
        const bool stays = i != index;
        i -= i > index;
        return stays;
    });
}

}
