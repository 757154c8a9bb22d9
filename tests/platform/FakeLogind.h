#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QThread>

#include <functional>
#include <memory>

// A message bus of its own, on which nothing is started by itself.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] const QString& address() const { return m_address; } // empty when the bus did not start
    void stop();

private:
    QTemporaryDir m_folder;
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
    bool ended { false }; // still listed, but gone when it is looked at
};

// logind on a bus, on a thread of its own, so that a test may wait for its answers.
class FakeLogind {
public:
    enum class Behaviour {
        Answer,
        Hang,
        Refuse, // with an error
        Garble, // with a reply of other types
    };

    explicit FakeLogind(const QString& busAddress);
    ~FakeLogind();
    FakeLogind(const FakeLogind&) = delete;
    FakeLogind& operator=(const FakeLogind&) = delete;

    [[nodiscard]] bool isRegistered() const { return m_registered; }
    void setSessions(QList<FakeSession> sessions);
    void setListBehaviour(Behaviour behaviour);
    void setPropertyBehaviour(Behaviour behaviour);
    // Goes from the bus.
    void leave();

private:
    class Objects;
    void onThread(const std::function<void()>& task);

    QThread m_thread;
    std::unique_ptr<Objects> m_objects;
    bool m_registered { false };
};
