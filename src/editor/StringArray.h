#ifndef Orrelin_editor_StringArray_h
#define Orrelin_editor_StringArray_h

/** @file
 * @brief Class @ref OrrelinEngine::StringArray, @ref OrrelinEngine::MutableStringArrayView
 */

#include "shared/StringArrayView.h"

namespace OrrelinEngine {

/** @brief A list of strings that can be added to */
class MutableStringArrayView: public StringArrayView {
public:
    /** @brief Append a copy of @p string */
    virtual void add(Containers::StringView string) = 0;
};

/**
@brief Owning, growing list of strings

Its strings are valid until another one is added. Adding costs the length of the
string, on average.
*/
class StringArray: public MutableStringArrayView {
public:
    /** @brief An empty list with room for @p capacity strings */
    explicit StringArray(std::size_t capacity = 0);

    void add(Containers::StringView string) override;

private:
    Containers::Array<char> _characters;
};

}

#endif
