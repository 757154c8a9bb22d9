#pragma once

#include "posix/SecureMemory.h"
#include "services/linux/supplicant/ControlSocket.h"
#include "services/linux/supplicant/Supplicant.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>

// A private supplicant for one interface: a child process with its control socket in a directory that only we can
// enter. Keys reach it through that socket alone, neither as arguments nor in files. A child that ends or does not
// answer is started again, after pauses that grow.
class SupplicantChild final : public Supplicant {
    Q_DISABLE_COPY_MOVE(SupplicantChild)

public:
    using Log = std::function<void(const std::string&)>;

    struct Timing {
        // The driver may keep the child busy for seconds, in a system call.
        int replyTimeoutMs { 10'000 };
        int probeIntervalMs { 10'000 };
        int startTimeoutMs { 10'000 };
        // A child that has worked for so long starts the pauses over.
        int provenMs { 30'000 };
    };
    static constexpr int maxPauseMs = 30'000;

    // program: path of the supplicant; empty to look for it in the usual directories.
    SupplicantChild(std::string interfaceName, Log log);
    SupplicantChild(std::string interfaceName, Log log, std::string program, Timing timing);
    ~SupplicantChild() override;

    void start(SupplicantListener& listener) override;
    void join(const NetworkBlock& block) override;
    void widenSearch(const std::vector<std::uint32_t>& frequenciesMhz, bool isUrgent) override;
    void leave() override;

private:
    using Replied = std::function<void(std::string_view)>;
    struct Command {
        SecretText text;
        Replied replied;
    };

    void launch();
    void passOn();
    void connectControl();
    void ended(const std::string& why);
    void scheduleRestart();
    void giveUpOn(const std::string& why);
    void send(SecretText text, Replied replied);
    void sendNext();
    void dropUnsent();
    void receiveReply(std::string_view reply);
    void receiveEvent(std::string_view line);
    void setAll(const std::string& id, const NetworkBlock& block);
    void requestStatus();
    void probe();
    void becomeReady();
    [[nodiscard]] std::string path(const char* name) const;

    std::string m_interfaceName;
    Log m_log;
    std::string m_program;
    SupplicantListener* m_listener { nullptr };
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_process;
    ControlSocket m_control;
    ControlSocket m_events;
    std::deque<Command> m_commands; // the first one waits for its reply if m_isSent
    bool m_isSent { false };
    bool m_isAttached { false }; // events come
    bool m_isReady { false };
    std::uint64_t m_generation { 0 }; // of the join that replies belong to
    std::uint64_t m_statusGeneration { 0 }; // a status asked for before the link went down is out of date
    std::string m_networkId;
    int m_pauseMs { 0 };
    int m_waits { 0 }; // for the end of the previous child
    std::string m_lastComplaint;
    std::set<std::string> m_passedOn; // lines that the children printed
    QTimer m_restart;
    QTimer m_connectRetry;
    QTimer m_startTimeout;
    QTimer m_replyTimeout;
    QTimer m_probe;
    QTimer m_proven;
};
