#include <QCoreApplication>
#include <gtest/gtest.h>

// main() of test programs that need a QCoreApplication.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
