#include <map>
#include <set>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "project/Translations.h"
#include "project/brokenKeys.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

/* The first of key-2, key-3 and so on that no text has */
Containers::String freeKey(Project& project, Containers::StringView key,
    std::set<Containers::String, StrLess>& added) {
    const TermPathMap& terms = project.localization().terms;
    for(std::size_t i = 2;; ++i) {
        const Containers::String out = Utility::format("{}-{}", key, i);
        if(terms.find(out) == terms.end() && added.insert(out).second)
            return out;
    }
}

/* In the order of paths, so that the project is the same each time */
typedef std::map<Containers::StringView, Containers::String, StrLess> Keys;

/* Only of values that the project stores, as others may come and go with the
   editor's defaults. Counts those that aren't stored. */
Keys generatedKeys(Project& project, std::size_t& unstored) {
    Keys out;
    unstored = 0;
    for(const auto& value: project.strings()) {
        if(project.editor().project[value.first + "_term"].hasValue())
            continue;
        if(project.editor().project[value.first].hasValue())
            out.emplace(value.first, value.second);
        else
            ++unstored;
    }
    return out;
}

/* Returns those that have got other keys */
Keys replaceClashing(Project& project, Keys& keys) {
    Keys out;
    std::set<Containers::String, StrLess> added;
    for(const auto& value: clashingGeneratedKeys(project)) {
        const auto key = keys.find(value.first);
        if(key == keys.end())
            continue;
        key->second = freeKey(project, value.second, added);
        printLine(Utility::format("{} gets the key '{}', as '{}' is another's",
            key->first, key->second, value.second));
        out.insert(*key);
    }
    return out;
}

void store(Project& project, const Keys& keys) {
    ChangeManager& changes = project.changeManager();
    changes.beginGroup();
    for(const auto& key: keys)
        changes.pushChange(key.first + "_term"_s, key.second, false);
    changes.commit();
}

}

int pinKeys(const ProjectOptions& options) {
    Project project;
    if(!project.openForWriting(options, "pin"))
        return Failure;
    std::size_t unstored;
    Keys keys = generatedKeys(project, unstored);
    const Keys replaced = replaceClashing(project, keys);
    /* The files have these texts under other keys, and a key that somebody
       chose keeps its translations. The replaced ones are in no file yet, and
       no export is possible without them. */
    const bool areMoved = hasMovedTexts(project);
    if(areMoved)
        keys = replaced;
    if(areMoved && keys.empty())
        return fail("some texts have other keys now than in the language "
                    "files; 'export' writes them there first");
    store(project, keys);
    if(!keys.empty() && (!project.write() || !project.commit()))
        return Failure;
    printLine(!keys.empty() ? Utility::format("Stored {} in {}",
                                  counted(keys.size(), "key"), project.file())
                            : Containers::String{"All keys are stored "
                                                 "already."});
    if(areMoved)
        printLine("Others have moved since the last export; after the next "
                  "one, 'pin' stores them.");
    else if(unstored)
        printLine(Utility::format("{} not, as the project doesn't store the "
                                  "{}.",
            counted(unstored, "key"), unstored == 1 ? "text" : "texts"));
    return Success;
}

}}
