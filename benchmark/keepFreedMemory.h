#ifndef Orrelin_benchmark_keepFreedMemory_h
#define Orrelin_benchmark_keepFreedMemory_h

#include <malloc.h>

namespace OrrelinEngine {

/* Keeps freed memory in the process and joins it at once. Otherwise giving it
   back and faulting new pages in would be a large part of the times. */
inline void keepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_MXFAST, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
}

}

#endif
