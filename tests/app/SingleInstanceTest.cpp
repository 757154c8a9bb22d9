#include "app/SingleInstance.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class SingleInstanceTest : public testing::Test {
protected:
    [[nodiscard]] SingleInstance instance(const QByteArray& display = ":0") const
    {
        return { directory.path().toStdString(), display };
    }

    // A later start, in a thread because it waits for the confirmation.
    [[nodiscard]] bool laterStartIsFirst(const QByteArray& token)
    {
        std::atomic<int> result { -1 };
        std::thread later([&] { result = instance().isFirst(token) ? 1 : 0; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return result != -1; }, 20000));
        later.join();
        return result == 1;
    }

    QTemporaryDir directory;
};

TEST_F(SingleInstanceTest, LaterStartActivatesTheFirst)
{
    SingleInstance first = instance();
    ASSERT_TRUE(first.isFirst({}));
    std::vector<QByteArray> tokens;
    const ActivationListener listener(first, [&](const QByteArray& token) { tokens.push_back(token); });
    EXPECT_FALSE(laterStartIsFirst("token"));
    EXPECT_FALSE(laterStartIsFirst({}));
    EXPECT_EQ(tokens, (std::vector<QByteArray> { "token", {} }));
}

TEST_F(SingleInstanceTest, AnotherDisplayHasItsOwnInstance)
{
    SingleInstance first = instance();
    ASSERT_TRUE(first.isFirst({}));
    EXPECT_TRUE(instance(":1").isFirst({}));
}

TEST_F(SingleInstanceTest, EndedInstanceLeavesNothingThatMatters)
{
    {
        SingleInstance ended = instance();
        ASSERT_TRUE(ended.isFirst({}));
    }
    SingleInstance next = instance();
    EXPECT_TRUE(next.isFirst({}));
    const ActivationListener listener(next, [](const QByteArray&) {});
    EXPECT_FALSE(laterStartIsFirst({})) << "the socket of the ended instance is replaced";
}

TEST_F(SingleInstanceTest, KilledInstanceLeavesNothingThatMatters)
{
    const pid_t child = ::fork();
    if (child == 0) {
        SingleInstance killed = instance();
        if (killed.isFirst({}))
            (void)::raise(SIGKILL);
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(instance().isFirst({}));
}

TEST_F(SingleInstanceTest, StartsIfTheFirstDoesNotAnswer)
{
    SingleInstance silent = instance();
    ASSERT_TRUE(silent.isFirst({}));
    ASSERT_NE(silent.socket(), -1);
    EXPECT_TRUE(laterStartIsFirst({}));
}

TEST_F(SingleInstanceTest, StartsWithoutADirectory)
{
    for (const std::string& path : { std::string(), directory.filePath(u"missing"_qs).toStdString() }) {
        EXPECT_TRUE(SingleInstance(path, {}).isFirst({}));
        EXPECT_TRUE(SingleInstance(path, {}).isFirst({}));
    }
}

TEST_F(SingleInstanceTest, DoesNotUseADirectoryThatOthersMayWriteTo)
{
    ASSERT_EQ(::chmod(directory.path().toLocal8Bit().constData(), 0777), 0);
    SingleInstance first = instance();
    EXPECT_TRUE(first.isFirst({}));
    EXPECT_EQ(first.socket(), -1);
    EXPECT_TRUE(instance().isFirst({}));
    EXPECT_TRUE(QDir(directory.path()).isEmpty());
}

TEST_F(SingleInstanceTest, StartsIfTheSocketCannotBeBound)
{
    SingleInstance first((directory.path() + QString(120, u'/')).toStdString(), ":0");
    EXPECT_TRUE(first.isFirst({}));
    EXPECT_EQ(first.socket(), -1);
}

} // namespace
