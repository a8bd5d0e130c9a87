#ifndef Orrelin_Implementation_ElementNames_h
#define Orrelin_Implementation_ElementNames_h

#include <cstdint>
#include <map>
#include <Corrade/Containers/String.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine {

/* Which elements of arrays are meant by paths that aren't JSON Pointers to
   them. A member named "-5", "007" or "-" that was removed together with its
   object comes back as an element if a number in a path makes an array of the
   object, as nothing tells what it was. The recorded path doesn't lead there.
   Without its name here, a redo wouldn't remove the element, and the undo after
   that would add it once more.

   All paths are as recorded, so that a name stays right when the array is
   itself an element that moves. */
class ElementNames {
public:
    /* Whether there's an element of that name, and where in its array */
    bool find(Containers::StringView path, std::uint32_t& index) const;

    void add(Containers::StringView path, std::uint32_t index);

    /* An element was put in front of some of its array */
    void inserted(Containers::StringView array, std::uint32_t index);

    /* An element is about to go, by what may be its name. The last one, as
       undo and redo come to them, costs little. */
    void erased(Containers::StringView path, Containers::StringView array,
        std::uint32_t index, std::uint32_t size);

    /* The array isn't there anymore */
    void forget(Containers::StringView array);

    void clear() { _indices.clear(); }

private:
    template<class Function>
    void forEach(Containers::StringView array, Function&& function);

    std::map<Containers::String, std::uint32_t, StrLess> _indices;
};

}

#endif
