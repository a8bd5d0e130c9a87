/* Runs a command and interrupts one of its calls of the system:

    failAt N KILL|TERM|<number of an error> COMMAND...

   Counts the calls from where the program begins, once its libraries are
   loaded. At the N-th, sends the signal, or has it fail with the error. Exits
   as the command does, with 128 + the signal if there was one. If N is 0, the
   last line on the standard error is the number of calls. */

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <elf.h>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#ifndef __x86_64__
#error Registers are set as x86-64 has them
#endif

namespace {

unsigned long entryOf(pid_t child) {
    const std::string path = "/proc/" + std::to_string(child) + "/auxv";
    std::FILE* const file = std::fopen(path.data(), "rb");
    Elf64_auxv_t value{};
    do
        if(!file || std::fread(&value, sizeof(value), 1, file) != 1)
            std::abort();
    while(value.a_type != AT_ENTRY);
    std::fclose(file);
    return value.a_un.a_val;
}

/* By a breakpoint there */
void runToEntry(pid_t child) {
    constexpr long Breakpoint = 0xcc;
    const unsigned long entry = entryOf(child);
    const long code = ptrace(PTRACE_PEEKTEXT, child, entry, nullptr);
    ptrace(PTRACE_POKETEXT, child, entry, (code & ~0xffl) | Breakpoint);
    ptrace(PTRACE_CONT, child, nullptr, 0);
    waitpid(child, nullptr, 0);
    ptrace(PTRACE_POKETEXT, child, entry, code);
    user_regs_struct registers;
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rip = entry;
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
}

bool canFail(unsigned long long call) {
    return call != SYS_exit_group && call != SYS_rt_sigreturn &&
        call != SYS_umask;
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

/* At the begin of a call */
void interrupt(pid_t child, const std::string& kind) {
    user_regs_struct registers;
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    if(kind == "KILL" || kind == "TERM")
        kill(child, kind == "KILL" ? SIGKILL : SIGTERM);
    else if(canFail(registers.orig_rax))
        failCall(child, registers, std::atoi(kind.data()));
}

}

int main(int argc, char** argv) {
    if(argc < 4)
        return 1;
    const long wanted = std::atol(argv[1]);
    const pid_t child = fork();
    if(child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        execvp(argv[3], argv + 3);
        _exit(127);
    }
    int status, deliver = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr,
        PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    runToEntry(child);
    bool isEntry = true;
    for(long count = 0;;) {
        ptrace(PTRACE_SYSCALL, child, nullptr, deliver);
        waitpid(child, &status, 0);
        if(WIFEXITED(status) || WIFSIGNALED(status)) {
            if(!wanted)
                std::fprintf(stderr, "%ld\n", count);
            return WIFSIGNALED(status) ? 128 + WTERMSIG(status)
                                       : WEXITSTATUS(status);
        }
        deliver = WSTOPSIG(status);
        if(deliver != (SIGTRAP | 0x80))
            continue;
        deliver = 0;
        if(isEntry && ++count == wanted)
            interrupt(child, argv[2]);
        isEntry = !isEntry;
    }
}
