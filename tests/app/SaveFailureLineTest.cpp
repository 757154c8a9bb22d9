#include "app/SaveFailureLine.h"

#include "tests/app/ApplicationFixture.h"

#include <QAccessible>
#include <QFile>

namespace {

class SaveFailureLineTest : public ApplicationFixture {
protected:
    SaveFailureLineTest() { application.awakeFromNib(); }

    [[nodiscard]] QString message() const { return line.isVisible() ? line.accessibleName() : QString(); }

    SaveFailureLine& line { *application.window().findChild<SaveFailureLine*>() };
};

TEST_F(SaveFailureLineTest, NamesFileAndReasonUntilTheFileIsSaved)
{
    EXPECT_EQ(message(), QString());
    line.saveFailed(u"/a/first.plist"_qs, u"No space left on device"_qs);
    line.saveFailed(u"/a/second.plist"_qs, u"Permission denied"_qs);
    EXPECT_TRUE(message().contains(u"/a/first.plist (No space left on device)"_qs));
    EXPECT_TRUE(message().contains(u"/a/second.plist (Permission denied)"_qs));
    line.saveSucceeded(u"/a/first.plist"_qs);
    EXPECT_FALSE(message().contains(u"first"_qs));
    EXPECT_TRUE(message().contains(u"second"_qs));
    line.saveSucceeded(u"/a/second.plist"_qs);
    EXPECT_EQ(message(), QString());
}

TEST_F(SaveFailureLineTest, IsAnAlertForScreenReaders)
{
    line.saveFailed(u"/a/first.plist"_qs, u"Permission denied"_qs);
    QAccessibleInterface* const alert = QAccessible::queryAccessibleInterface(&line);
    EXPECT_EQ(alert->role(), QAccessible::AlertMessage);
    EXPECT_EQ(alert->text(QAccessible::Name), message());
}

TEST_F(SaveFailureLineTest, TakesNoSpaceWhileThereIsNone)
{
    const QRect pages = application.window().tabView().geometry();
    line.saveFailed(u"/a/first.plist"_qs, u"Permission denied"_qs);
    QCoreApplication::processEvents();
    EXPECT_LT(application.window().tabView().height(), pages.height());
    line.saveSucceeded(u"/a/first.plist"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(application.window().tabView().geometry(), pages);
}

TEST_F(SaveFailureLineTest, WrapsALongPath)
{
    const int width = application.window().minimumSizeHint().width();
    line.saveFailed(u"/home/somebody"_qs + u"/a-directory-with-a-name"_qs.repeated(20), u"Permission denied"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(application.window().minimumSizeHint().width(), width);
    application.window().resize(640, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(application.window().width(), 640);
    EXPECT_GE(line.height(), line.heightForWidth(line.width()));
}

TEST_F(SaveFailureLineTest, ApplyReportsThatTheSettingsWereNotStored)
{
    const QString blocked = home.filePath(u"Library"_qs);
    QFile file(blocked);
    ASSERT_TRUE(file.open(QFile::WriteOnly)) << "a file where the directory belongs";
    tick();
    EXPECT_TRUE(message().contains(u"AdvancedProfileSetting.plist"_qs)) << qPrintable(message());
    ASSERT_TRUE(file.remove());
    application.window().findChild<AdvancePageController*>()->OnApply();
    EXPECT_EQ(message(), QString());
}

} // namespace
