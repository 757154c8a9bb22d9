#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QThread>

#include <functional>
#include <memory>

// A private message bus without activatable services.
class PrivateBus {
    Q_DISABLE_COPY_MOVE(PrivateBus)

public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] const QString& address() const { return m_address; } // empty if the bus did not start
    void stop();

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
    QString m_address;
};

struct FakeSession {
    QString id;
    quint32 userId { 1000 };
    QString userName;
    QString seat {};
    QString sessionClass { QStringLiteral("user") };
    QString state { QStringLiteral("active") };
    bool ended { false }; // listed, but its object no longer exists
};

// A logind on a thread of its own, so that tests can make blocking calls to it.
class FakeLogind {
    Q_DISABLE_COPY_MOVE(FakeLogind)

public:
    enum class Behaviour {
        Answer,
        Hang,
        Refuse, // with an error
        Garble, // with a reply of other types
    };

    explicit FakeLogind(const QString& busAddress);
    ~FakeLogind();

    [[nodiscard]] bool isRegistered() const { return m_registered; }
    void setSessions(QList<FakeSession> sessions);
    void setListBehaviour(Behaviour behaviour);
    void setPropertyBehaviour(Behaviour behaviour);
    // Leaves the bus.
    void leave();

private:
    class Objects;
    void onThread(const std::function<void()>& task);

    QThread m_thread;
    std::unique_ptr<Objects> m_objects;
    bool m_registered { false };
};
