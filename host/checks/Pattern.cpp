#include "Pattern.h"

#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Assert.h>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace OrrelinEngine { namespace Host {

struct Pattern::State {
    pcre2_code* code;
    pcre2_match_data* match;
    /* Those that a match can begin with */
    Bytes first;
};

namespace {

PCRE2_SPTR pointer(Containers::StringView text) {
    return reinterpret_cast<PCRE2_SPTR>(text.data());
}

Bytes firstBytes(const pcre2_code* code) {
    std::uint32_t kind = 0, byte = 0;
    pcre2_pattern_info(code, PCRE2_INFO_FIRSTCODETYPE, &kind);
    pcre2_pattern_info(code, PCRE2_INFO_FIRSTCODEUNIT, &byte);
    if(kind == 1)
        return Bytes{}.set(byte);
    const std::uint8_t* map = nullptr;
    pcre2_pattern_info(code, PCRE2_INFO_FIRSTBITMAP, &map);
    Bytes out;
    for(std::size_t i = 0; i != out.size(); ++i)
        out[i] = !map || map[i / 8] >> (i % 8) & 1;
    return out;
}

}

void Pattern::Delete::operator()(State* state) const {
    pcre2_match_data_free(state->match);
    pcre2_code_free(state->code);
    delete state;
}

Bytes bytesOf(Containers::StringView text) {
    Bytes out;
    for(const char c: text)
        out[static_cast<unsigned char>(c)] = true;
    return out;
}

Pattern::Pattern(Containers::StringView expression) {
    int error;
    PCRE2_SIZE at;
    /* The options bring PCRE2 nearer to JavaScript */
    pcre2_code* const code =
        pcre2_compile(pointer(expression), expression.size(),
            PCRE2_UTF | PCRE2_DOLLAR_ENDONLY | PCRE2_NEVER_BACKSLASH_C, &error,
            &at, nullptr);
    CORRADE_ASSERT(code, "Pattern: can't read" << expression, );
    /* Where the system forbids it, matching is slower */
    pcre2_jit_compile(code, PCRE2_JIT_COMPLETE);
    _state.reset(new State{code,
        pcre2_match_data_create_from_pattern(code, nullptr), firstBytes(code)});
}

bool Pattern::mayMatch(const Bytes& bytes) const {
    return (bytes & _state->first).any();
}

bool Pattern::matches(Containers::StringView text) const {
    return pcre2_match(_state->code, pointer(text), text.size(), 0, 0,
               _state->match, nullptr) > 0;
}

void Pattern::forEachMatch(
    Containers::StringView text, const MatchFunction& function) const {
    PCRE2_SIZE at = 0;
    std::uint32_t options = 0;
    int count;
    while((count = pcre2_match(_state->code, pointer(text), text.size(), at,
               options, _state->match, nullptr)) > 0) {
        /* The text was checked the first time */
        options = PCRE2_NO_UTF_CHECK;
        const PCRE2_SIZE* const ends = pcre2_get_ovector_pointer(_state->match);
        const PCRE2_SIZE begin = ends[0];
        at = ends[1];
        const Containers::StringView match = text.slice(begin, at);
        function(match, count > 1 ? text.slice(ends[2], ends[3]) : match);
        /* Patterns are written so that no match is empty */
        if(at == begin)
            break;
    }
}

std::string Pattern::without(Containers::StringView text) const {
    std::string out;
    const char* rest = text.begin();
    forEachMatch(
        text, [&](Containers::StringView match, Containers::StringView) {
            out.append(rest, match.begin());
            rest = match.end();
        });
    out.append(rest, text.end());
    return out;
}

}}
