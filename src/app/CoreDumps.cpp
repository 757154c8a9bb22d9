#include "app/CoreDumps.h"

#include <sys/prctl.h>
#include <sys/resource.h>

void disableCoreDumps()
{
    rlimit limit {};
    if (::getrlimit(RLIMIT_CORE, &limit) == 0) {
        limit.rlim_cur = 0;
        (void)::setrlimit(RLIMIT_CORE, &limit);
    }
// The leak check of the sanitizers attaches to the process like a debugger.
#ifndef __SANITIZE_ADDRESS__
    // The limit does not apply to a core file that the kernel pipes to a collector; this does.
    (void)::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
#endif
}
