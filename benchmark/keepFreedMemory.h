#ifndef Orrelin_benchmark_keepFreedMemory_h
#define Orrelin_benchmark_keepFreedMemory_h

#include <malloc.h>

namespace OrrelinEngine {

/* Memory that was freed is joined at once and used again instead of being given
   back, as otherwise that and page faults are what is measured */
inline void keepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_MXFAST, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
}

}

#endif
