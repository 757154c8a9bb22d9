#include "app/CoreDumps.h"

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs in a child process, because the setting lasts.
TEST(CoreDumps, AreDisabled)
{
    const pid_t child = ::fork();
    if (child == 0) {
        disableCoreDumps();
        rlimit limit {};
        const bool isLimited = ::getrlimit(RLIMIT_CORE, &limit) == 0 && limit.rlim_cur == 0;
#ifdef __SANITIZE_ADDRESS__
        ::_exit(isLimited ? 0 : 1);
#else
        ::_exit(isLimited && ::prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 0 ? 0 : 1);
#endif
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
