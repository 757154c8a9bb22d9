#include "app/shared/StandardStreams.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

// A pipe that can be written to takes this many bytes without waiting.
constexpr std::size_t maxWrite = PIPE_BUF;

bool canWriteToStandardError()
{
    pollfd request { STDERR_FILENO, POLLOUT, 0 };
    return ::poll(&request, 1, 0) == 1 && (request.revents & POLLOUT) != 0;
}

void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    writeToStandardError((qFormatLogMessage(type, context, message) + u'\n').toLocal8Bit().toStdString());
}

} // namespace

void prepareStandardStreams()
{
    // open() returns the lowest free descriptor.
    int descriptor = ::open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    if (descriptor >= 0)
        ::close(descriptor);
    (void)std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(writeMessage);
}

void writeToStandardError(std::string_view text)
{
    while (!text.empty() && canWriteToStandardError()) {
        const auto written = ::write(STDERR_FILENO, text.data(), std::min(text.size(), maxWrite));
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return;
    }
}
