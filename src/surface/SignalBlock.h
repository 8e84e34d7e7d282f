#ifndef KIVGLES_SURFACE_SIGNALBLOCK_H
#define KIVGLES_SURFACE_SIGNALBLOCK_H

#include <csignal>
#include <initializer_list>

namespace kivgles {

// Blocks every signal on the calling thread but those that tell of a fault of the thread itself. A thread
// that is started meanwhile inherits this, so that it takes none of the client's signals, from its first
// instruction on. The destructor puts the caller's mask back.
class SignalBlock {
 public:
    SignalBlock() {
        sigset_t blocked;
        sigfillset(&blocked);
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS}) {
            sigdelset(&blocked, fault);
        }
        pthread_sigmask(SIG_BLOCK, &blocked, &callersMask);
    }
    ~SignalBlock() { pthread_sigmask(SIG_SETMASK, &callersMask, nullptr); }

    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

 private:
    sigset_t callersMask{};
};

}  // namespace kivgles

#endif  // KIVGLES_SURFACE_SIGNALBLOCK_H
