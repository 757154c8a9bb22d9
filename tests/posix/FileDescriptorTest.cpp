#include "posix/FileDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>

namespace {

FileDescriptor openNull()
{
    return FileDescriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}

bool isOpen(int descriptor)
{
    return ::fcntl(descriptor, F_GETFD) != -1;
}

TEST(FileDescriptor, MoveAssignmentClosesThePreviousDescriptorAtOnce)
{
    FileDescriptor first = openNull();
    FileDescriptor second = openNull();
    const int closed = first.get();
    const int kept = second.get();
    first = std::move(second);
    EXPECT_FALSE(isOpen(closed));
    EXPECT_EQ(first.get(), kept);
    EXPECT_TRUE(isOpen(kept));
    EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move): a moved-from owner is empty
}

TEST(FileDescriptor, SelfAssignmentKeepsTheDescriptor)
{
    FileDescriptor descriptor = openNull();
    FileDescriptor& alias = descriptor;
    descriptor = std::move(alias);
    EXPECT_TRUE(isOpen(descriptor.get()));
}

} // namespace
