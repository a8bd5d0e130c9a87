#include "Arguments.h"

#include <set>

namespace OrrelinEngine { namespace Host {

namespace {

Codes unique(const std::vector<std::string>& all) {
    std::set<std::string> known;
    Codes out;
    for(const std::string& value: all)
        if(known.insert(value).second)
            out.emplace_back(value);
    return out;
}

}

Codes Arguments::codeList() const {
    return unique(codes);
}

Codes Arguments::keyList() const {
    return unique(keys);
}

CheckOptions Arguments::checkOptions() const {
    return {codeList(), unique(onlyRules), unique(skippedRules), maxGrowth,
        failOnWarning, findingFormat};
}

SourceChoice Arguments::choice() const {
    SourceChoice out;
    for(const std::string& choice: choices)
        out.add(choice);
    return out;
}

}}
