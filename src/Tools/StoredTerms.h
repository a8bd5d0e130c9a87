#ifndef Orrelin_Tools_StoredTerms_h
#define Orrelin_Tools_StoredTerms_h

#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

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

/* Looks terms up by their paths, fastest those of one object after each other.
   Meanwhile values may change, but none may be added or removed, and paths have
   to stay. */
class StoredTerms {
public:
    explicit StoredTerms(const OrrelinEditor& editor): _editor(editor) {}

    StoredTerm find(Containers::StringView path);

private:
    const JsonValue* record(Containers::StringView path);

    const OrrelinEditor& _editor;
    /* Where the components of the last term's object are, and in what path
       that stands */
    const JsonValue* _components = nullptr;
    Containers::StringView _componentsPath;
};

}}

#endif
