#include "services/linux/supplicant/SupplicantChild.h"

#include "services/linux/supplicant/ChildLimits.h"
#include "services/linux/supplicant/NetworkSettings.h"
#include "services/linux/supplicant/SocketDirectory.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr int firstPauseMs = 200;
constexpr int connectRetryMs = 30;
constexpr std::string_view removeAll = "REMOVE_NETWORK all";

QString findProgram()
{
    const QString name = QStringLiteral("wpa_supplicant");
    const QString found = QStandardPaths::findExecutable(
        name, { QStringLiteral("/usr/sbin"), QStringLiteral("/sbin"), QStringLiteral("/usr/local/sbin") });
    return found.isEmpty() ? QStandardPaths::findExecutable(name) : found;
}

bool isOk(std::string_view reply)
{
    return reply.starts_with("OK");
}

// How many children of an interface were killed and have not ended yet. Until then they would take hold of an interface of
// the same name.
std::map<std::string, int>& dyingChildren()
{
    static std::map<std::string, int> children;
    return children;
}

// Its signal may be on the call stack, or its end still to come.
void dismiss(const std::string& interfaceName, QProcess* process)
{
    process->disconnect();
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    ++dyingChildren()[interfaceName];
    QObject::connect(process, &QProcess::finished, process, [process, interfaceName] {
        if (--dyingChildren()[interfaceName] == 0)
            dyingChildren().erase(interfaceName);
        process->deleteLater();
    });
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

} // namespace

SupplicantChild::SupplicantChild(std::string interfaceName, Log log)
    : SupplicantChild(std::move(interfaceName), std::move(log), {}, Timing {})
{
}

SupplicantChild::SupplicantChild(std::string interfaceName, Log log, std::string program, Timing timing)
    : m_interfaceName(std::move(interfaceName))
    , m_log(std::move(log))
    , m_program(std::move(program))
    , m_control([this](std::string_view reply) { receiveReply(reply); })
    , m_events([this](std::string_view line) { receiveEvent(line); })
{
    for (QTimer* const timer : { &m_restart, &m_connectRetry, &m_startTimeout, &m_replyTimeout, &m_proven })
        timer->setSingleShot(true);
    m_connectRetry.setInterval(connectRetryMs);
    m_startTimeout.setInterval(timing.startTimeoutMs);
    m_replyTimeout.setInterval(timing.replyTimeoutMs);
    m_probe.setInterval(timing.probeIntervalMs);
    m_proven.setInterval(timing.provenMs);
    QObject::connect(&m_restart, &QTimer::timeout, &m_restart, [this] { launch(); });
    QObject::connect(&m_connectRetry, &QTimer::timeout, &m_connectRetry, [this] { connectControl(); });
    QObject::connect(&m_startTimeout, &QTimer::timeout, &m_startTimeout,
        [this] { giveUpOn("it does not open its control socket, or sends no events"); });
    QObject::connect(&m_replyTimeout, &QTimer::timeout, &m_replyTimeout, [this] { giveUpOn("it does not answer"); });
    QObject::connect(&m_probe, &QTimer::timeout, &m_probe, [this] { probe(); });
    QObject::connect(&m_proven, &QTimer::timeout, &m_proven, [this] {
        m_pauseMs = 0;
        m_lastComplaint.clear();
    });
}

SupplicantChild::~SupplicantChild()
{
    if (!m_process)
        return;
    // Killed: its end drops the link. Not waited for: a driver may keep it for long.
    m_process->kill();
    dismiss(m_interfaceName, m_process.release());
}

void SupplicantChild::start(SupplicantListener& listener)
{
    m_listener = &listener;
    launch();
}

std::string SupplicantChild::path(const char* name) const
{
    return m_directory->filePath(QString::fromUtf8(name)).toStdString();
}

void SupplicantChild::launch()
{
    if (dyingChildren().contains(m_interfaceName)) {
        constexpr int patience = 20; // pauses
        if (++m_waits == patience)
            m_log("the previous wpa_supplicant does not end");
        m_restart.start(firstPauseMs);
        return;
    }
    m_waits = 0;
    // A new one for each child: nothing of the previous one is in the way.
    m_directory = makeSocketDirectory();
    QFile settings(m_directory->filePath(QStringLiteral("settings")));
    if (!m_directory->isValid() || !settings.open(QIODevice::WriteOnly)) {
        ended("cannot create a directory for its sockets");
        return;
    }
    settings.write("ctrl_interface=" + m_directory->path().toUtf8() + "\nap_scan=1\nupdate_config=0\np2p_disabled=1\n");
    settings.close();

    m_process = std::make_unique<QProcess>();
    m_process->setProgram(m_program.empty() ? findProgram() : QString::fromStdString(m_program));
    m_process->setArguments({ QStringLiteral("-qq"), QStringLiteral("-Dnl80211"),
        QStringLiteral("-i") + QString::fromStdString(m_interfaceName), QStringLiteral("-c") + settings.fileName() });
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(m_process.get(), &QProcess::readyRead, m_process.get(), [this] { passOn(); });
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setChildProcessModifier(limitChild);
    QObject::connect(m_process.get(), &QProcess::finished, m_process.get(),
        [this](int code) { ended("it ended with status " + std::to_string(code)); });
    QObject::connect(m_process.get(), &QProcess::errorOccurred, m_process.get(), [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended("it cannot be started: " + m_process->errorString().toStdString());
    });
    m_startTimeout.start();
    m_connectRetry.start();
    m_process->start();
}

// A daemon has no standard error. Each line once; the child prints no keys.
void SupplicantChild::passOn()
{
    constexpr std::size_t maxLines = 100;
    while (m_process && m_process->canReadLine()) {
        const std::string line = m_process->readLine().trimmed().toStdString();
        if (!line.empty() && m_passedOn.size() < maxLines && m_passedOn.insert(line).second)
            m_log("wpa_supplicant: " + line);
    }
    constexpr qint64 maxPending = 8192; // a line without an end
    if (m_process && m_process->bytesAvailable() > maxPending)
        (void)m_process->readAll();
}

void SupplicantChild::connectControl()
{
    const std::string server = path(m_interfaceName.c_str());
    if (m_control.connect(path("commands"), server) || m_events.connect(path("events"), server)
        || m_events.send("ATTACH")) {
        m_connectRetry.start();
        return;
    }
    send(SecretText("PING"), [this](std::string_view) { becomeReady(); });
}

// Once it answers commands and has agreed to send events.
void SupplicantChild::becomeReady()
{
    if (!m_isAttached || !m_commands.empty() || std::exchange(m_isReady, true))
        return;
    m_startTimeout.stop();
    m_probe.start();
    m_proven.start();
    m_listener->supplicantReady();
}

void SupplicantChild::giveUpOn(const std::string& why)
{
    if (m_process)
        m_process->kill();
    ended(why);
}

void SupplicantChild::ended(const std::string& why)
{
    if (why != m_lastComplaint)
        m_log("wpa_supplicant is started again: " + why);
    m_lastComplaint = why;
    for (QTimer* const timer : { &m_connectRetry, &m_startTimeout, &m_replyTimeout, &m_probe, &m_proven })
        timer->stop();
    m_control.close();
    m_events.close();
    m_commands.clear();
    m_isSent = false;
    m_isAttached = false;
    ++m_generation;
    if (m_process) {
        dismiss(m_interfaceName, m_process.release());
    }
    if (std::exchange(m_isReady, false))
        m_listener->supplicantLost();
    scheduleRestart();
}

void SupplicantChild::scheduleRestart()
{
    m_pauseMs = std::clamp(2 * m_pauseMs, firstPauseMs, maxPauseMs);
    m_restart.start(m_pauseMs);
}

void SupplicantChild::send(SecretText text, Replied replied)
{
    m_commands.push_back({ std::move(text), std::move(replied) });
    if (m_commands.size() == 1)
        sendNext();
}

void SupplicantChild::sendNext()
{
    if (m_commands.empty())
        return;
    m_isSent = true;
    m_replyTimeout.start();
    // A full socket means that the child does not read: the time-out deals with it.
    if (m_control.send(m_commands.front().text.view())) { }
}

void SupplicantChild::dropUnsent()
{
    ++m_generation;
    const auto firstUnsent = m_commands.begin() + (m_isSent && !m_commands.empty() ? 1 : 0);
    m_commands.erase(firstUnsent, m_commands.end());
}

void SupplicantChild::receiveReply(std::string_view reply)
{
    if (!m_isSent || m_commands.empty())
        return;
    m_replyTimeout.stop();
    m_isSent = false;
    const Command command = std::move(m_commands.front());
    m_commands.pop_front();
    command.replied(trimmed(reply)); // may drop the commands that follow
    if (!m_isSent)
        sendNext();
}

void SupplicantChild::receiveEvent(std::string_view line)
{
    const auto event = supplicantEvent(line);
    if (!event && isOk(line) && !std::exchange(m_isAttached, true))
        becomeReady();
    if (!event || !m_isReady)
        return;
    if (event->kind == SupplicantEventKind::Disconnected)
        ++m_statusGeneration;
    m_listener->supplicantEvent(*event);
    if (event->kind == SupplicantEventKind::Connected || event->kind == SupplicantEventKind::ChannelSwitched)
        requestStatus();
}

void SupplicantChild::requestStatus()
{
    send(SecretText("STATUS"), [this, join = m_generation, status = m_statusGeneration](std::string_view reply) {
        if (join == m_generation && status == m_statusGeneration)
            m_listener->supplicantStatus(supplicantStatus(reply));
    });
}

// Shows that the child answers, and finds what a lost event would have told.
void SupplicantChild::probe()
{
    if (!m_commands.empty())
        return;
    send(SecretText("STATUS"), [this, join = m_generation, status = m_statusGeneration](std::string_view reply) {
        if (join != m_generation || status != m_statusGeneration || !m_isReady)
            return;
        // Perhaps it has stopped sending events: it does so when it cannot deliver them.
        if (m_listener->supplicantProbed(supplicantStatus(reply))
            && (m_events.send("DETACH") || m_events.send("ATTACH")))
            giveUpOn("it does not take the request for events");
    });
}

void SupplicantChild::join(const NetworkBlock& block)
{
    if (!m_isReady)
        return;
    dropUnsent();
    m_networkId.clear();
    send(SecretText(removeAll), [](std::string_view) {});
    send(SecretText("ADD_NETWORK"), [this, block, generation = m_generation](std::string_view reply) {
        if (generation == m_generation)
            setAll(std::string(reply), block);
    });
}

void SupplicantChild::setAll(const std::string& id, const NetworkBlock& block)
{
    if (id.empty() || id.find_first_not_of("0123456789") != std::string::npos) {
        m_log("wpa_supplicant refuses a network");
        return;
    }
    m_networkId = id;
    for (const NetworkSetting& setting : networkSettings(block)) {
        SecretVector<char> text;
        const auto append = [&text](std::string_view part) { text.insert(text.end(), part.begin(), part.end()); };
        append("SET_NETWORK " + id + ' ' + setting.name + ' ');
        append(setting.value.view());
        send(SecretText(std::string_view(text.data(), text.size())),
            [this, name = setting.name, isOptional = setting.isOptional, join = m_generation](std::string_view reply) {
                if (isOk(reply) || isOptional || join != m_generation)
                    return;
                m_log("wpa_supplicant refuses the setting " + name);
                // Without it, the join could end in another network.
                dropUnsent();
                m_networkId.clear();
                send(SecretText(removeAll), [](std::string_view) {});
            });
    }
    send(SecretText("SELECT_NETWORK " + id), [this](std::string_view reply) {
        if (!isOk(reply))
            m_log("wpa_supplicant refuses to join");
    });
}

void SupplicantChild::widenSearch(const std::vector<std::uint32_t>& frequenciesMhz, bool isUrgent)
{
    if (!m_isReady || m_networkId.empty() || frequenciesMhz.empty())
        return;
    // The allowed channels may have changed since the join.
    for (const char* const name : { " freq_list ", " scan_freq " })
        send(SecretText("SET_NETWORK " + m_networkId + name + frequencyList(frequenciesMhz)), [](std::string_view) {});
    if (isUrgent)
        send(SecretText("REASSOCIATE"), [](std::string_view) {});
}

void SupplicantChild::leave()
{
    if (!m_isReady)
        return;
    dropUnsent();
    m_networkId.clear();
    send(SecretText("DISCONNECT"), [](std::string_view) {});
    send(SecretText(removeAll), [](std::string_view) {});
}
