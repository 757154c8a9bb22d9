#include "posix/SocketAddress.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

constexpr std::size_t maxPathLength = sizeof(sockaddr_un::sun_path) - 1;

TEST(SocketAddress, HoldsThePathWithATerminatingZero)
{
    const std::string longest(maxPathLength, 'p');
    for (const std::string& path : { std::string("/run/card"), longest }) {
        const auto address = socketAddress(path);
        ASSERT_TRUE(address);
        EXPECT_EQ(address->sun_family, AF_UNIX);
        EXPECT_EQ(std::string(address->sun_path), path);
    }
}

TEST(SocketAddress, IsAbsentForAPathThatDoesNotFit)
{
    EXPECT_FALSE(socketAddress(std::string(maxPathLength + 1, 'p')));
}

} // namespace
