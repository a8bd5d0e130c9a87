#include <map>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "Commands.h"
#include "project/Translations.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

/* In the order of their paths, so that the project is the same each time. Only
   for values that the project stores, as others may come and go with the
   editor's defaults. Returns how many aren't stored. */
std::size_t storeKeys(Project& project, std::size_t& count) {
    std::map<Containers::StringView, Containers::StringView, StrLess> keys;
    std::size_t unstored = 0;
    for(const auto& value: project.strings()) {
        if(project.editor().project[value.first + "_term"].hasValue())
            continue;
        if(project.editor().project[value.first].hasValue())
            keys.emplace(value.first, value.second);
        else
            ++unstored;
    }
    ChangeManager& changes = project.changeManager();
    changes.beginGroup();
    for(const auto& key: keys)
        changes.pushChange(key.first + "_term"_s, key.second, false);
    changes.commit();
    count = keys.size();
    return unstored;
}

}

int pinKeys(const ProjectOptions& options) {
    Project project;
    if(!project.openForWriting(options, "pin"))
        return Failure;
    /* The files have these texts under other keys, and a key that somebody
       chose keeps its translations */
    if(hasMovedTexts(project))
        return fail("some texts have other keys now than in the language "
                    "files; 'export' writes them there first");
    std::size_t count;
    const std::size_t unstored = storeKeys(project, count);
    if(count && (!project.write() || !project.commit()))
        return Failure;
    printLine(count ? Utility::format("Stored {} in {}", counted(count, "key"),
                          project.file())
                    : Containers::String{"All keys are stored already."});
    if(unstored)
        printLine(Utility::format("{} not, as the project doesn't store the "
                                  "{}.",
            counted(unstored, "key"), unstored == 1 ? "text" : "texts"));
    return Success;
}

}}
