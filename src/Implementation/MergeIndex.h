#ifndef Orrelin_Implementation_MergeIndex
#define Orrelin_Implementation_MergeIndex

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

    /* The changes from the given one on are about to be destroyed, or anybody
       may have changed them when it's next asked */
    void forget(std::int32_t first);

    /* The two changes were exchanged. The first was found as the newest of its
       path up to the second. */
    void exchange(std::int32_t first, std::int32_t second);

private:
    void extend(Containers::ArrayView<const Change> changes, std::size_t size);
    void move(std::uint64_t hash, std::int32_t from, std::int32_t to);

    struct Known {
        /* Of the path */
        std::uint64_t hash;
        /* Where the run begins */
        std::int32_t runBegin;
    };

    std::vector<Known> _changes;
    /* Positions, ascending, of the changes of each hash */
    std::unordered_map<std::uint64_t, std::vector<std::int32_t>> _positions;
};

}

#endif
