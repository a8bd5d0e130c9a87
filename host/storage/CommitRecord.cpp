#include "CommitRecord.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <Corrade/Containers/StaticArray.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/Utility/Format.h>
#include <Corrade/Utility/Path.h>

#include "ProjectFolders.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine { namespace Host {

namespace {

bool isBefore(const FileChange& a, const FileChange& b) {
    return a.key < b.key;
}

Containers::String toText(const Version& version) {
    return Utility::format(
        "{} {:.16x} {:.16x} ", int(version.exists), version.size, version.hash);
}

/* Hexadecimal numbers one after the other. Faults need no care, as in the end
   the text is compared with that of the record. */
class Numbers {
public:
    explicit Numbers(const char* text): _next{text} {}

    std::uint64_t next() {
        char* end;
        const std::uint64_t out = std::strtoull(_next, &end, 16);
        _next = end;
        return out;
    }
    Version nextVersion() {
        Version out;
        out.exists = next();
        out.size = next();
        out.hash = next();
        return out;
    }
    /* After one space */
    const char* rest() const { return *_next ? _next + 1 : _next; }

private:
    const char* _next;
};

FileChange changeFrom(const Containers::String& line) {
    Numbers numbers{line.data()};
    FileChange out;
    out.before = numbers.nextVersion();
    out.after = numbers.nextVersion();
    out.key = numbers.rest();
    return out;
}

bool mayBe(const CommitRecord& record) {
    for(std::size_t i = 0; i != record.changes.size(); ++i) {
        const FileChange& change = record.changes[i];
        if(!change.key.isEmpty() && !isPlainName(change.key))
            return false;
        if(i && !isBefore(record.changes[i - 1], change))
            return false;
    }
    return true;
}

}

const FileChange* CommitRecord::find(const Containers::String& key) const {
    const FileChange wanted{key, {}, {}};
    const auto found =
        std::lower_bound(changes.begin(), changes.end(), wanted, isBefore);
    return found != changes.end() && found->key == key ? &*found : nullptr;
}

Containers::String CommitRecord::stagedName(const FileChange& change) const {
    return Utility::format("{}{}{}", stagedPrefix(id),
        std::size_t(&change - changes.data()),
        change.key.hasSuffix(".zip") ? ".zip" : "");
}

Containers::String stagedPrefix(std::uint64_t id) {
    return Utility::format("{:.16x}-", id);
}

Containers::String toText(const CommitRecord& record) {
    std::string out{Utility::format(
        "orrelin-commit 1\n{:.16x} {:.1x}\n", record.id, record.madeFolders)};
    for(const FileChange& change: record.changes) {
        out += std::string{toText(change.before)};
        out += std::string{toText(change.after)};
        out += std::string{change.key} + '\n';
    }
    out += std::string{
        Utility::format("{:.16x}\n", StrHash{}(Containers::StringView{out}))};
    return out;
}

Containers::Optional<CommitRecord> recordFrom(Containers::StringView text) {
    CommitRecord out;
    std::size_t row = 0;
    Containers::StringView left = text;
    while(left.contains('\n')) {
        const Containers::String line = left.partition('\n')[0];
        left = left.partition('\n')[2];
        if(row == 1) {
            Numbers numbers{line.data()};
            out.id = numbers.next();
            out.madeFolders = numbers.next();
        } else if(row > 1 && !left.isEmpty())
            out.changes.push_back(changeFrom(line));
        ++row;
    }
    if(!mayBe(out) || toText(out) != text)
        return {};
    return out;
}

}}
