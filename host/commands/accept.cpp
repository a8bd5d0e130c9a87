#include <algorithm>
#include <set>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "Findings.h"
#include "shared/StringFunctors.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* Returns how many findings are accepted now and weren't, or the other way
   round. Takes the keys of all findings off the list. */
std::size_t acceptIn(Project& project, const AcceptOptions& options,
    const std::vector<FaultyText>& texts,
    std::set<Containers::String, StrLess>& keys) {
    Tracking::TranslationRecord& record = project.record();
    std::size_t out = 0;
    for(const FaultyText& text: texts) {
        const bool isNamed = keys.erase(text.key);
        if(!options.keys.empty() && !isNamed)
            continue;
        for(const Finding& finding: text.findings) {
            if(finding.isAccepted != options.withdraws)
                continue;
            ++out;
            if(options.withdraws)
                record.withdraw(
                    options.code, options.rule, text.source, text.translation);
            else
                record.accept(
                    options.code, options.rule, text.source, text.translation);
        }
    }
    return out;
}

}

int acceptFindings(const ProjectOptions& options, const AcceptOptions& accept) {
    Project project;
    if(!project.openForWriting(options, "accept") ||
        !project.checkLanguage(accept.code))
        return Failure;
    const Findings findings = findFaults(
        project, {{accept.code}, {findRule(accept.rule)}, accept.maxGrowth});
    if(!findings.areFilesFine)
        return Failure;
    std::set<Containers::String, StrLess> keys{
        accept.keys.begin(), accept.keys.end()};
    const std::size_t count = acceptIn(project, accept, findings.texts, keys);
    for(const Containers::String& key: keys)
        return fail(Utility::format(
            "'{}' finds nothing at '{}' in {}", accept.rule, key, accept.code));
    project.setRecordedPlace(project.place());
    if(!project.writeRecord() || !project.commit())
        return Failure;
    printLine(Utility::format("{} {} of {} in {}",
        accept.withdraws ? "Withdrew" : "Accepted", counted(count, "finding"),
        accept.rule, accept.code));
    return Success;
}

}}
