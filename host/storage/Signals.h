#ifndef Orrelin_host_storage_Signals_h
#define Orrelin_host_storage_Signals_h

#include <csignal>

#include "OrrelinEngine.h"

namespace OrrelinEngine { namespace Host {

/* Between these two calls, the signals that end a process remove the lock from
   a folder, and the folder from its parent if it's empty, before they end the
   process. Ignored signals stay ignored. All of this holds for the process,
   which has only one lock. */
void removeLockOnSignals(int parent, int folder);
void keepLockOnSignals();

/* Holds these signals back while it exists. Can be nested. */
class SignalBlock {
public:
    explicit SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    ~SignalBlock();
    SignalBlock& operator=(const SignalBlock&) = delete;

    /* Whether a signal is held back that will end the process */
    bool isPending() const;

private:
    sigset_t _before;
};

}}

#endif
