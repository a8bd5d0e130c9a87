#ifndef Orrelin_host_terminal_editDistance_h
#define Orrelin_host_terminal_editDistance_h

#include <string>
#include <vector>

#include "Tracking/Term.h"

namespace OrrelinEngine { namespace Host {

/* Count of letters to insert, remove or replace */
std::size_t editDistance(const std::string& a, const std::string& b);

/* "; did you mean ...?" with the name that differs from the typed one in the
   fewest letters. Empty if none is near, or if the name is one of them. */
Containers::String nameSuggestion(Containers::StringView typed,
    const std::vector<Containers::StringView>& names);

/* The same with the keys of terms that are to be translated. Linear in their
   number. */
Containers::String keySuggestion(
    Containers::StringView key, const std::vector<Tracking::Term>& terms);

}}

#endif
