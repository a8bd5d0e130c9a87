#ifndef Orrelin_host_project_LanguageTable_h
#define Orrelin_host_project_LanguageTable_h

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>

#include "OrrelinEngine.h"
#include "editor/AllLanguages.h"

namespace OrrelinEngine { namespace Host {

/* All rows of the table of languages */
Containers::ArrayView<const Language> allLanguages();

/* Whether the code or the name holds the text, whatever the letter case and
   the accents */
bool matches(const Language& language, Containers::StringView text);

/* "; did you mean ...?" with the languages nearest to the typed text. Empty if
   none is near. */
Containers::String suggestion(Containers::StringView typed,
    Containers::ArrayView<const Language> languages);

}}

#endif
