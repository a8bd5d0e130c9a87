#ifndef Orrelin_Tools_Implementation_StoredTerms
#define Orrelin_Tools_Implementation_StoredTerms

#include <unordered_map>
#include <Corrade/Containers/StringView.h>

#include "Tools/Implementation/StoredMembers.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* What the document stores of a term, until it next changes */
struct StoredTerm {
    /* The value itself, null if there is none */
    const JsonValue* value = nullptr;
    /* Whether it isn't excluded from translation */
    bool translated = true;

    /* Empty if the value is no string or there is none */
    Containers::StringView text() const;
};

/* Looks terms up by their paths in the stored document, in any order, fastest
   those of one object after each other. A look-up costs the logarithm of the
   number of members of the objects on the way, and large ones are sorted once.
   Meanwhile values may change, but none may be added or removed, and paths have
   to stay. */
class StoredTerms {
public:
    explicit StoredTerms(const OrrelinEditor& editor);

    StoredTerm find(Containers::StringView path);

private:
    const JsonValue* member(
        const JsonValue& object, Containers::StringView name);
    const JsonValue* child(
        const JsonValue& parent, Containers::StringView segment);

    /* Goes from the value along the path for as long as there is something
       stored. Returns what's left of the path. */
    Containers::StringView descend(
        const JsonValue*& value, Containers::StringView path);

    const JsonValue* record(Containers::StringView path);

    const OrrelinEditor& _editor;
    const JsonValue* _root;
    /* Members of the large objects on the way */
    std::unordered_map<const JsonValue*, StoredMembers> _members;
    /* Where the components of the last term's object are, and in what path
       that stands */
    const JsonValue* _components = _root;
    Containers::StringView _componentsPath;
};

}}

#endif
