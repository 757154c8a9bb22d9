#pragma once

#include <memory>

class JoinProgress;
struct PROFILE_DATA;

// Accepts the connections of profiles.
class ConnectionQueue {
public:
    virtual ~ConnectionQueue() = default;

    // Queues a connection. The next tick of the site survey makes it.
    virtual void SetTaskQueue(std::unique_ptr<PROFILE_DATA> record) = 0;
    // Resets whether the last connection of the site survey was made by SSID or by BSSID.
    virtual void resetFlag() = 0;
    // Whether the connection queued last is still waiting to be made.
    [[nodiscard]] virtual bool hasQueuedConnection() const = 0;
    // The progress of the connection queued last; for display only.
    [[nodiscard]] virtual const JoinProgress& joinProgress() const = 0;
};
