#ifndef Orrelin_host_checks_Pattern_h
#define Orrelin_host_checks_Pattern_h

#include <bitset>
#include <functional>
#include <memory>
#include <string>
#include <Corrade/Containers/StringView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* The bytes that are in a text */
typedef std::bitset<256> Bytes;

Bytes bytesOf(Containers::StringView text);

/* A regular expression in the syntax that PCRE2 and JavaScript, with the flag u,
   have in common. That excludes . and \w, \d, \s and \b, which differ. */
class Pattern {
public:
    /* Aborts if it's not one, as all are the program's own */
    explicit Pattern(Containers::StringView expression);

    /* Whether a text of these bytes can have a match. Most texts have none, and
       to know that takes less time than to search them. */
    bool mayMatch(const Bytes& bytes) const;

    bool matches(Containers::StringView text) const;

    /* Calls the function with each match and its first group, or the match
       again if the pattern has none */
    typedef std::function<void(
        Containers::StringView match, Containers::StringView group)>
        MatchFunction;
    void forEachMatch(
        Containers::StringView text, const MatchFunction& function) const;

    /* The text without all matches */
    std::string without(Containers::StringView text) const;

private:
    struct State;
    struct Delete {
        void operator()(State* state) const;
    };

    std::unique_ptr<State, Delete> _state;
};

}}

#endif
