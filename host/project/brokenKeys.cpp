#include "brokenKeys.h"

#include <algorithm>
#include <string>
#include <vector>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <rapidjson/document.h>

#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

const char* kindOf(const JsonValue& value) {
    switch(value.GetType()) {
    case rapidjson::kNullType:
        return "null";
    case rapidjson::kStringType:
        return "an empty text";
    case rapidjson::kNumberType:
        return "a number";
    case rapidjson::kArrayType:
        return "an array";
    case rapidjson::kObjectType:
        return "an object";
    default:
        return "a boolean";
    }
}

}

void warnOfBrokenKeys(Project& project) {
    /* Keys that the project doesn't choose are never empty */
    const TermPathMap& terms = project.localization().terms;
    if(terms.find(Containers::StringView{}) == terms.end())
        return;
    std::vector<Containers::StringView> paths;
    for(const auto& value: project.strings())
        if(value.second.isEmpty())
            paths.push_back(value.first);
    std::sort(paths.begin(), paths.end(), StrLess{});

    Lines lines;
    for(const Containers::StringView path: paths) {
        const Containers::String keyPath = path + "_term";
        const JsonValue* const key =
            project.editor().project[keyPath].readValueNoDefault();
        lines.add(std::string{
            Utility::format("{} in the project isn't a key but {}; {}", keyPath,
                key ? kindOf(*key) : "missing",
                paths.size() == 1
                    ? Containers::String{"its text has the empty key"}
                    : Utility::format("its text shares a term with {}",
                          counted(paths.size() - 1, "other")))});
    }
    lines.print();
}

KeysByPath differentSharedTexts(Project& project) {
    KeysByPath out;
    const TermPathMap& terms = project.localization().terms;
    if(project.strings().size() == terms.size())
        return out;
    for(const auto& value: project.strings()) {
        const Containers::StringView first = terms.at(value.second);
        if(!value.second.isEmpty() && value.first != first &&
            project.source(value.first) != project.source(first))
            out.emplace(value.first, value.second);
    }
    return out;
}

KeysByPath clashingGeneratedKeys(Project& project) {
    const auto isGenerated = [&](Containers::StringView path) {
        return !project.editor().project[path + "_term"].hasValue();
    };
    KeysByPath out;
    for(const auto& value: differentSharedTexts(project)) {
        const Containers::StringView first =
            project.localization().terms.at(value.second);
        if(isGenerated(value.first) != isGenerated(first))
            out.emplace(isGenerated(first) ? first : value.first, value.second);
    }
    return out;
}

bool checkGeneratedKeys(Project& project) {
    const std::size_t count = clashingGeneratedKeys(project).size();
    if(!count)
        return true;
    fail(Utility::format("nothing was written, as the {} of {} stored for {}; "
                         "'pin' stores {}",
        count == 1 ? "generated key" : "generated keys",
        counted(count, "text") + (count == 1 ? " is" : " are"),
        count == 1 ? "another" : "others",
        count == 1 ? "a free one" : "free ones"));
    return false;
}

void warnOfSharedKeys(Project& project) {
    Lines lines;
    for(const auto& value: differentSharedTexts(project))
        lines.add(std::string{
            Utility::format("{} shares the key '{}' with another text, which "
                            "is the one in the language files",
                value.first, value.second)});
    lines.print();
}

}}
