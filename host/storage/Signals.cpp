#include "Signals.h"

#include <atomic>
#include <fcntl.h>
#include <unistd.h>

#include "ProjectFolders.h"
#include "ProjectLock.h"

namespace OrrelinEngine { namespace Host {

namespace {

/* All that end a process, but not those of a fault in it, after which nothing
   can be relied on, and none that can't be handled */
constexpr int Signals[]{
    SIGINT,
    SIGTERM,
    SIGHUP,
    SIGQUIT,
    SIGABRT,
    SIGPIPE,
    SIGALRM,
    SIGVTALRM,
    SIGPROF,
    SIGUSR1,
    SIGUSR2,
    SIGXCPU,
    SIGXFSZ,
#ifdef SIGPOLL
    SIGPOLL,
#endif
#ifdef SIGSTKFLT
    SIGSTKFLT,
#endif
#ifdef SIGPWR
    SIGPWR,
#endif
};

std::atomic<int> lockParent{-1};
std::atomic<int> lockFolder{-1};

/* The handler is set for one signal only, so the second one ends the process */
void onSignal(int signal) {
    ::unlinkat(lockFolder, LockName, 0);
    ::unlinkat(lockParent, StagingFolder, AT_REMOVEDIR);
    ::raise(signal);
}

bool isHandled(int signal) {
    struct sigaction action;
    return ::sigaction(signal, nullptr, &action) == 0 &&
        action.sa_handler == onSignal;
}

void exchangeHandlers(void (*from)(int), void (*to)(int)) {
    for(const int signal: Signals) {
        struct sigaction action;
        if(::sigaction(signal, nullptr, &action) != 0 ||
            action.sa_handler != from)
            continue;
        action = {};
        action.sa_handler = to;
        action.sa_flags = int(SA_RESETHAND);
        ::sigaction(signal, &action, nullptr);
    }
}

}

void removeLockOnSignals(int parent, int folder) {
    lockParent = parent;
    lockFolder = folder;
    exchangeHandlers(SIG_DFL, onSignal);
}

void keepLockOnSignals() {
    exchangeHandlers(onSignal, SIG_DFL);
}

SignalBlock::SignalBlock() {
    sigset_t blocked;
    ::sigemptyset(&blocked);
    for(const int signal: Signals)
        ::sigaddset(&blocked, signal);
    ::sigprocmask(SIG_BLOCK, &blocked, &_before);
}

SignalBlock::~SignalBlock() {
    ::sigprocmask(SIG_SETMASK, &_before, nullptr);
}

bool SignalBlock::isPending() const {
    sigset_t pending;
    if(::sigpending(&pending) != 0)
        return false;
    for(const int signal: Signals)
        if(::sigismember(&pending, signal) == 1 && isHandled(signal))
            return true;
    return false;
}

}}
