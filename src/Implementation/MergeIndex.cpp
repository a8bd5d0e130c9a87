/* _changes knows a prefix of the history, and _positions holds exactly the
   positions of that prefix. extend() adds at its end; forget() takes away from
   its end, where the positions are the last of their lists as well. Both are
   constant per change.

   Paths with the same hash may differ, so they are compared as well. */

#include "Implementation/MergeIndex.h"

#include <algorithm>
#include <utility>

#include "ChangeManager.h"
#include "shared/Implementation/NameHash.h"

namespace OrrelinEngine {

void MergeIndex::extend(
    Containers::ArrayView<const Change> changes, std::size_t size) {
    for(std::size_t i = _changes.size(); i < size; ++i) {
        const bool begins = !i || changes[i].group != changes[i - 1].group;
        _changes.push_back({nameHash(changes[i].path),
            begins ? std::int32_t(i) : _changes.back().runBegin});
        _positions[_changes.back().hash].push_back(std::int32_t(i));
    }
}

std::int32_t MergeIndex::find(Containers::ArrayView<const Change> changes,
    std::int32_t last, Containers::StringView path) {
    extend(changes, std::size_t(last) + 1);
    const auto found = _positions.find(nameHash(path));
    if(found == _positions.end())
        return -1;

    const std::vector<std::int32_t>& positions = found->second;
    /* Never the very first change of the history */
    const std::int32_t begin =
        std::max(1, _changes[std::size_t(last)].runBegin);
    /* Positions past last are of changes that can be redone */
    for(auto i = std::upper_bound(positions.begin(), positions.end(), last);
        i != positions.begin() && *(i - 1) >= begin; --i)
        /* The first one has the path, unless two paths share the hash */
        if(changes[std::size_t(*(i - 1))].path == path)
            return *(i - 1);
    return -1;
}

void MergeIndex::forget(std::int32_t first) {
    while(_changes.size() > std::size_t(first)) {
        const auto found = _positions.find(_changes.back().hash);
        found->second.pop_back();
        if(found->second.empty())
            _positions.erase(found);
        _changes.pop_back();
    }
}

void MergeIndex::move(std::uint64_t hash, std::int32_t from, std::int32_t to) {
    std::vector<std::int32_t>& positions = _positions[hash];
    positions.erase(std::lower_bound(positions.begin(), positions.end(), from));
    positions.insert(
        std::lower_bound(positions.begin(), positions.end(), to), to);
}

void MergeIndex::exchange(std::int32_t first, std::int32_t second) {
    /* Both are in one run, so runBegin is the same and stays. The list of the
       first change has nothing in between to move, as it's the newest there. */
    std::swap(
        _changes[std::size_t(first)].hash, _changes[std::size_t(second)].hash);
    move(_changes[std::size_t(second)].hash, first, second);
    move(_changes[std::size_t(first)].hash, second, first);
}

}
