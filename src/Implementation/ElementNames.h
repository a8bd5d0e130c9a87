#ifndef Orrelin_Implementation_ElementNames_h
#define Orrelin_Implementation_ElementNames_h

#include <cstdint>
#include <map>
#include <Corrade/Containers/String.h>

#include "shared/StringFunctors.h"

namespace OrrelinEngine {

/* Remembers the elements of arrays whose recorded paths aren't JSON Pointers to
   them.

   A removal takes an object with it that it leaves empty. When undo brings back
   a member of that object named "-5", "007" or "-", nothing says anymore that
   the container was an object. If a number in a path makes it an array, the
   member comes back as an element, to which the recorded path doesn't lead.
   Without its name here, a redo wouldn't remove the element, and the undo after
   that would add a second one.

   All paths are as recorded, also those of the arrays, so that a name stays
   right when the array is itself an element that moves. */
class ElementNames {
public:
    /* Whether there's an element of that name, and its index in the array */
    bool find(Containers::StringView path, std::uint32_t& index) const;

    /* The element at the index is found under this path from now on */
    void add(Containers::StringView path, std::uint32_t index);

    /* An element was inserted at the index, all behind moved down. Linear in
       the number of names in and below the array. */
    void inserted(Containers::StringView array, std::uint32_t index);

    /* The element at the index is about to be erased from an array of the given
       size, all behind will move up. The path is the one it's erased by, which
       may be its name. Linear like inserted(), but not for the last element
       under its own name, the usual case in undo and redo. */
    void erased(Containers::StringView path, Containers::StringView array,
        std::uint32_t index, std::uint32_t size);

    /* The array is gone, and its elements with it */
    void forget(Containers::StringView array);

    void clear() { _indices.clear(); }

private:
    template<class Function>
    void forEach(Containers::StringView array, Function&& function);

    /* Index by path, in order, so that those of one array stand together */
    std::map<Containers::String, std::uint32_t, StrLess> _indices;
};

}

#endif
