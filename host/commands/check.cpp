#include <algorithm>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "Commands.h"
#include "FindingOutput.h"
#include "project/undescribedTypes.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"
#include "terminal/editDistance.h"

namespace OrrelinEngine { namespace Host {

namespace {

bool contains(const Codes& names, Containers::StringView name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::vector<const Rule*> chosenRules(const CheckOptions& options) {
    std::vector<const Rule*> out;
    for(const Rule& rule: allRules())
        if((options.only.empty() || contains(options.only, rule.name)) &&
            !contains(options.skip, rule.name))
            out.push_back(&rule);
    return out;
}

/* How many findings the command fails for */
std::size_t faultCount(const Findings& findings, bool withWarnings) {
    std::size_t out = 0;
    for(const FaultyText& text: findings.texts)
        for(const Finding& finding: text.findings)
            out += !finding.isAccepted &&
                (withWarnings || finding.rule->severity == Severity::Error);
    return out;
}

}

std::string ruleFault(const std::string& name) {
    if(findRule(name))
        return {};
    std::vector<Containers::StringView> names;
    for(const Rule& rule: allRules())
        names.push_back(rule.name);
    return std::string{Utility::format("there is no rule '{}'{}",
        Containers::StringView{name}, nameSuggestion(name, names))};
}

int checkTranslations(
    const ProjectOptions& options, const CheckOptions& check) {
    Project project;
    Findings findings;
    std::size_t undescribedCount = 0;
    if(!project.read(options, [&](Project& p) {
           for(const Containers::String& code: check.codes)
               if(!p.checkLanguage(code))
                   return false;
           findings = findFaults(
               p, {check.codes, chosenRules(check), check.maxGrowth});
           undescribedCount = findUndescribedTypes(p).size();
           return true;
       }))
        return Failure;
    if(check.format == FindingFormat::Json)
        printJson(findings);
    else if(check.format == FindingFormat::Sarif)
        printSarif(findings);
    else
        printFindings(project.languages(), findings);
    if(undescribedCount && check.format == FindingFormat::Text)
        printLine(Utility::format("Texts of {} aren't checked, as {} doesn't "
                                  "describe {}; 'status' lists them.",
            counted(undescribedCount, "type") + " of components",
            descriptionFile(project), undescribedCount == 1 ? "it" : "them"));
    if(!findings.areFilesFine)
        return Failure;
    const std::size_t count = faultCount(findings, check.failsOnWarning);
    if(!count)
        return Success;
    fail(Utility::format("{} to correct; 'accept' lets those pass that are "
                         "meant",
        counted(count, check.failsOnWarning ? "finding" : "error")));
    return GateFailure;
}

}}
