#include "about/BrowserLauncher.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>

#include <chrono>

#include <unistd.h>

namespace {

// On some desktops xdg-open runs until the browser ends. A failure after this time is the browser's.
constexpr std::chrono::seconds startLimit { 15 };

} // namespace

void openInBrowser(const QUrl& url, const std::function<void()>& failed)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (program.isEmpty()) {
        failed();
        return;
    }
    // Without an owner: destroying it would end the browser with this program.
    auto* const process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { (void)::setsid(); });
    const QDeadlineTimer deadline(startLimit);
    QObject::connect(
        process, &QProcess::finished, process, [process, failed, deadline](int code, QProcess::ExitStatus status) {
            process->deleteLater();
            if ((code != 0 || status != QProcess::NormalExit) && !deadline.hasExpired())
                failed();
        });
    QObject::connect(process, &QProcess::errorOccurred, process, [process, failed](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return; // finished follows
        process->deleteLater();
        failed();
    });
    process->start(program, { url.toString(QUrl::FullyEncoded) });
}
