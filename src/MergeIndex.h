#ifndef Orrelin_MergeIndex_h
#define Orrelin_MergeIndex_h

#include <cstdint>
#include <unordered_map>
#include <vector>
#include <Corrade/Containers/ArrayView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Finds the change that a continuous push merges into without going through
   the history. Reads the changes it doesn't know yet when it's asked, so that
   pushes which don't ask cost nothing. */
class MergeIndex {
public:
    /* The newest of the changes 1 to last that has the path and is of the
       same uninterrupted run of one group as last; -1 if there is none */
    std::int32_t find(Containers::ArrayView<const Change> changes,
        std::int32_t last, Containers::StringView path);

    /* The changes from given size on are about to be destroyed */
    void shrink(Containers::ArrayView<const Change> changes, std::size_t size);

    /* The two changes are about to be exchanged; the first is the newest of
       its path up to the second, and both are of one run */
    void exchange(Containers::ArrayView<const Change> changes,
        std::int32_t first, std::int32_t second);

    void clear();

private:
    void extend(Containers::ArrayView<const Change> changes, std::size_t size);
    void move(const Change& change, std::int32_t from, std::int32_t to);

    /* Positions, ascending, of the changes of each hash of a path */
    std::unordered_map<std::size_t, std::vector<std::int32_t>> _positions;
    /* Where the run of each known change begins */
    std::vector<std::int32_t> _runBegins;
};

}

#endif
