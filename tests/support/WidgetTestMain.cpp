#include <QApplication>
#include <gtest/gtest.h>

// main() of test programs with widgets; rendered offscreen unless QT_QPA_PLATFORM says otherwise.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Vantrel"));
    return RUN_ALL_TESTS();
}
