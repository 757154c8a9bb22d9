#include "tests/profiles/KilledAtSystemCall.h"

#include <csignal>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int systemCallStop = SIGTRAP | 0x80; // with PTRACE_O_TRACESYSGOOD

[[noreturn]] void runTraced(const std::function<void()>& work)
{
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        ::_exit(2);
    (void)::raise(SIGSTOP); // wait for the tracer
    work();
    ::_exit(0);
}

int waitFor(pid_t child)
{
    int status = 0;
    return ::waitpid(child, &status, 0) == child ? status : -1;
}

KilledOutcome end(pid_t child)
{
    (void)::kill(child, SIGKILL);
    const int status = waitFor(child);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL ? KilledOutcome::Ended : KilledOutcome::Failed;
}

KilledOutcome follow(pid_t child, int nth)
{
    bool entering = true; // stops come in pairs, one on entry and one on return
    for (int calls = 0;;) {
        if (::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0)
            return KilledOutcome::Failed;
        const int status = waitFor(child);
        if (status == -1 || !WIFSTOPPED(status))
            return status == 0 ? KilledOutcome::Finished : KilledOutcome::Failed;
        if (WSTOPSIG(status) != systemCallStop)
            return end(child), KilledOutcome::Failed;
        if (entering && ++calls == nth)
            return end(child);
        entering = !entering;
    }
}

} // namespace

KilledOutcome runKilledAtSystemCall(int nth, const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == -1)
        return KilledOutcome::Failed;
    if (child == 0)
        runTraced(work);
    if (!WIFSTOPPED(waitFor(child)))
        return KilledOutcome::Failed;
    constexpr long options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
    if (::ptrace(PTRACE_SETOPTIONS, child, nullptr, options) != 0)
        return end(child), KilledOutcome::Failed;
    return follow(child, nth);
}
