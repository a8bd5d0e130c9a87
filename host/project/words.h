#ifndef Orrelin_host_project_words_h
#define Orrelin_host_project_words_h

#include <vector>

#include "Project.h"

namespace OrrelinEngine { namespace Host {

/* Words of a text by Unicode's rules (UAX #29), of which those count that have
   a letter, an ideograph or a digit. So each ideograph is a word, as are kana
   that aren't joined. Takes time and memory in step with the text. */
std::size_t wordCount(Containers::StringView text);

/* Words of source texts, each counted when it's first asked for */
class TermWords {
public:
    std::size_t of(const std::vector<Term>& terms, std::size_t term);

private:
    std::vector<std::size_t> _counts;
};

}}

#endif
