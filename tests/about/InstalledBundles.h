#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// A temporary root directory for the property lists that a test installs.
class InstalledBundles {
public:
    [[nodiscard]] QString root() const { return m_directory.path(); }

    static QByteArray informationList(const QByteArray& version)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist>\n"
               "<plist version=\"1.0\">\n<dict>\n"
               "\t<key>CFBundleName</key>\n\t<string>Bundle</string>\n"
               "\t<key>CFBundleShortVersionString</key>\n\t<string>"
            + version
            + "</string>\n"
              "\t<key>LSRequiresCarbon</key>\n\t<true/>\n"
              "</dict>\n</plist>\n";
    }

    static void install(const QString& path, const QByteArray& content, const QDateTime& changed)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
        ASSERT_TRUE(file.flush());
        ASSERT_TRUE(file.setFileTime(changed, QFileDevice::FileModificationTime));
    }

private:
    QTemporaryDir m_directory;
};

// Local time.
inline QDateTime noonOf(int year, int month, int day)
{
    return { QDate(year, month, day), QTime(12, 0) };
}
