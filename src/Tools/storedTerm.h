#ifndef Orrelin_Tools_storedTerm_h
#define Orrelin_Tools_storedTerm_h

#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace LocalizationTools {

/* What the document stores of a term, until it next changes */
struct StoredTerm {
    /* The value itself, null if there is none */
    const JsonValue* value;
    /* Whether it isn't excluded from translation */
    bool translated;

    /* Empty if the value is no string or there is none */
    Containers::StringView text() const;
};

StoredTerm storedTerm(const OrrelinEditor& editor, Containers::StringView path);

}}

#endif
