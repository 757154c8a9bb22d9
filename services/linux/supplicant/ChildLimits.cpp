#include "services/linux/supplicant/ChildLimits.h"

#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// 1 byte instead of 0: the kernel takes 0 as no limit if it pipes cores to a program, and 1 as none at all.
void forbidCores()
{
    const rlimit limit { 1, 1 };
    (void)::setrlimit(RLIMIT_CORE, &limit);
}

// Survives exec, unlike the dumpable flag. A core made in spite of the limit would contain no memory.
void emptyCores()
{
    const int filter = ::open("/proc/self/coredump_filter", O_WRONLY | O_CLOEXEC);
    if (filter == -1)
        return;
    if (::write(filter, "0", 1) != 1) { } // the limit remains
    (void)::close(filter);
}

} // namespace

void limitChild()
{
    // Not asked to end: it would take the interface down a moment later, when the next service already uses it.
    (void)::prctl(PR_SET_PDEATHSIG, SIGKILL);
    forbidCores();
    emptyCores();
    sigset_t none {};
    sigemptyset(&none);
    (void)::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void protectOwnMemory()
{
    // The sanitizers' leak check attaches to the process.
#ifndef __SANITIZE_ADDRESS__
    (void)::prctl(PR_SET_DUMPABLE, 0);
#endif
    forbidCores();
}
