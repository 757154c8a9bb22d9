#pragma once

#include "services/linux/service/OtherManagers.h"

// NetworkManager and iwd are asked on the system bus, and every supplicant of the system by its control socket. A
// machine without any of them has no other manager.
class SystemManagers final : public OtherManagers {
public:
    void find(const std::string& interfaceName, Found found) override;
};

// Whether a supplicant listens for an interface in a directory of control sockets.
[[nodiscard]] bool hasControlSocket(const std::string& directory, const std::string& interfaceName);
