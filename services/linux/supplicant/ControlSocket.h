#pragma once

#include "posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

// One datagram connection to the supplicant's control socket. Never blocks.
class ControlSocket {
    Q_DISABLE_COPY_MOVE(ControlSocket)

public:
    using Received = std::function<void(std::string_view)>;

    explicit ControlSocket(Received received)
        : m_received(std::move(received))
    {
    }
    ~ControlSocket() { close(); }

    // ownPath is created, serverPath is the supplicant's. Both must fit a socket address (107 bytes).
    [[nodiscard]] std::error_code connect(const std::string& ownPath, const std::string& serverPath);
    void close();
    [[nodiscard]] std::error_code send(std::string_view text) const;

private:
    void read();

    Received m_received;
    FileDescriptor m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::string m_ownPath;
};
