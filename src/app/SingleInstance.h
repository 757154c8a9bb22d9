#pragma once

#include "posix/FileDescriptor.h"

#include <QByteArray>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <string>

// One instance of the program per user and display. A lock decides which one is the first; it ends with its process, so
// it is never stale. Later starts ask the first one over a socket to show its window.
class SingleInstance {
public:
    // The directory holds the lock and the socket; display distinguishes displays of the same user. Without a directory
    // that only this user may write to, every instance is the first.
    SingleInstance(const std::string& directory, const QByteArray& display);

    // Returns false if another instance has confirmed that it shows its window. An instance that does not answer within
    // seconds, or is just ending, does not prevent this one from starting. The token authorises the other instance to
    // take the focus; it may be empty.
    [[nodiscard]] bool isFirst(const QByteArray& activationToken);

    // -1 if this is not the first instance, or if others cannot reach it.
    [[nodiscard]] int socket() const { return m_socket.get(); }

private:
    [[nodiscard]] bool takeLock();
    void listenForOthers();
    [[nodiscard]] bool askFirst(const QByteArray& activationToken) const;

    bool m_isUsable { false };
    std::string m_lockPath;
    std::string m_socketPath;
    FileDescriptor m_lock;
    FileDescriptor m_socket;
};

// Calls back with the token of each later start. Needs the application's event loop.
class ActivationListener {
    Q_DISABLE_COPY_MOVE(ActivationListener)

public:
    using Callback = std::function<void(const QByteArray& activationToken)>;

    // The instance outlives the listener.
    ActivationListener(const SingleInstance& instance, Callback callback);
    ~ActivationListener() = default;

private:
    void acceptRequest();

    int m_socket;
    Callback m_callback;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
