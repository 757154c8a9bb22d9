#pragma once

#include <QtGlobal>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

// While it exists, the process can open no further descriptors.
class DescriptorShortage {
    Q_DISABLE_COPY_MOVE(DescriptorShortage)

public:
    DescriptorShortage()
    {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &m_usual), 0);
        // Only the lowest free number is ruled out: poll() fails if it is given more descriptors than the limit.
        const int lowestFree = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
        ::close(lowestFree);
        rlimit low = m_usual;
        low.rlim_cur = static_cast<rlim_t>(lowestFree);
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
    }
    ~DescriptorShortage() { (void)::setrlimit(RLIMIT_NOFILE, &m_usual); }

private:
    rlimit m_usual {};
};
