#include "LanguageFiles.h"

#include <algorithm>
#include <set>
#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "archiveLimit.h"
#include "editor/StringArray.h"
#include "editor/Zip.h"
#include "shared/StringFunctors.h"
#include "storage/Storage.h"
#include "terminal/Messages.h"

namespace OrrelinEngine { namespace Host {

namespace {

using namespace Containers::Literals;

typedef std::function<bool(Containers::StringView)> Filter;
typedef std::function<bool(LanguageFile&)> Function;

Containers::ArrayView<char> withoutMark(Containers::ArrayView<char> content) {
    constexpr Containers::StringView Mark = "\xef\xbb\xbf"_s;
    return Containers::StringView{content.data(), content.size()}.hasPrefix(
               Mark)
        ? content.exceptPrefix(Mark.size())
        : content;
}

bool pass(Containers::StringView folder, Containers::StringView name,
    Containers::ArrayView<char> content, const Function& function) {
    LanguageFile file{Utility::format("{}/{}", folder, name), name,
        Utility::Path::splitExtension(name).first(), withoutMark(content)};
    return function(file);
}

bool readFolder(Project& project, Containers::StringView folder,
    const Filter& isWanted, const Function& function) {
    std::vector<Containers::String> names;
    const Containers::String fault = project.storage().list(folder, names);
    if(!fault.isEmpty()) {
        fail(fault);
        return false;
    }
    bool succeeded = true;
    for(const Containers::String& name: names) {
        const Containers::String path = Utility::Path::join(folder, name);
        const auto parts = Utility::Path::splitExtension(name);
        /* Reading a folder in place of a language's file fails */
        if(parts.second() != ".json" || !isWanted(name) ||
            project.isOwnFile(path) ||
            (Utility::Path::isDirectory(path) &&
                !project.hasLanguage(parts.first())))
            continue;
        FileContent file;
        if(!project.readFile(path, file) ||
            (file.exists &&
                !pass(folder, name, {file.content.data(), file.content.size()},
                    function)))
            succeeded = false;
    }
    return succeeded;
}

/* Of two entries with one name, only one could be written again */
Containers::String duplicateFault(
    Containers::StringView archive, const StringArray& names) {
    std::set<Containers::StringView, StrLess> known;
    for(std::size_t i = 0; i != names.size(); ++i)
        if(!known.insert(names.get(i)).second)
            return Utility::format(
                "{} has two entries {}", archive, names.get(i));
    return {};
}

Containers::String unpack(Project& project, Containers::StringView archive,
    StringArray& names, Containers::Array<Containers::Array<char>>& contents) {
    Containers::String path;
    Containers::String fault = project.storage().find(archive, path);
    if(fault.isEmpty())
        fault = archiveFault(project, archive, path);
    if(!fault.isEmpty())
        return fault;
    const Result result = readZip(names, {".json"}, contents, path);
    return result ? duplicateFault(archive, names)
                  : Containers::String{result.error()};
}

bool readArchive(Project& project, Containers::StringView archive,
    const Filter& isWanted, const Function& function) {
    FileContent file;
    if(!project.readFile(archive, file))
        return false;
    if(!file.exists)
        return true;
    StringArray names;
    Containers::Array<Containers::Array<char>> contents;
    const Containers::String fault = unpack(project, archive, names, contents);
    if(!fault.isEmpty()) {
        fail(fault);
        return false;
    }
    bool succeeded = true;
    for(std::size_t i = 0; i != contents.size(); ++i) {
        const Containers::StringView name = names.get(i);
        if(!isPutByPrograms(name) && isWanted(name) &&
            !pass(archive, name, contents[i], function))
            succeeded = false;
        contents[i] = {};
    }
    return succeeded;
}

}

bool isFileName(Containers::StringView code) {
    const bool is = !code.isEmpty() && !code.hasPrefix('.') &&
        std::none_of(code.begin(), code.end(),
            [](char c) { return c == '/' || (c >= '\0' && c < ' '); });
    if(!is)
        fail(Utility::format("'{}' can't be the code of a language", code));
    return is;
}

std::vector<Containers::String> foreignEntries(
    Project& project, Containers::StringView archive) {
    Containers::String path;
    if(!project.storage().find(archive, path).isEmpty())
        return {};
    std::vector<Containers::String> out = entriesOf(path);
    out.erase(std::remove_if(out.begin(), out.end(),
                  [](const Containers::String& name) {
                      return name.hasSuffix('/') || isPutByPrograms(name) ||
                          Utility::Path::splitExtension(name).second() ==
                          ".json";
                  }),
        out.end());
    return out;
}

bool forEachLanguageFile(Project& project, const LanguageSource& source,
    const Filter& isWanted, const Function& function) {
    const MessageLimit limit;
    return source.isArchive
        ? readArchive(project, source.path, isWanted, function)
        : readFolder(project, source.path, isWanted, function);
}

}}
