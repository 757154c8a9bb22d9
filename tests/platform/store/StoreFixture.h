#pragma once

#include "tests/support/ContentOf.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// Files in a temporary directory.
class StoreFixture : public testing::Test {
protected:
    [[nodiscard]] QString at(const char* name) const { return directory.filePath(QString::fromLatin1(name)); }

    // All names in the directory of a file, sorted and separated by spaces.
    [[nodiscard]] static std::string namesBeside(const QString& path)
    {
        return QFileInfo(path)
            .dir()
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)
            .join(u' ')
            .toStdString();
    }

    static void writePlainly(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    [[nodiscard]] static mode_t modeOf(const QString& path)
    {
        struct stat status { };
        return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    static void setMode(const QString& path, mode_t mode)
    {
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
    }

    // A link to a damaged file. The link's name leaves no room for ".unreadable", so the file cannot be backed up;
    // nothing else prevents replacing it.
    [[nodiscard]] QString damagedFileWithoutBackup()
    {
        const QString link = directory.filePath(QString(250, u'x'));
        writePlainly(at("damaged"), "damaged");
        EXPECT_TRUE(QFile::link(at("damaged"), link));
        return link;
    }

    QTemporaryDir directory;
};

// Forks a process that runs the work and exits; returns its process ID.
inline pid_t startProcess(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

// True if the process exits and its work returned true.
inline bool succeeded(pid_t child)
{
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
