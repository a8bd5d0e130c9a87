/* Runs a command and interrupts one of its calls of the system:

    failAt N KILL|TERM|HUP|INT|<number of an error> FOLDER COMMAND...

   Counts the calls on files from the first that names a file in FOLDER on. At
   the N-th, sends the signal, or has it fail with the error. Exits as the
   command does, with 128 + the signal if there was one, and with 99 if there
   were fewer calls and it succeeded. */

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#ifndef __x86_64__
#error Registers are set as x86-64 has them
#endif

namespace {

constexpr long Calls[]{SYS_openat, SYS_open, SYS_read, SYS_write, SYS_pread64,
    SYS_pwrite64, SYS_close, SYS_fsync, SYS_rename, SYS_renameat, SYS_renameat2,
    SYS_unlink, SYS_unlinkat, SYS_rmdir, SYS_mkdir, SYS_mkdirat, SYS_flock,
    SYS_fstat, SYS_stat, SYS_lstat, SYS_newfstatat, SYS_getdents64,
    SYS_readlink, SYS_fchmod, SYS_fchown, SYS_ftruncate, SYS_faccessat,
    SYS_faccessat2, SYS_lseek, SYS_fcntl};

bool isCounted(unsigned long long call) {
    for(const long each: Calls)
        if(call == static_cast<unsigned long long>(each))
            return true;
    return false;
}

/* Whether one of the first arguments is a path with the text */
bool names(pid_t child, const user_regs_struct& registers, const char* text) {
    for(const unsigned long long address: {registers.rdi, registers.rsi}) {
        char path[4096]{};
        iovec to{path, sizeof(path) - 1};
        iovec from{reinterpret_cast<void*>(address), sizeof(path) - 1};
        /* Strings may end close to a page that can't be read */
        from.iov_len = 4096 - address % 4096;
        if(process_vm_readv(child, &to, 1, &from, 1, 0) > 0 &&
            std::strstr(path, text))
            return true;
    }
    return false;
}

int signalOf(const std::string& what) {
    return what == "KILL" ? SIGKILL
        : what == "TERM"  ? SIGTERM
        : what == "HUP"   ? SIGHUP
        : what == "INT"   ? SIGINT
                          : 0;
}

/* The call isn't made, and what it returns is set at its end */
void failCall(pid_t child, user_regs_struct registers, int error) {
    registers.orig_rax = ~0ull;
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    ptrace(PTRACE_SYSCALL, child, nullptr, 0);
    waitpid(child, nullptr, 0);
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rax = static_cast<unsigned long long>(-error);
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
}

int exitCode(int status, bool isDone) {
    if(WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return isDone || WEXITSTATUS(status) ? WEXITSTATUS(status) : 99;
}

}

int main(int argc, char** argv) {
    if(argc < 5)
        return 1;
    const pid_t child = fork();
    if(child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        execvp(argv[4], argv + 4);
        _exit(127);
    }
    int status, deliver = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
    long left = std::atol(argv[1]);
    bool hasBegun = false, isEntry = true, isDone = false;
    for(;; waitpid(child, &status, 0)) {
        if(WIFEXITED(status) || WIFSIGNALED(status))
            return exitCode(status, isDone);
        deliver = 0;
        if(WSTOPSIG(status) == (SIGTRAP | 0x80)) {
            user_regs_struct registers;
            ptrace(PTRACE_GETREGS, child, nullptr, &registers);
            if(isEntry && !isDone && isCounted(registers.orig_rax)) {
                hasBegun = hasBegun || names(child, registers, argv[3]);
                if(hasBegun && --left == 0) {
                    isDone = true;
                    if(const int signal = signalOf(argv[2]))
                        kill(child, signal);
                    else {
                        failCall(child, registers, std::atoi(argv[2]));
                        isEntry = false;
                    }
                }
            }
            isEntry = !isEntry;
        } else if(WSTOPSIG(status) != SIGTRAP)
            deliver = WSTOPSIG(status);
        ptrace(PTRACE_SYSCALL, child, nullptr, deliver);
    }
}
