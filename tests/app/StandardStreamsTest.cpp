#include "app/shared/StandardStreams.h"

#include "app/shared/Trace.h"
#include "posix/FileDescriptor.h"

#include <QDebug>
#include <gtest/gtest.h>

#include <array>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A pipe in place of standard error while it exists.
class PipedStandardError {
public:
    PipedStandardError()
        : m_original(::dup(STDERR_FILENO))
    {
        std::array<int, 2> ends {};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        reader = FileDescriptor(ends[0]);
        EXPECT_EQ(::dup2(ends[1], STDERR_FILENO), STDERR_FILENO);
        ::close(ends[1]);
    }
    ~PipedStandardError() { ::dup2(m_original.get(), STDERR_FILENO); }

    std::string read()
    {
        std::string text(100'000, '\0');
        const auto length = ::read(reader.get(), text.data(), text.size());
        return text.substr(0, length < 0 ? 0 : static_cast<std::size_t>(length));
    }

    FileDescriptor reader;

private:
    FileDescriptor m_original;
};

TEST(StandardStreams, TracesAreWrittenUnchanged)
{
    PipedStandardError standardError;
    const std::string name = std::string(5000, 'n') + "\xE9";
    traceAlways("name %s, %d\n", name.c_str(), 7);
    EXPECT_EQ(standardError.read(), "name " + name + ", 7\n");
}

TEST(StandardStreams, AFullPipeIsNotWaitedFor)
{
    PipedStandardError standardError;
    for (int line = 0; line < 200; ++line)
        writeToStandardError(std::string(1000, 'x'));
    EXPECT_GT(standardError.read().size(), 10'000U);
}

TEST(StandardStreamsDeathTest, AReaderThatIsGoneDoesNotEndTheProgram)
{
    EXPECT_EXIT(
        {
            PipedStandardError standardError;
            standardError.reader.reset();
            prepareStandardStreams();
            traceAlways("line\n");
            qWarning("warning");
            ::_exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(StandardStreamsDeathTest, FilesDoNotTakeTheDescriptorsOfClosedStreams)
{
    EXPECT_EXIT(
        {
            for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
                ::close(stream);
            prepareStandardStreams();
            ::_exit(::open("/dev/null", O_RDONLY) > STDERR_FILENO ? 7 : 1);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
