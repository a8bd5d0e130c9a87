#ifndef Orrelin_host_storage_Signals_h
#define Orrelin_host_storage_Signals_h

#include <csignal>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* From here on, and until the other is called, SIGINT, SIGTERM and SIGHUP
   remove the lock from a folder, and the folder from its parent if it's empty,
   before they end the process. Those that were ignored still are. One process
   has one lock. */
void removeLockOnSignals(int parent, int folder);
void keepLockOnSignals();

/* Holds the signals back until its end. Can be nested. */
class SignalBlock {
public:
    explicit SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    ~SignalBlock();
    SignalBlock& operator=(const SignalBlock&) = delete;

    /* Whether there is one that will end the process, held back or not */
    bool isPending() const;

private:
    sigset_t _before;
};

}}

#endif
