#include <QCoreApplication>
#include <gtest/gtest.h>

// Sockets and timers of the simulator live in a Qt event loop.
int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    const QCoreApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
