#include "words.h"

#include <limits>
#include <Corrade/Containers/StringView.h>
#include <unictype.h>
#include <unistr.h>
#include <uniwbrk.h>

namespace OrrelinEngine { namespace Host {

namespace {

bool isOfWord(ucs4_t character) {
    return uc_is_property_alphabetic(character) ||
        uc_is_property_ideographic(character) ||
        uc_is_general_category_withtable(character, UC_CATEGORY_MASK_Nd);
}

}

std::size_t wordCount(Containers::StringView text) {
    const auto* const data =
        static_cast<const std::uint8_t*>(static_cast<const void*>(text.data()));
    std::vector<char> breaks(text.size());
    u8_wordbreaks(data, text.size(), breaks.data());
    std::size_t out = 0;
    bool isCounted = false;
    for(std::size_t i = 0; i != text.size();) {
        if(breaks[i])
            isCounted = false;
        ucs4_t character;
        i += std::size_t(u8_mbtouc(&character, data + i, text.size() - i));
        if(!isCounted && isOfWord(character)) {
            isCounted = true;
            ++out;
        }
    }
    return out;
}

std::size_t TermWords::of(const std::vector<Term>& terms, std::size_t term) {
    constexpr std::size_t Uncounted = std::numeric_limits<std::size_t>::max();
    _counts.resize(terms.size(), Uncounted);
    std::size_t& out = _counts[term];
    if(out == Uncounted)
        out = wordCount(terms[term].source);
    return out;
}

}}
