#include <QApplication>
#include <gtest/gtest.h>

// The main of every test program that shows widgets. They go to no screen unless the caller asks for one.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Vantrel"));
    return RUN_ALL_TESTS();
}
