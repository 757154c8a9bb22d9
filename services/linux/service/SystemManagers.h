#pragma once

#include "services/linux/service/OtherManagers.h"

#include <QDBusConnection>

// NetworkManager and iwd are asked on the system bus, and every supplicant of the system by its control socket. A
// machine without any of them has no other manager.
class SystemManagers final : public OtherManagers {
public:
    using Connect = std::function<QDBusConnection()>;

    // connect is called for each question, so that a bus that is started later is found.
    SystemManagers(Connect connect, std::string controlDirectory)
        : m_connect(std::move(connect))
        , m_controlDirectory(std::move(controlDirectory))
    {
    }

    void find(const std::string& interfaceName, Found found) override;

private:
    Connect m_connect;
    std::string m_controlDirectory; // of the system's supplicants
};

// Whether a supplicant listens for an interface in a directory of control sockets.
[[nodiscard]] bool hasControlSocket(const std::string& directory, const std::string& interfaceName);
