#ifndef Orrelin_Implementation_MergeIndex
#define Orrelin_Implementation_MergeIndex

#include <cstdint>
#include <unordered_map>
#include <vector>
#include <Corrade/Containers/ArrayView.h>

#include "OrrelinEngine.h"

namespace OrrelinEngine {

/* Finds the change that a continuous push merges into without going through
   the history. It catches up with the history only when asked, so pushes that
   never ask cost nothing. */
class MergeIndex {
public:
    /* The newest of the changes 1 to last that has the path and is in the run
       of last: neighbours up to it, all of one group. -1 if there is none.
       A hash look-up and a bisection, plus what was recorded since. */
    std::int32_t find(Containers::ArrayView<const Change> changes,
        std::int32_t last, Containers::StringView path);

    /* The changes from the given one on are about to be destroyed, or may be
       written to before the next find(), which reads them anew */
    void forget(std::int32_t first);

    /* The two changes trade places. The second has to be the one that find()
       was asked for as last, the first its result. */
    void exchange(std::int32_t first, std::int32_t second);

private:
    void extend(Containers::ArrayView<const Change> changes, std::size_t size);
    void move(std::uint64_t hash, std::int32_t from, std::int32_t to);

    struct Known {
        /* Of the path */
        std::uint64_t hash;
        /* The first change of the run that this one is in */
        std::int32_t runBegin;
    };

    /* Of the changes from 0 on, as many as are known */
    std::vector<Known> _changes;
    /* Positions, ascending, of the known changes whose path has the hash */
    std::unordered_map<std::uint64_t, std::vector<std::int32_t>> _positions;
};

}

#endif
