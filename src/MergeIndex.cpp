#include "MergeIndex.h"

#include <algorithm>

#include "ChangeManager.h"
#include "shared/StringFunctors.h"

namespace OrrelinEngine {

void MergeIndex::extend(
    Containers::ArrayView<const Change> changes, std::size_t size) {
    for(std::size_t i = _runBegins.size(); i < size; ++i) {
        const bool begins = !i || changes[i].group != changes[i - 1].group;
        _runBegins.push_back(begins ? std::int32_t(i) : _runBegins.back());
        _positions[StrHash{}(changes[i].path)].push_back(std::int32_t(i));
    }
}

std::int32_t MergeIndex::find(Containers::ArrayView<const Change> changes,
    std::int32_t last, Containers::StringView path) {
    extend(changes, std::size_t(last) + 1);
    const auto found = _positions.find(StrHash{}(path));
    if(found == _positions.end())
        return -1;

    const std::vector<std::int32_t>& positions = found->second;
    const std::int32_t begin = std::max(1, _runBegins[std::size_t(last)]);
    for(auto i = std::upper_bound(positions.begin(), positions.end(), last);
        i != positions.begin() && *(i - 1) >= begin; --i)
        /* Another one only if two paths have the same hash */
        if(changes[std::size_t(*(i - 1))].path == path)
            return *(i - 1);
    return -1;
}

void MergeIndex::shrink(
    Containers::ArrayView<const Change> changes, std::size_t size) {
    while(_runBegins.size() > size) {
        _runBegins.pop_back();
        const auto found =
            _positions.find(StrHash{}(changes[_runBegins.size()].path));
        found->second.pop_back();
        if(found->second.empty())
            _positions.erase(found);
    }
}

void MergeIndex::move(
    const Change& change, std::int32_t from, std::int32_t to) {
    std::vector<std::int32_t>& positions = _positions[StrHash{}(change.path)];
    positions.erase(std::lower_bound(positions.begin(), positions.end(), from));
    positions.insert(
        std::lower_bound(positions.begin(), positions.end(), to), to);
}

void MergeIndex::exchange(Containers::ArrayView<const Change> changes,
    std::int32_t first, std::int32_t second) {
    if(first == second)
        return;
    move(changes[std::size_t(first)], first, second);
    move(changes[std::size_t(second)], second, first);
}

void MergeIndex::clear() {
    _positions.clear();
    _runBegins.clear();
}

}
