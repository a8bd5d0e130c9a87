#ifndef Orrelin_host_editDistance_h
#define Orrelin_host_editDistance_h

#include <string>
#include <vector>

#include "Tracking/Term.h"

namespace OrrelinEngine { namespace Host {

/* Count of letters to insert, remove or replace */
std::size_t editDistance(const std::string& a, const std::string& b);

/* "; did you mean ...?" with the key that differs from another one in the
   fewest letters. Empty if none is near. Linear in the number of terms. */
Containers::String keySuggestion(
    Containers::StringView key, const std::vector<Tracking::Term>& terms);

}}

#endif
