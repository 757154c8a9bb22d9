#include "about/BrowserLauncher.h"

#include "tests/support/ContentOf.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QUrl address { u"https://www.quorvane.example/?a=1%202"_qs };

// xdg-open is a script in a directory of its own, or missing.
class BrowserLauncherTest : public testing::Test {
protected:
    BrowserLauncherTest() { qputenv("PATH", directory.path().toLocal8Bit()); }
    ~BrowserLauncherTest() override { qputenv("PATH", previousPath); }

    void install(const QByteArray& commands) const
    {
        QFile script(directory.filePath(u"xdg-open"_qs));
        ASSERT_TRUE(script.open(QFile::WriteOnly));
        script.write("#!/bin/sh\n" + commands);
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    void open()
    {
        openInBrowser(address, [this] { ++failures; });
    }

    QTemporaryDir directory;
    QByteArray previousPath { qgetenv("PATH") };
    int failures { 0 };
};

TEST_F(BrowserLauncherTest, PassesTheEncodedAddress)
{
    const QString received = directory.filePath(u"received"_qs);
    install("printf %s \"$*\" >" + received.toLocal8Bit() + ".new\n/bin/mv " + received.toLocal8Bit() + ".new "
        + received.toLocal8Bit() + '\n');
    open();
    QTRY_VERIFY(QFile::exists(received));
    EXPECT_EQ(contentOf(received), address.toEncoded());
    EXPECT_EQ(failures, 0);
}

TEST_F(BrowserLauncherTest, ReportsAMissingProgram)
{
    open();
    EXPECT_EQ(failures, 1);
}

TEST_F(BrowserLauncherTest, ReportsThatNoBrowserWasFound)
{
    install("echo no browser >&2\nexit 3\n");
    open();
    QTRY_COMPARE(failures, 1);
}

TEST_F(BrowserLauncherTest, ReportsAProgramThatCannotBeStarted)
{
    install("");
    QFile script(directory.filePath(u"xdg-open"_qs));
    ASSERT_TRUE(script.open(QFile::WriteOnly));
    script.write("#!/nonexistent/interpreter\n");
    script.close();
    open();
    QTRY_COMPARE(failures, 1);
}

} // namespace
