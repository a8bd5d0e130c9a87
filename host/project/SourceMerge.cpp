#include "SourceMerge.h"

#include <algorithm>
#include <utility>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>

#include "ChangeManager.h"
#include "terminal/Messages.h"
#include "terminal/Terminal.h"

namespace OrrelinEngine { namespace Host {

bool SourceChoice::add(const std::string& choice) {
    const std::size_t colon = choice.find(':');
    const std::string side = choice.substr(0, colon);
    if(side != "file" && side != "project")
        return false;
    const Side value = side == "file" ? Side::File : Side::Project;
    if(colon == std::string::npos) {
        _hasDefault = true;
        _default = value;
    } else
        _keys[Containers::String{choice.substr(colon + 1)}] = value;
    return true;
}

const Side* SourceChoice::find(Containers::StringView key) const {
    const auto found = _keys.find(key);
    return found != _keys.end() ? &found->second
        : _hasDefault           ? &_default
                                : nullptr;
}

bool SourceChoice::hasNamed(Containers::StringView key) const {
    return _keys.count(key);
}

bool SourceChoice::has(Containers::StringView key) const {
    return find(key);
}

Side SourceChoice::of(Containers::StringView key) const {
    return *find(key);
}

bool SourceChoice::check(Project& project) const {
    const TermPathMap& terms = project.localization().terms;
    const auto unknown = std::find_if(_keys.begin(), _keys.end(),
        [&](const auto& key) { return terms.find(key.first) == terms.end(); });
    if(unknown == _keys.end())
        return true;
    fail(Utility::format("the project has no term '{}'", unknown->first));
    return false;
}

bool isBlank(const SourceDifference& difference) {
    return difference.inFile.isEmpty() || difference.inFile == "None";
}

SourceMerge mergeSources(std::vector<SourceDifference>&& differences,
    const SourceChoice& choice, bool takesFile) {
    SourceMerge out;
    for(SourceDifference& difference: differences) {
        const bool isConflict = difference.state == SourceState::Conflict;
        if(difference.state == SourceState::ChangedInProject &&
            !choice.hasNamed(difference.key))
            ++out.staleCount;
        else if(choice.has(difference.key)) {
            if(choice.of(difference.key) == Side::File)
                out.taken.push_back(std::move(difference));
            else
                ++out.replacedCount;
        } else if(isConflict)
            out.conflicts.push_back(std::move(difference));
        else if(takesFile)
            out.taken.push_back(std::move(difference));
        else
            out.changedInFile.push_back(std::move(difference));
    }
    return out;
}

namespace {

typedef std::pair<Containers::String, Containers::String> Change;

/* Values that share a key with a taken text and had the same one. Terms only
   know the first value of a key. */
std::vector<Change> sharingTexts(
    Project& project, const std::vector<SourceDifference>& taken) {
    std::vector<Change> out;
    if(taken.empty() ||
        project.strings().size() == project.localization().terms.size())
        return out;
    std::map<Containers::StringView, const SourceDifference*, StrLess> byKey;
    for(const SourceDifference& difference: taken)
        byKey[difference.key] = &difference;
    for(const auto& value: project.strings()) {
        const auto found = byKey.find(value.second);
        if(found != byKey.end() && value.first != found->second->path &&
            project.source(value.first) == found->second->inProject)
            out.emplace_back(value.first, found->second->inFile);
    }
    std::sort(out.begin(), out.end(), [](const Change& a, const Change& b) {
        return StrLess{}(a.first, b.first);
    });
    return out;
}

}

void takeSources(Project& project, const std::vector<SourceDifference>& taken) {
    ChangeManager& changes = project.changeManager();
    changes.beginGroup();
    for(const SourceDifference& difference: taken) {
        project.record().addFormerSource(difference.inProject);
        changes.pushChange(difference.path, difference.inFile, false);
    }
    for(const auto& change: sharingTexts(project, taken))
        changes.pushChange(change.first, change.second, false);
    changes.commit();
}

void printTaken(const std::vector<SourceDifference>& taken) {
    for(const SourceDifference& change: taken) {
        printLine();
        printLine(change.key, Style::Bold);
        printLine("  from: " + change.inProject);
        printLine("  to:   " + change.inFile);
    }
}

int failUndecided(std::size_t count, Containers::StringView key) {
    fail(Utility::format(
        "nothing was written, as it isn't known which {} right; decide with "
        "--take file or --take project, for one text as --take file:{}",
        count == 1 ? "text is" : "texts are", key));
    return Conflict;
}

int failOnConflicts(
    Project& project, const std::vector<SourceDifference>& conflicts) {
    {
        const MessageLimit limit;
        for(const SourceDifference& conflict: conflicts)
            fail(Utility::format(
                "'{}' reads '{}' in {}.json, but '{}' in the project",
                conflict.key, conflict.inFile, project.defaultLanguage(),
                conflict.inProject));
    }
    return failUndecided(conflicts.size(), conflicts.front().key);
}

}}
